#!/usr/bin/env python3
"""Types commands into a shell and has it insert all that completes them.

    completions.py SHELL PROGRAM [FOLDER]

FOLDER has the completions; without it the shell has to find the installed ones itself.
"""
import os
import pty
import re
import shutil
import subprocess
import sys
import tempfile

NAME = "zorpsysinfosmbios2"

# What makes bash and zsh insert all completions when they read Control-A, and show the line when they read Control-X.
SETUP = {
    "bash": r"""
        . /usr/share/bash-completion/bash_completion
        [ -z "$folder" ] || . "$folder/zorpsysinfosmbios2.bash"
        bind '"\C-a": insert-completions'
        bind -x '"\C-x": printf "{{%s}}" "$READLINE_LINE"; READLINE_LINE='
    """,
    "zsh": r"""
        fpath=($folder $fpath)
        autoload -Uz compinit
        compinit -u -D
        zstyle ':completion:*' completer _all_matches _complete
        zstyle ':completion:*' insert true
        show() { print -n "{{$BUFFER}}"; BUFFER= }
        zle -N show
        bindkey '^A' complete-word '^X' show
    """,
}


class Terminal:
    """An interactive shell on a terminal of its own."""

    def __init__(self, shell, folder):
        with tempfile.NamedTemporaryFile("w", suffix=".rc") as setup:
            setup.write(SETUP[shell])
            setup.flush()
            child, self.terminal = pty.fork()
            if child == 0:
                os.environ.update(TERM="dumb", PS1="> ", folder=folder)
                no_files = {"bash": ["--norc", "--noprofile"], "zsh": ["-f"]}
                os.execlp(shell, shell, *no_files[shell], "-i")
            self.type(f"stty -echo; . {setup.name}; echo re''ady\n", "ready")

    def type(self, keys, until):
        os.write(self.terminal, keys.encode())
        shown = ""
        while not (found := re.search(until, shown, re.DOTALL)):
            shown += os.read(self.terminal, 4096).decode()
        return found

    def complete(self, line):
        inserted = self.type(line + "\x01\x18", r"{{(.*?)}}")[1].replace("\r\n", "")
        return inserted[line.rindex(" ") :].split()


class Fish:
    """Fish says by itself what completes a line."""

    def __init__(self, folder, home):
        self.setup = f"source {folder}/{NAME}.fish; " if folder else ""
        self.surroundings = dict(os.environ, HOME=home)

    def complete(self, line):
        command = ["fish", "-c", self.setup + "complete -C $argv", line]
        shown = subprocess.run(command, capture_output=True, text=True, env=self.surroundings)
        return [entry.split("\t")[0] for entry in shown.stdout.splitlines()]


def main():
    shell, program, folder = (sys.argv[1:] + [""])[:3]
    if not shutil.which(shell):
        print(f"skipped: {shell} is not installed")
        sys.exit(77)
    shown_help = subprocess.run([program, "--help"], capture_output=True, text=True).stdout
    options = set(re.findall(r"--[a-z][a-z-]+", shown_help))
    assert len(options) > 5, shown_help

    with tempfile.TemporaryDirectory() as temporary:
        table = f"{temporary}/machine.dmi"
        open(table, "w").close()
        # A word that is being typed, and all that it may become, each up to a value of its own.
        cases = {
            "--": options,
            "--format ": {"text", "json", "ndjson"},
            "-f ": {"text", "json", "ndjson"},
            "--format=n": {"--format=ndjson"},
            "--language ": {"en", "de", "zh_CN"},
            "-l z": {"zh_CN"},
            "--type s": {"system", "slot"},
            "-t m": {"memory"},
            f"{temporary}/mach": {table},
            "--log-level ": {"1", "2", "3", "4", "5"},
            "--set ": {"verbose", "FilterTrivialStrings", "LoadTable", "SaveTable"},
            "--set verbose=t": {"verbose=true"},
            "-a -s FilterTrivialStrings=f": {"FilterTrivialStrings=false"},
            f"--set LoadTable={temporary}/mach": {f"LoadTable={table}"},
            f"-s SaveTable={temporary}/mach": {f"SaveTable={table}"},
            f"--output {temporary}/mach": {table},
            f"-o {temporary}/mach": {table},
            f"--settings {temporary}/mach": {table},
        }
        asked = Fish(folder, temporary) if shell == "fish" else Terminal(shell, folder)
        for typed, expected in cases.items():
            words = asked.complete(f"{NAME} {typed}")
            offered = {word if "=" in typed else word.partition("=")[0] for word in words}
            assert offered == expected, f"{shell}: {typed}: {sorted(offered)}, not {sorted(expected)}"
        print(f"{len(cases)} lines are completed by {shell}")


main()
