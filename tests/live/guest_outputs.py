"""Writes what the guest told on its console into one file per text.

usage: guest_outputs.py CONSOLE FOLDER; how texts are told stands in guest_init.cpp.
"""
import pathlib
import re
import sys

console = pathlib.Path(sys.argv[1]).read_bytes()
folder = pathlib.Path(sys.argv[2])
END = b"\n=== end\n"
position = 0
while begin := re.compile(rb"\n=== ([a-z]+\.[a-z]+) (\d+)\n").search(console, position):
    name = begin[1].decode()
    end = begin.end() + int(begin[2])
    if console[end : end + len(END)] != END:
        sys.exit(f"{name}: something else was written to the console in the middle of it")
    (folder / name).write_bytes(console[begin.end() : end])
    position = end
if b"\n=== done\n" not in console[position:]:
    sys.exit("the guest did not get to the end of its steps")
