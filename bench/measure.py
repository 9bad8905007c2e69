"""What the benchmarks measure of a program's run: times, peak memory, instructions; and how they print it."""
import os
import re
import subprocess
import time
from statistics import median
from types import SimpleNamespace

PROGRAM = "build/release/bin/zorpsysinfosmbios2"
INVENTORY = "build/release/bin/zorpinventory"
DMIDECODE = "/usr/sbin/dmidecode"


def make_table(structures, folder):
    """The sample machine's structures over and over."""
    table = folder / f"{structures}.dmi"
    subprocess.run(["build/bench/bin/make-big-table", str(structures), table], check=True)
    return table


def inventory(program, form, table, folder=None):
    """The command that prints a saved table's inventory, or for no table what all have in common; whatever this
    machine's user has set."""
    settings = (folder or table.parent) / "empty.ini"
    settings.touch()
    load = ["-s", f"LoadTable={table}"] if table else []
    return [program, "--settings", settings, "-l", "en", *load, "-f", form]


def run(command, output=os.devnull, stdin=os.devnull):
    """Processor time (user and system) and wall time in ms. Standard output goes to a file, the log nowhere."""
    files = [(os.POSIX_SPAWN_OPEN, 0, stdin, os.O_RDONLY, 0),
             (os.POSIX_SPAWN_OPEN, 1, output, os.O_WRONLY | os.O_CREAT | os.O_TRUNC, 0o600),
             (os.POSIX_SPAWN_OPEN, 2, os.devnull, os.O_WRONLY, 0)]
    begin = time.perf_counter()
    child = os.posix_spawn(command[0], command, os.environ, file_actions=files)
    _, status, used = os.wait4(child, 0)
    wall = time.perf_counter() - begin
    if status != 0:
        raise SystemExit(f"failed: {command}")
    return (used.ru_utime + used.ru_stime) * 1000, wall * 1000


def in_turn(commands, rounds, folder):
    """Medians of the rounds behind a first one that only warms up: name -> cpu, wall, size of the output."""
    times = {name: [] for name in commands}
    outputs = {name: folder / f"output-{number}" for number, name in enumerate(commands)}
    for _ in range(1 + rounds):
        for name, command in commands.items():
            outputs[name].unlink(missing_ok=True)
            times[name].append(run(command, outputs[name]))
    taken = {}
    for name in commands:
        cpu, wall = map(median, zip(*times[name][1:]))
        taken[name] = SimpleNamespace(cpu=cpu, wall=wall, size=outputs[name].stat().st_size)
        outputs[name].unlink()
    return taken


def peak(command):
    """Peak memory in MiB. A process's peak counts from its parent's, so the parent has to be smaller than Python."""
    timed = subprocess.run(["/usr/bin/time", "-f", "%M", *command], check=True, text=True, errors="replace",
                           stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)
    return int(timed.stderr.split()[-1]) / 1024


def instructions(command):
    """Instructions of one run, as valgrind counts them: the same on every run, whatever else the machine does."""
    counted = subprocess.run(["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null", *command], check=True,
                             text=True, errors="replace", stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                             stderr=subprocess.PIPE)
    return int(re.search(r"Collected : (\d+)", counted.stderr).group(1))


def print_row(*cells):
    styles = {float: ",.2f", int: ","}
    print("|", " | ".join(format(cell, styles.get(type(cell), "")) for cell in cells), "|", flush=True)


def print_head(*cells):
    print()
    print_row(*cells)
    print_row(*["---"] * len(cells))
