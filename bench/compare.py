"""Runs the program beside its limit and dmidecode; prints Markdown. Started by bench/compare."""
import os
import platform
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path
from statistics import median

from measure import (DMIDECODE, INVENTORY, PROGRAM, in_turn, instructions, inventory, make_table, peak, print_head, print_row,
                     run)
from shapes import CHANGES, SHAPES

ROUNDS = {60: 200, 1_000: 50, 10_000: 15, 60_000: 7}
START_ROUNDS = 300
SHAPE_ROUNDS = 3
MANY = 2_000
MANY_ROUNDS = 3
CHANGE_ROUNDS = 5
CHANGE_SIZES = (10_000, 30_000, 60_000)
FORMS = ("json", "ndjson", "text")
BEFORE = "before, "

programs = {"": PROGRAM}
goals = []


def goal(sentence, limit, measured):
    """A goal that is met when no measured value is above the limit."""
    values = ", ".join(f"{name} {value:,.2f}" for name, value in measured.items())
    goals.append((sentence, values, "met" if max(measured.values()) <= limit else "missed"))


def our_commands(table, forms=FORMS):
    return {prefix + form: inventory(program, form, table) for prefix, program in programs.items() for form in forms}


def print_machine():
    cpu = dict(line.split(":", 1) for line in subprocess.getoutput("lscpu").splitlines() if ":" in line)
    print("# What bench/compare printed\n")
    print(f"- machine: {cpu['Model name'].strip()}, {os.cpu_count()} cores,"
          f" hypervisor {cpu.get('Hypervisor vendor', 'none').strip()}, load {os.getloadavg()[0]:.2f} at the start")
    print(f"- system: {platform.freedesktop_os_release()['PRETTY_NAME']}, Linux {platform.release()}")
    print(f"- programs: {subprocess.getoutput(f'{PROGRAM} --version')},"
          f" dmidecode {subprocess.getoutput(f'{DMIDECODE} --version')}")


def compare_sizes(folder):
    """One machine's table, and the same over and over."""
    print_head("structures", "program", "processor ms", "wall ms", "peak less table MiB", "output bytes",
               "processor : dmidecode", "processor : limit")
    for structures, rounds in ROUNDS.items():
        table = make_table(structures, folder)
        commands = our_commands(table)
        json = folder / "json"
        subprocess.run(commands["json"], check=True, stdout=json.open("wb"), stderr=subprocess.DEVNULL)
        commands["limit"] = ["build/bench/bin/read-and-write", table, str(json.stat().st_size)]
        commands["dmidecode"] = [DMIDECODE, "--from-dump", table]
        taken = in_turn(commands, rounds, folder)
        for name, each in taken.items():
            if each.size < table.stat().st_size:
                raise SystemExit(f"{name} prints only {each.size} bytes of {structures} structures")
            above = peak(commands[name]) - table.stat().st_size / 2**20
            print_row(structures, name, each.cpu, each.wall, above, each.size,
                      each.cpu / taken["dmidecode"].cpu, each.cpu / taken["limit"].cpu)
        if structures == 60:
            goal("60 structures: processor time of text at most 1.1 times JSON's", 1.1,
                 {"ratio": taken["text"].cpu / taken["json"].cpu})
        if structures == 60_000:
            goal("60,000 structures, JSON: processor time at most 5 times the limit's", 5,
                 {form: taken[form].cpu / taken["limit"].cpu for form in ("json", "ndjson")})


def compare_starts(folder):
    commands = {f"{prefix}--version": [program, "--version"] for prefix, program in programs.items()}
    commands["/bin/true"] = ["/bin/true"]
    print_head("start", "processor ms", "wall ms", "peak MiB")
    for name, each in in_turn(commands, START_ROUNDS, folder).items():
        print_row(f"`{name}`", each.cpu, each.wall, peak(commands[name]))


def compare_instructions(folder):
    structures = 10_000
    table = make_table(structures, folder)
    commands = our_commands(table) | {"json, details": [*inventory(PROGRAM, "json", table), "--details"],
                                      "dmidecode": [DMIDECODE, "--from-dump", table]}
    counted = {name: instructions(command) / structures for name, command in commands.items()}
    print_head("instructions", "a structure")
    for name, number in counted.items():
        print_row(name, round(number))
    start = {prefix + "--version": instructions([program, "--version"]) for prefix, program in programs.items()}
    for name, number in start.items():
        print_row(f"`{name}`, whole run", number)
    goal("10,000 structures, JSON: at most 12,000 instructions a structure", 12_000, {"json": counted["json"]})
    goal("10,000 structures, details: at most 1.4 times JSON's instructions", 1.4,
         {"ratio": counted["json, details"] / counted["json"]})
    goal("`--version`: at most 300,000 instructions", 300_000, {"start": start["--version"]})


def compare_many(folder):
    """Tables of one machine each: one run of ours, and a run of dmidecode for each."""
    original = make_table(60, folder)
    tables = [folder / f"machine-{number}.dmi" for number in range(MANY)]
    for table in tables:
        shutil.copy(original, table)
    names = folder / "tables"
    names.write_text("".join(f"{table}\n" for table in tables))
    output = folder / "output"
    ours = inventory(PROGRAM, "json", None, folder) + ["--details", "--tables"]
    one_by_one = [[DMIDECODE, "--from-dump", table] for table in tables]
    rounds = [(run(ours, output, names), [run(command, output) for command in one_by_one])
              for _ in range(1 + MANY_ROUNDS)][1:]
    taken = {f"ours, {MANY:,} tables in one run": [our for our, _ in rounds],
             f"dmidecode, {MANY:,} runs": [tuple(map(sum, zip(*each))) for _, each in rounds]}
    print_head(f"{MANY:,} tables of 60 structures", "processor ms", "wall ms")
    medians = [tuple(map(median, zip(*times))) for times in taken.values()]
    for name, times in zip(taken, medians):
        print_row(name, *times)
    goal(f"{MANY:,} tables with details in one run: at most 0.1 of as many runs of dmidecode", 0.1,
         {"processor": medians[0][0] / medians[1][0], "wall": medians[0][1] / medians[1][1]})


def compare_shapes(folder):
    print_head("shape", "program", "table MiB", "output MiB", "processor ms", "ms : allowed", "peak MiB",
               "peak : allowed")
    for shape, make in SHAPES.items():
        table = folder / "shape.dmi"
        table.write_bytes(make())
        size = table.stat().st_size
        commands = our_commands(table, ("json", "text"))
        times, peaks = {}, {}
        for name, each in in_turn(commands, SHAPE_ROUNDS, folder).items():
            most_memory = 4 + (6 if name.endswith("json") else 16) * size / 2**20
            held = peak(commands[name])
            allowed = (80 * size + 3 * each.size) / 1e6
            times[name], peaks[name] = each.cpu / allowed, held / most_memory
            print_row(shape, name, size / 2**20, each.size / 2**20, each.cpu, times[name], held, peaks[name])
        ours = ("json", "text")
        goal(f"{shape}: 80 ns a byte of table + 3 ns a byte of output", 1, {name: times[name] for name in ours})
        goal(f"{shape}: at most 4 MiB + 6 (JSON), 16 (text) times the table", 1, {name: peaks[name] for name in ours})


def compare_pair(shape, count, tables, folder):
    """Two tables' documents: making them, telling what changed, and what people do today. Returns diff's time."""
    def shell(script, *words):
        return ["/bin/sh", "-c", script, *words]

    documents = [table.with_suffix(".json") for table in tables]
    makings = [[*inventory(PROGRAM, "json", table), "--details"] for table in tables]
    for command, document in zip(makings, documents):
        with document.open("wb") as output:
            subprocess.run(command, check=True, stdout=output, stderr=subprocess.DEVNULL)
    commands = {
        "module, a": makings[0],
        "module, b": makings[1],
        "diff": shell('"$0" diff "$1" "$2" || [ $? = 1 ]', INVENTORY, *documents),
        "dmidecode": shell('"$0" --from-dump "$1" >"$3/a"; "$0" --from-dump "$2" >"$3/b"; diff "$3/a" "$3/b" ||'
                           ' [ $? = 1 ]', DMIDECODE, *tables, folder),
    }
    taken = in_turn(commands, CHANGE_ROUNDS, folder)
    making = taken["module, a"].cpu + taken["module, b"].cpu
    size = sum(document.stat().st_size for document in documents) / 2**20
    held = peak(commands["diff"])
    print_row(count, shape, size, making, taken["diff"].cpu, taken["diff"].cpu / making, held, held / size,
              taken["dmidecode"].cpu)
    if count == 60_000:
        goal(f"diff of 60,000, {shape}: at most 2 times the module's time for the documents", 2,
             {"ratio": taken["diff"].cpu / making})
        goal(f"diff of 60,000, {shape}: at most 10 times the documents' memory", 10, {"ratio": held / size})
    return taken["diff"].cpu


def compare_changes(folder):
    print_head("structures", "two tables", "documents MiB", "module ms", "diff ms", "diff : module", "diff peak MiB",
               "peak : documents", "dmidecode twice and diff ms")
    big = make_table(60_000, folder)
    compare_pair("one machine over and over", 60_000, (big, shutil.copy(big, folder / "again.dmi")), folder)
    for shape, make in CHANGES.items():
        times = {}
        for count in CHANGE_SIZES:
            tables = folder / "a.dmi", folder / "b.dmi"
            for turn, table in enumerate(tables):
                table.write_bytes(make(count, turn))
            times[count] = compare_pair(shape, count, tables, folder)
        goal(f"diff, {shape}: 60,000 at most 8 times the time of 10,000 (n log n is 7.2)", 8,
             {"ratio": times[60_000] / times[10_000]})


def main():
    if sys.argv[1:2] == ["--before"]:
        programs[BEFORE] = sys.argv[2]
    print_machine()
    shared_memory = "/dev/shm" if os.access("/dev/shm", os.W_OK) else None
    with tempfile.TemporaryDirectory(dir=shared_memory) as name:
        folder = Path(name)
        compare_sizes(folder)
        compare_starts(folder)
        compare_instructions(folder)
        compare_many(folder)
        compare_shapes(folder)
        compare_changes(folder)
    print_head("goal", "measured", "")
    for row in goals:
        print_row(*row)


main()
