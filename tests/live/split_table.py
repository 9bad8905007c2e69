"""Writes each structure of a dump into a file of its own, as the emulator's -smbios option takes them.

usage: split_table.py DUMP FOLDER; the files are FOLDER/NNN-TYPE.bin, in table order.
"""
import pathlib
import sys

DUMP_TABLE_OFFSET = 0x20

table = pathlib.Path(sys.argv[1]).read_bytes()[DUMP_TABLE_OFFSET:]
folder = pathlib.Path(sys.argv[2])
offset = 0
number = 0
kind = None
while kind != 127:
    kind, formatted_length = table[offset], table[offset + 1]
    end = table.index(b"\0\0", offset + formatted_length) + 2
    (folder / f"{number:03}-{kind}.bin").write_bytes(table[offset:end])
    offset = end
    number += 1
if offset != len(table):
    sys.exit(f"{sys.argv[1]}: {len(table) - offset} bytes behind the end-of-table structure")
