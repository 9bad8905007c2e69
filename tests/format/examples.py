#!/usr/bin/python3
"""Runs a document's examples and compares what they print with what the document shows: each block marked "sh" is run,
in order and in one folder with the tables, and the block marked "text" right behind it is what it must print.

usage: examples.py PROGRAM DOCUMENT TABLE_FOLDER
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

program, document, tables = map(pathlib.Path, sys.argv[1:])
for tool in ("jq", "sqlite3"):
    if not shutil.which(tool):
        print(f"skipped: {tool} is not installed")
        sys.exit(77)

examples = re.findall(r"```sh\n(.*?)```\n(?:```text\n(.*?)```\n)?", document.read_text(), re.DOTALL)
environment = {"PATH": f"{program.parent}:{os.environ['PATH']}", "LC_ALL": "C.UTF-8", "XDG_CONFIG_HOME": "/nonexistent"}
faults = [] if examples else ["the document has no examples"]
with tempfile.TemporaryDirectory() as folder:
    for table in tables.glob("*.dmi"):
        shutil.copy(table, folder)
    for command, expected in examples:
        run = subprocess.run(["bash", "-c", command], cwd=folder, env=environment, stdout=subprocess.PIPE)
        if run.stdout.decode("utf-8") != expected:
            faults.append(f"{command}printed\n{run.stdout.decode('utf-8')}")
if faults:
    sys.exit("\n".join(faults))
print(f"{len(examples)} examples print what the document shows")
