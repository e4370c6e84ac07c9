"""What the attacks have in common: their arguments, their folders, the driver and its stores."""

import contextlib
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

# What ctest takes for a test that could not be run here.
SKIPPED = 77

# The leak checker does not work in a program that is traced.
ENVIRONMENT = dict(os.environ, ASAN_OPTIONS=os.environ.get("ASAN_OPTIONS", "") + ":detect_leaks=0")

MEMORY_DISK = "/dev/shm"


def arguments():
    """The folder of the programs, and whether the attack is to be long."""
    if len(sys.argv) != 3 or sys.argv[2] not in ("short", "long"):
        sys.exit(f"usage: {sys.argv[0]} FOLDER_OF_THE_PROGRAMS short|long")
    return pathlib.Path(sys.argv[1]).resolve(), sys.argv[2] == "long"


@contextlib.contextmanager
def folder(on_memory_disk=False):
    """A folder of the attack's own, gone afterwards."""
    where = MEMORY_DISK if on_memory_disk and os.access(MEMORY_DISK, os.W_OK) else None
    path = pathlib.Path(tempfile.mkdtemp(prefix="vantor-faults-", dir=where))
    try:
        yield path
    finally:
        shutil.rmtree(path, ignore_errors=True)


def driver(programs, *words, **options):
    """The exit status of the driver, and what it printed."""
    done = subprocess.run([programs / "store_driver", *map(str, words)], stdout=subprocess.PIPE,
                          env=ENVIRONMENT, text=True, timeout=600, **options)
    return done.returncode, done.stdout


class Found:
    """What a new start finds: both states, the unfinished saves before and after it, the files set aside. Every restore
    point has to be whole."""

    def __init__(self, programs, path):
        status, told = driver(programs, "check", path)
        if status != 0:
            raise Breach(f"a new start ends with {status}")
        self.shoots, self.catalog, *counts = told.split()
        self.unfinished, self.left, self.aside, torn = map(int, counts)
        if torn:
            raise Breach(f"{torn} restore points are torn")


class Breach(Exception):
    """Something was lost, torn, or reported as what it was not."""


def made(programs, path, records):
    status, _ = driver(programs, "fill", path, records)
    if status != 0:
        raise Breach(f"the stores could not be made in {path}: {status}")


class Calls:
    """The system calls that the driver makes from the beginning of its work, as strace tells them."""

    LINE = re.compile(r"^(?:\d+ +)?(\w+)\((.*)$")

    def __init__(self, record):
        self.all = []  # name, which of that name in the whole process, the whole line
        counts = {}
        begun = False
        for line in record.splitlines():
            match = self.LINE.match(line)
            if not match:
                continue
            name = match[1]
            counts[name] = counts.get(name, 0) + 1
            if name == "getppid":
                begun = True
            elif begun and name != "exit_group":
                self.all.append((name, counts[name], line))
        if not begun:
            raise Breach("strace recorded no work of the driver")


def traced(programs, record, *words, inject=None, timeout=600):
    """Runs the driver under strace, which may make calls fail; its exit status and the record."""
    command = ["strace", "-f", "-y", "-s", "0", "-o", str(record)]
    if inject:
        command += ["-e", f"inject={inject}"]
    else:
        command += ["-e", "trace=all"]
    command += [str(programs / "store_driver"), *map(str, words)]
    done = subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                          env=ENVIRONMENT, timeout=timeout)
    return done.returncode, record.read_text(errors="replace")


def needs_strace(name):
    """Ends the attack as skipped, and says so, where programs may not be traced."""
    try:
        done = subprocess.run(["strace", "-o", os.devnull, "true"], stderr=subprocess.PIPE, text=True)
        why = "" if done.returncode == 0 else done.stderr.strip()
    except OSError as error:
        why = str(error)
    if why:
        print(f"{name}: SKIPPED, programs cannot be traced here ({why})")
        sys.exit(SKIPPED)


def conclude(name, figures, breaches):
    """Prints the line of figures, and the first breaches; ends the attack."""
    for breach in breaches[:20]:
        print(f"{name}: {breach}", file=sys.stderr)
    print(f"{name}: {figures}, {len(breaches)} breaches")
    sys.exit(1 if breaches else 0)
