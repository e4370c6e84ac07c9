#!/usr/bin/env python3
"""Fails every system call of a replacement and of a whole start and save in turn, and kills the process there.

Each call fails with each error, once and from then on. Whatever fails, the old content or the new one is there,
whole, under its name or set aside; success is reported only when nothing stayed failed; what failed once is saved when
it is tried again; and it always ends."""

import concurrent.futures
import os
import re
import shutil
import subprocess
import sys

import support

ERRORS = ("EIO", "ENOSPC", "EDQUOT", "EACCES", "EROFS", "EINTR")
# What is asked of the memory is failed elsewhere; the rest changes nothing outside the process.
UNTOUCHED = {"brk", "mmap", "munmap", "mremap", "madvise", "mprotect", "futex", "getppid", "exit_group", "rt_sigaction",
             "rt_sigprocmask", "sigaltstack", "clock_gettime", "gettid", "getpid", "tgkill", "sched_yield"}
PATIENCE = 600


class Scenario:
    """A folder to start from, what the driver is asked there, and what may be there afterwards."""

    def __init__(self, programs, path, name):
        self.programs = programs
        self.name = name
        self.start = path / f"start of {name}"
        self.start.mkdir()
        self.prepare()
        finished = path / f"end of {name}"
        self.copy(finished)
        status, record = support.traced(programs, path / f"record of {name}", *self.words(finished))
        if status != 0:
            raise support.Breach(f"{name} fails without a fault: {status}")
        self.calls = [(call, which) for call, which, _ in support.Calls(record).all if call not in UNTOUCHED]
        self.new = self.contents(finished)

    def copy(self, to):
        shutil.copytree(self.start, to, symlinks=True)

    def contents(self, path):
        return {name: (path / name).read_bytes() for name in self.files() if (path / name).exists()}

    def is_essential(self, call, line):
        """Whether a replacement that was reported as done cannot have been without this call."""
        if ".vantor-save-" in line:
            return call not in ("unlink", "unlinkat")
        return call == "fsync"


class Replacement(Scenario):
    """Replaces a file through a link to it from another folder."""

    def prepare(self):
        (self.start / "links").mkdir()
        (self.start / "data").mkdir()
        (self.start / "data" / "file").write_bytes(b"old " * 1000)
        (self.start / "data" / "file").chmod(0o640)
        (self.start / "links" / "link").symlink_to("../data/file")
        self.old = {"data/file": b"old " * 1000}

    def files(self):
        return ("data/file",)

    def words(self, path):
        return "replace", path / "links" / "link", 150_000

    def judged(self, path, status):
        if not (path / "links" / "link").is_symlink():
            yield "the link is gone"
        content = (path / "data" / "file").read_bytes()
        if content not in (self.old["data/file"], self.new["data/file"]):
            yield f"torn: {len(content)} bytes"
        elif status == 0 and content != self.new["data/file"]:
            yield "reported as done, but not"
        if status == 0 and (path / "data" / "file").stat().st_mode & 0o7777 != 0o640:
            yield "the mode was not kept"

    def is_essential(self, call, line):
        return call != "close" or Scenario.is_essential(self, call, line)


class NewFile(Scenario):
    def prepare(self):
        self.old = {}

    def files(self):
        return ("file",)

    def words(self, path):
        return "replace", path / "file", 70_000

    def judged(self, path, status):
        content = (path / "file").read_bytes() if (path / "file").exists() else None
        if content not in (None, self.new["file"]):
            yield f"torn: {len(content)} bytes"
        if status == 0 and content is None:
            yield "reported as done, but not"

    is_essential = Replacement.is_essential


class Stores(Scenario):
    """Starts, makes a change in each store and saves."""

    STORES = ("shoots.json", "catalog.json")
    # What is saved when what was there could not be read.
    EMPTY = {"shoots.json": b"[]", "catalog.json": b'{"products":[],"clients":[],"brands":[]}'}

    def prepare(self):
        support.made(self.programs, self.start, 20)
        self.damage()
        self.old = self.contents(self.start)

    def damage(self):
        pass

    def files(self):
        return self.STORES

    def words(self, path):
        return "save", path

    def judged(self, path, status):
        for name in self.STORES:
            file = path / name
            content = file.read_bytes() if file.exists() else None
            aside = [each.read_bytes() for each in path.glob(name + ".unreadable-*")]
            old = self.old.get(name)
            if content not in (None, old, self.new[name], self.EMPTY[name]):
                yield f"{name} torn: {len(content)} bytes"
            if any(each != old for each in aside):
                yield f"{name} set aside, but not whole"
            if old is not None and content not in (old, self.new[name]) and old not in aside:
                yield f"{name} lost"
            if old is not None and content == self.EMPTY[name] and old not in aside:
                yield f"{name} replaced by nothing"
            if status == 0 and content is None:
                yield f"{name} reported as saved, but not there"
            if status == 0 and content == old:
                yield f"{name} reported as saved, but old"
        for point in path.glob("versions/*.jsonl"):
            for name, line in zip(self.STORES, point.read_bytes().split(b"\n")[1:]):
                if line not in (self.old.get(name), self.new[name], self.EMPTY[name]):
                    yield f"{name} torn in {point.name}"


class DamagedStores(Stores):
    """The same where neither store can be read, so that both are set aside."""

    def damage(self):
        for name in self.STORES:
            whole = (self.start / name).read_bytes()
            (self.start / name).write_bytes(whole[:len(whole) // 2])


class FirstStart(Stores):
    """The same where there is nothing yet, not even the folder."""

    prepare = NewFile.prepare

    def words(self, path):
        return "save", path / "new" / "folder"

    def contents(self, path):
        return Scenario.contents(self, path / "new" / "folder")

    def judged(self, path, status):
        yield from Stores.judged(self, path / "new" / "folder", status)


class Insistence(Stores):
    """The same where what was not saved is tried again."""

    def words(self, path):
        return "insist", path


class Intrusion(Stores):
    """The same where others put files of theirs in place once the stores are loaded."""

    def damage(self):
        for name in self.STORES:
            (self.start / ("other " + name)).write_bytes(b'"another ' + name.encode() + b'"')

    def words(self, path):
        return "intruded", path

    def judged(self, path, status):
        for name in self.STORES:
            file = path / name
            content = file.read_bytes() if file.exists() else None
            other = (self.start / ("other " + name)).read_bytes()
            left = [each.read_bytes() for each in path.glob("other " + name)]
            aside = [each.read_bytes() for each in path.glob(name + ".unreadable-*")]
            if other not in [content, *left, *aside]:
                yield f"what was put in place of {name} is gone"
            if content not in (None, other, self.old[name], self.new[name], self.EMPTY[name]):
                yield f"{name} torn: {len(content)} bytes"
            if status == 0 and content not in (self.new[name], self.EMPTY[name]):
                yield f"{name} reported as saved, but not"


def is_of_checksum(lines):
    """Whether the call at the beginning of these belongs to a checksum: named so, or removed so once it failed."""
    if ".checksum" in lines[0]:
        return True
    rest = [line for line in lines[1:] if re.search(r"O_CREAT|unlink|rename", line) and ".vantor-save-" not in line
            or "O_CREAT" in line]
    return ".vantor-save-" in lines[0] and bool(rest) and "unlink" in rest[0] and ".checksum" in rest[0]


def unrecovered(scenario, record, fault, onwards):
    """The injected failures that nothing made good, of calls without which a save is not done."""
    made = False
    lines = record.splitlines()
    for place, line in enumerate(lines):
        match = re.match(r"^(?:\d+ +)?(\w+)\(.*\(INJECTED\)", line)
        # A restore point is no part of what is reported, nor is the name of its folder, synced once it is made.
        of_points = "/versions" in line or made and " fsync(" in f" {line}"
        made = "mkdir" in line and of_points or made and not of_points
        if not match or of_points or is_of_checksum(lines[place:]):
            continue
        # An interrupted close has closed; another interrupted call is repeated.
        if fault == "EINTR" and (match[1] == "close" or not onwards):
            continue
        if scenario.is_essential(match[1], line):
            yield line


def attack(scenario, place, call, which, fault, onwards):
    """Makes one call fail; what is wrong afterwards, and what the driver reported."""
    scenario.copy(place)
    when = f"{which}+" if onwards else str(which)
    what = f"signal={fault}" if fault == "KILL" else f"error={fault}"
    record_file = place.with_name(place.name + " record")
    try:
        status, record = support.traced(scenario.programs, record_file, *scenario.words(place),
                                        inject=f"{call}:{what}:when={when}", timeout=PATIENCE)
        breaches = list(scenario.judged(place, status))
        if fault == "KILL":
            if "killed by SIGKILL" not in record:
                breaches.append("was not killed")
        elif "(INJECTED)" not in record:
            breaches.append("the call was not made to fail")
        if fault != "KILL" and status not in (0, 1):
            breaches.append(f"the process ended with {status}")
        if fault != "KILL" and not onwards and scenario.words(place)[0] == "insist" and status != 0:
            breaches.append("was not saved when it was tried again")
        elif status == 0 and scenario.words(place)[0] != "insist":
            breaches += [f"reported as done in spite of {line[:150]}"
                         for line in unrecovered(scenario, record, fault, onwards)]
        if fault == "EINTR" and not onwards and status != 0:
            breaches.append("was not done again after an interruption")
        what, where = scenario.words(place)[:2]
        if what != "replace" and where.exists():
            left = support.Found(scenario.programs, where).left
            if left:
                breaches.append(f"{left} unfinished saves left after the next start")
        elif what == "replace" and fault != "KILL" and call not in ("unlink", "unlinkat"):
            if list(place.rglob(".vantor-save-*")):
                breaches.append("an unfinished save left")
    except subprocess.TimeoutExpired:
        status, breaches = None, [f"did not end within {PATIENCE} seconds"]
    finally:
        shutil.rmtree(place, ignore_errors=True)
        record_file.unlink(missing_ok=True)
    name = f"{scenario.name}, {call} number {which}, {fault}{' from then on' if onwards else ''}"
    return status, [f"{name}: {breach}" for breach in breaches]


def main():
    programs, long = support.arguments()
    support.needs_strace("syscalls")
    if b"__asan_init" in (programs / "store_driver").read_bytes():
        print("syscalls: SKIPPED, the address sanitizer makes calls of its own and ends when one fails")
        sys.exit(support.SKIPPED)
    breaches = []
    with support.folder(on_memory_disk=True) as path:
        scenarios = [Replacement(programs, path, "replacement through a link"), NewFile(programs, path, "new file"),
                     Stores(programs, path, "stores"), DamagedStores(programs, path, "damaged stores"),
                     FirstStart(programs, path, "first start"), Insistence(programs, path, "insistence"),
                     Intrusion(programs, path, "intrusion")]
        work = []
        for scenario in scenarios:
            for call, which in scenario.calls:
                faults = [(error, onwards) for error in ERRORS for onwards in (False, True)] + [("KILL", False)]
                if not long:
                    # Another part of the faults for each call; the long form has them all.
                    faults = [faults[(len(work) * 5 + each) % len(faults)] for each in (0, 6)]
                work += [(scenario, call, which, *fault) for fault in faults]
        with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as workers:
            results = list(workers.map(lambda numbered: attack(numbered[1][0], path / str(numbered[0]),
                                                               *numbered[1][1:]), enumerate(work)))
    names = sorted({call for scenario in scenarios for call, _ in scenario.calls})
    for _, found in results:
        breaches += found
    done = sum(status == 0 for status, _ in results)
    failed = sum(status == 1 for status, _ in results)
    killed = sum(fault[3] == "KILL" for fault in work)
    places = sum(len(scenario.calls) for scenario in scenarios)
    support.conclude("syscalls", f"{len(work)} faults at {places} calls ({', '.join(names)}): {done} made good or "
                     f"harmless, {failed} reported as failed, {killed} killed", breaches)


if __name__ == "__main__":
    main()
