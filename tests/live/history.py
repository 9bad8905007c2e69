#!/usr/bin/env python3
"""Records where that is dangerous, for real: killed at any moment, many at once, on full and read-only file systems.

    history.py ZORPINVENTORY SAMPLE [KILLS]

After each blow the database is sound, everything that was told as recorded is in it, and the sentence and the exit code
say what happened.
"""
import os
import pathlib
import random
import re
import shutil
import socket
import sqlite3
import stat
import subprocess
import sys
import tempfile
import time

MACHINES = 100
KEPT = re.compile(r"^(?:first record of )?(.+?): @(\d+)(?:$|, )")


def fail(what):
    sys.exit(f"failed: {what}")


def run(*arguments, **options):
    done = subprocess.run([PROGRAM, *map(str, arguments)], capture_output=True, encoding="utf-8", **options)
    # The module's log comes first.
    return done.returncode, done.stdout, (done.stderr.strip().splitlines() or [""])[-1]


def require(outcome, code, sentence):
    if outcome[0] != code or sentence not in outcome[2]:
        fail(f"wanted exit code {code} and \"{sentence}\", got {outcome}")


def rows(database):
    """All records; the database has to be sound."""
    connection = sqlite3.connect(database)
    verdict = connection.execute("PRAGMA integrity_check").fetchone()[0]
    if verdict != "ok" or connection.execute("PRAGMA foreign_key_check").fetchone():
        fail(f"{database}: {verdict}")
    found = set(connection.execute("SELECT machine, number FROM records"))
    connection.close()
    return found


def told(text):
    """The records that a text tells of, an unfinished last line aside."""
    lines = text.split("\n")[:-1]
    return {(match[1], int(match[2])) for match in map(KEPT.match, lines) if match}


def killed(tables, database, kills):
    """Kills recordings at random moments, whole folders and single tables."""
    promised, ended = set(), 0
    started = time.monotonic()
    run("record", tables, "--db", database)
    longest = 1.2 * (time.monotonic() - started)
    promised |= rows(database)
    for n in range(kills):
        source = tables if n % 2 else tables / f"{n % MACHINES:04}.dmi"
        with open("told", "w+", encoding="utf-8") as output:
            process = subprocess.Popen([PROGRAM, "record", source, "--db", database], stdout=output,
                                       stderr=subprocess.DEVNULL)
            time.sleep(random.uniform(0, longest if n % 2 else longest / 4))
            process.kill()
            ended += process.wait() >= 0
            output.seek(0)
            promised |= told(output.read())
        if n % 3 == 0:
            require(run("log", "--machines", "--db", database), 0, "")
        lost = promised - rows(database)
        if lost:
            fail(f"kill {n}: {len(lost)} records were told and are lost: {sorted(lost)[:3]}")
    if len(promised) <= MACHINES or ended == kills:
        fail("nothing was killed in the middle")
    require(run("record", tables, "--db", database), 0, "")
    print(f"killed {kills - ended} times of {kills}; {len(promised)} records were told, all are there")


def at_once(tables, database, count):
    processes = [subprocess.Popen([PROGRAM, "record", tables if n == 0 else tables / "0001.dmi", "--db", database],
                                  stdout=subprocess.PIPE, stderr=subprocess.PIPE, encoding="utf-8")
                 for n in range(count)]
    promised = []
    for process in processes:
        output, errors = process.communicate()
        if process.returncode != 0:
            fail(f"{count} at once: {errors}")
        promised += told(output)
    if sorted(promised) != sorted(rows(database)) or len(promised) != MACHINES + count - 1:
        fail(f"{count} at once: {len(promised)} records were told, {len(rows(database))} are there")


def full(tables):
    os.mkdir("full")
    subprocess.run(["mount", "-t", "tmpfs", "-o", "size=1m", "tmpfs", "full"], check=True)
    database = pathlib.Path("full/h.db")
    require(run("record", tables / "0000.dmi", "--db", database), 0, "")
    outcome = None
    for ballast in range(40):
        with open("full/ballast", "ab") as file:
            try:
                file.write(bytes(0x8000))
            except OSError:
                pass
        source = tables / f"{ballast + 1:04}.dmi"
        promised = rows(database)
        outcome = run("record", source, "--db", database)
        if outcome[0] != 0:
            break
        promised |= told(outcome[1])
    require(outcome, 2, "No space left on device; what was told as recorded is in it, and nothing by halves")
    if promised != rows(database):
        fail("a full disk loses records")
    os.remove("full/ballast")
    require(run("record", source, "--db", database), 0, "")
    if len(rows(database)) != len(promised) + 1:
        fail("the next record does not work")
    # Read-only, with a record in it.
    subprocess.run(["mount", "-o", "remount,ro", "full"], check=True)
    require(run("record", source, "--db", database), 2, "cannot write full/h.db: Read-only file system")
    require(run("log", "--machines", "--db", database), 0, "")
    subprocess.run(["umount", "full"], check=True)


def damaged(tables):
    database = pathlib.Path("d.db")
    run("record", tables / "0000.dmi", "--db", database)
    run("record", tables / "0000.dmi", "--db", database)
    sound = database.read_bytes()
    expected = run("diff", "@1", "@latest", "--db", database)

    def left_alone(content, sentence):
        database.write_bytes(content)
        require(run("record", tables / "0000.dmi", "--db", database), 2, sentence)
        if database.read_bytes() != content:
            fail(f"it was written to: {sentence}")

    for cut in range(4096, len(sound), 8192):
        left_alone(sound[:cut], "d.db is damaged; put a copy of it back")
    left_alone(b"notes of mine\n" * 100, "d.db is no history of zorpinventory")
    newer = bytearray(sound)
    newer[63] = 99
    left_alone(bytes(newer), "d.db was written by a newer zorpinventory")
    for _ in range(200):
        flipped = bytearray(sound)
        flipped[random.randrange(len(sound))] ^= 1 << random.randrange(8)
        database.write_bytes(flipped)
        outcome = run("diff", "@1", "@latest", "--db", database)
        if outcome[0] not in (0, 2) or (outcome[0] == 0 and outcome != expected):
            fail(f"a flipped bit: {outcome}")
    database.write_bytes(sound)
    os.symlink("d.db", "link.db")
    require(run("record", tables / "0000.dmi", "--db", "link.db"), 2, "link.db is a symbolic link")
    os.chown(database, 1234, 1234)
    require(run("record", tables / "0000.dmi", "--db", database), 2, "d.db belongs to another user")
    if database.read_bytes() != sound:
        fail("another user's file was written to")


def journal(tables):
    """What the journal gets, from a socket in its place."""
    os.makedirs("/run/systemd/journal", exist_ok=True)
    subprocess.run(["mount", "-t", "tmpfs", "tmpfs", "/run/systemd/journal"], check=True)
    require(run("record", tables / "0000.dmi", "--db", "j.db", "--journal"), 2, "cannot write the system's journal")
    (tables / "changed.dmi").write_bytes((tables / "0000.dmi").read_bytes().replace(b"5E00220B", b"5E002F40"))
    with socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM) as place:
        place.bind("/run/systemd/journal/socket")
        for name, code, priority, line in (("0000", 0, b"6", "nothing changed since @1"),
                                           ("changed", 1, b"4", "serial 5E00220B → 5E002F40")):
            require(run("record", tables / f"{name}.dmi", "--db", "j.db", "--journal"), code, "")
            entry, fields = place.recv(0x10000), {}
            while entry:
                field, entry = entry.split(b"\n", 1)
                length = int.from_bytes(entry[:8], "little")
                fields[field], entry = entry[8:8 + length], entry[9 + length:]
            if fields[b"PRIORITY"] != priority or line not in fields[b"MESSAGE"].decode():
                fail(f"the journal got {fields}")
    subprocess.run(["umount", "/run/systemd/journal"], check=True)
    os.remove(tables / "changed.dmi")


def owned(tables):
    """The usual file of a user who is not root, whatever the umask."""
    for umask in (0o000, 0o022, 0o777):
        home = pathlib.Path(f"home-{umask:o}")
        home.mkdir()
        os.chown(home, 65534, 65534)
        outcome = run("record", (tables / "0000.dmi").resolve(), user=65534, group=65534, extra_groups=[],
                      umask=umask, env=dict(os.environ, HOME=str(home.resolve()), XDG_STATE_HOME=""))
        require(outcome, 0, "")
        folder = home / ".local/state/zorpinventory"
        modes = [stat.S_IMODE(os.stat(path).st_mode) for path in (folder, folder / "history.db")]
        if modes != [0o700, 0o600]:
            fail(f"umask {umask:o}: modes {[oct(mode) for mode in modes]}")


def main():
    global PROGRAM
    program, sample = (pathlib.Path(path).resolve() for path in sys.argv[1:3])
    if not program.exists():
        print(f"skipped: {program} is not built")
        sys.exit(77)
    if os.environ.get("inside") != "yes":
        if subprocess.run(["unshare", "-m", "true"], capture_output=True).returncode != 0:
            print("skipped: unshare -m needs to be root")
            sys.exit(77)
        os.environ["inside"] = "yes"
        os.execvp("unshare", ["unshare", "-m", *sys.argv])
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        os.chmod(folder, 0o755)
        for name in (program, program.with_name("zorpsysinfosmbios2")):
            shutil.copy(name, name.name)
        PROGRAM = os.path.join(folder, program.name)
        os.environ.update(LC_ALL="C", XDG_CONFIG_HOME="/nonexistent")
        tables = pathlib.Path("tables")
        tables.mkdir()
        image = sample.read_bytes()
        if image.count(b"HI-0042-7719") != 1:
            fail("the sample's serial number is not what it was")
        for n in range(MACHINES):
            (tables / f"{n:04}.dmi").write_bytes(image.replace(b"HI-0042-7719", b"HI-%04d-7719" % n))
        killed(tables, "killed.db", int(sys.argv[3]) if len(sys.argv) > 3 else 300)
        for count in (2, 10):
            at_once(tables, f"at-once-{count}.db", count)
        full(tables)
        damaged(tables)
        owned(tables)
        journal(tables)
        os.chdir("/")
    print("nothing was lost")


main()
