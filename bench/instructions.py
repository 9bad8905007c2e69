"""Instructions of the program's runs beside the figures kept in instructions.txt. Started by bench/instructions."""
import sys
import tempfile
from pathlib import Path

from measure import PROGRAM, inventory, instructions, make_table

KEPT = Path("bench/instructions.txt")
STRUCTURES = 10_000
MOST = 1.1


def count():
    """What is counted -> instructions; those of inventories for each structure."""
    with tempfile.TemporaryDirectory() as folder:
        table = make_table(STRUCTURES, Path(folder))
        counted = {"--version": instructions([PROGRAM, "--version"])}
        for form in ("json", "ndjson", "text"):
            counted[form] = instructions(inventory(PROGRAM, form, table)) // STRUCTURES
        counted["details"] = instructions([*inventory(PROGRAM, "json", table), "--details"]) // STRUCTURES
    return counted


def main():
    counted = count()
    if sys.argv[1:] == ["--bless"]:
        KEPT.write_text("".join(f"{name} {number}\n" for name, number in counted.items()))
    kept = {name: int(number) for name, number in map(str.split, KEPT.read_text().splitlines())}
    risen = False
    for name, number in counted.items():
        unit = "" if name.startswith("-") else " a structure"
        print(f"instructions, {name}: {number:,}{unit} (kept: {kept[name]:,})")
        risen |= number > MOST * kept[name]
    if risen:
        raise SystemExit(f"more than {MOST} times what {KEPT} says: make it faster, or renew the file and say why")


main()
