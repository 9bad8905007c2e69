"""Runs the program and dmidecode in turn on tables of four sizes; prints Markdown. Started by bench/compare."""
import os
import platform
import subprocess
import tempfile
import time
from pathlib import Path
from statistics import median
from types import SimpleNamespace

PROGRAM = Path("build/release/bin/zorpsysinfosmbios2")
DMIDECODE = "/usr/sbin/dmidecode"
ROUNDS = {60: 200, 1000: 50, 10000: 15, 60000: 7}
START_ROUNDS = 300


def run(command, output):
    """Processor time (user and system) and wall time in ms."""
    files = [(os.POSIX_SPAWN_OPEN, 1, output, os.O_WRONLY | os.O_CREAT | os.O_TRUNC, 0o600),
             (os.POSIX_SPAWN_OPEN, 2, os.devnull, os.O_WRONLY, 0)]
    begin = time.perf_counter()
    child = os.posix_spawn(command[0], command, os.environ, file_actions=files)
    _, status, used = os.wait4(child, 0)
    wall = time.perf_counter() - begin
    if status != 0:
        raise SystemExit(f"failed: {command}")
    return (used.ru_utime + used.ru_stime) * 1000, wall * 1000


def peak(command):
    """Peak memory in MiB. A process's peak counts from its parent's, so the parent has to be smaller than Python."""
    timed = subprocess.run(["/usr/bin/time", "-f", "%M", *command], check=True, text=True,
                           stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)
    return int(timed.stderr.split()[-1]) / 1024


def in_turn(commands, rounds):
    """Medians of the rounds behind a first one that only warms up. Each command: its words, its output file."""
    times = {name: [] for name in commands}
    for _ in range(1 + rounds):
        for name, (command, output) in commands.items():
            output.unlink(missing_ok=True)
            times[name].append(run(command, os.devnull if "-o" in command else output))
    taken = {}
    for name, (command, output) in commands.items():
        cpu, wall = map(median, zip(*times[name][1:]))
        taken[name] = SimpleNamespace(cpu=cpu, wall=wall, peak=peak(command), size=output.stat().st_size)
    return taken


def compare(structures, table, folder):
    subprocess.run(["build/bench/bin/make-big-table", str(structures), table], check=True)
    commands = {form: ([PROGRAM, "-s", f"LoadTable={table}", "-f", form, "-o", folder / form], folder / form)
                for form in ("json", "ndjson", "text")}
    commands["dmidecode"] = [DMIDECODE, "--from-dump", table], folder / "dmidecode"
    taken = in_turn(commands, ROUNDS[structures])
    for name, each in taken.items():
        if each.size < table.stat().st_size:
            raise SystemExit(f"{name} prints only {each.size} bytes of {structures} structures")
        each.above_table = each.peak - table.stat().st_size / 2**20
    return taken


def print_row(*cells):
    styles = {float: ".2f", int: ","}
    print("|", " | ".join(format(cell, styles.get(type(cell), "")) for cell in cells), "|")


def print_head(*cells):
    print()
    print_row(*cells)
    print_row(*["---"] * len(cells))


def print_goal(sentence, limit, values):
    measured = ", ".join(f"{name} {value:.2f}" for name, value in values.items())
    print_row(sentence, measured, "met" if max(values.values()) <= limit else "missed")


def print_machine():
    cpu = dict(line.split(":", 1) for line in subprocess.getoutput("lscpu").splitlines() if ":" in line)
    print("# What bench/compare printed\n")
    print(f"- machine: {cpu['Model name'].strip()}, {os.cpu_count()} cores,"
          f" hypervisor {cpu.get('Hypervisor vendor', 'none').strip()}, load {os.getloadavg()[0]:.2f} at the start")
    print(f"- system: {platform.freedesktop_os_release()['PRETTY_NAME']}, Linux {platform.release()}")
    print(f"- programs: {subprocess.getoutput(f'{PROGRAM} --version')},"
          f" dmidecode {subprocess.getoutput(f'{DMIDECODE} --version')}")


def print_goals(taken, start, growth):
    def against_dmidecode(structures, what, *forms):
        return {form: getattr(taken[structures][form], what) / getattr(taken[structures]["dmidecode"], what)
                for form in forms}

    forms = ("json", "ndjson", "text")
    print_head("goal", "measured", "")
    print_goal("60 structures: wall time at most 0.5 of dmidecode's", 0.5, against_dmidecode(60, "wall", *forms))
    print_goal("`--version`: wall time at most 1.5 of `/bin/true`'s", 1.5,
               {"ratio": start["--version"].wall / start["/bin/true"].wall})
    print_goal("60,000 structures, JSON: processor time at most 0.1 of dmidecode's", 0.1,
               against_dmidecode(60000, "cpu", "json", "ndjson"))
    print_goal("60,000 structures, text: processor time at most 0.2 of dmidecode's", 0.2,
               against_dmidecode(60000, "cpu", "text"))
    print_goal("1,000 to 10,000 structures: processor time grows at most 11-fold", 11,
               {form: growth[form][0] for form in forms})
    print_goal("10,000 to 60,000 structures: processor time grows at most 6.6-fold", 6.6,
               {form: growth[form][1] for form in forms})
    print_goal("60,000 structures, JSON: peak memory at most 12 MiB above the table", 12,
               {form: taken[60000][form].above_table for form in ("json", "ndjson")})
    print_goal("release program: at most 2.5 MiB", 2.5, {"MiB": PROGRAM.stat().st_size / 2**20})


def main():
    print_machine()
    shared_memory = "/dev/shm" if os.access("/dev/shm", os.W_OK) else None
    with tempfile.TemporaryDirectory(dir=shared_memory) as name:
        folder = Path(name)
        taken = {structures: compare(structures, folder / f"{structures}.dmi", folder) for structures in ROUNDS}
        start = in_turn({"--version": ([PROGRAM, "--version"], folder / "version"),
                         "/bin/true": (["/bin/true"], folder / "true")}, START_ROUNDS)

    print_head("structures", "output", "processor ms", "wall ms", "peak MiB", "peak less table MiB", "output bytes",
               "processor : dmidecode", "wall : dmidecode", "runs")
    for structures, programs in taken.items():
        other = programs["dmidecode"]
        for name, each in programs.items():
            print_row(structures, name, each.cpu, each.wall, each.peak, each.above_table, each.size,
                      each.cpu / other.cpu, each.wall / other.wall, ROUNDS[structures])
    print_head("start", "processor ms", "wall ms", "peak MiB", "runs")
    for name, each in start.items():
        print_row(f"`{name}`", each.cpu, each.wall, each.peak, START_ROUNDS)

    growth = {name: (taken[10000][name].cpu / taken[1000][name].cpu, taken[60000][name].cpu / taken[10000][name].cpu)
              for name in taken[60]}
    print_head("growth of processor time", "1,000 to 10,000", "10,000 to 60,000")
    for name, factors in growth.items():
        print_row(name, *factors)
    print_goals(taken, start, growth)


main()
