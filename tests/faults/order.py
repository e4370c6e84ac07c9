#!/usr/bin/env python3
"""Holds the order of the system calls of a save against what a power cut forgives.

All bytes are written and synced before the file gets its name, and the name is synced after that. Without a power
cut nothing else shows that a sync is missing."""

import re

import support

SIZES = (0, 1, 5_000, 65_535, 65_536, 1_000_000)
STORES = ("shoots.json", "catalog.json")
KEPT = STORES + tuple(name + ".checksum" for name in STORES)
LONG_SIZES = SIZES + tuple(range(65_500, 65_600)) + (200_000_000,)


class Save:
    """What became of one temporary file, in order."""

    def __init__(self, path):
        self.path = path
        self.folder = path.rsplit("/", 1)[0]
        self.steps = []
        self.written = 0
        self.target = None


def result(line):
    match = re.search(r" = (-?\d+)", line)
    return int(match[1]) if match else -1


def saves(calls):
    """The saves among the calls, each with its steps."""
    found = {}
    for name, _, line in calls.all:
        for path in re.findall(r"[<\"]([^<>\"]*/\.vantor-save-[^<>\"]*)[>\"]", line)[:1]:
            save = found.setdefault(path, Save(path))
            if name == "write":
                save.written += max(result(line), 0)
                name = "write" if not save.steps or save.steps[-1] != "write" else None
            elif name in ("rename", "renameat", "renameat2"):
                save.target = re.findall(r"\"([^\"]*)\"", line)[-1]
                name = "rename"
            # Looking at it is no step.
            if name and "stat" not in name:
                save.steps.append(name if result(line) >= 0 else f"failed {name}")
        for save in found.values():
            if save.target and name == "fsync" and f"<{save.folder}>" in line and result(line) == 0:
                save.steps.append("fsync of the folder")
    return list(found.values())


def judged(save, size):
    """What is wrong with a save that was reported as done."""
    steps = ["openat", "write", "fchmod", "fsync", "close", "rename", "fsync of the folder"]
    if size == 0:
        steps.remove("write")
    # Only a file that is replaced has a mode to keep.
    if "fchmod" not in save.steps:
        steps.remove("fchmod")
    # The folder may be synced again, for the next save.
    if save.steps[:len(steps)] != steps:
        return [f"{save.target}: {', '.join(save.steps)}"]
    if size is not None and save.written != size:
        return [f"{save.target}: {save.written} bytes written of {size}"]
    return []


def overwritten(calls, names):
    """Openings of the files themselves that change them."""
    return [line for name, _, line in calls.all
            if name == "openat" and re.search(r"O_TRUNC|O_APPEND", line) and any(each in line for each in names)]


def unsynced_folders(calls):
    """The folders that were made, and whose names a power cut may still take."""
    found = []
    for place, (name, _, line) in enumerate(calls.all):
        if name not in ("mkdir", "mkdirat") or result(line) != 0:
            continue
        parent = re.findall(r"\"([^\"]*)\"", line)[0].rsplit("/", 1)[0]
        after = [call for called, _, call in calls.all[place + 1:] if called == "fsync"]
        if not after or f"<{parent}>" not in after[0] or result(after[0]) != 0:
            found.append(line)
    return found


def main():
    programs, long = support.arguments()
    support.needs_strace("order")
    breaches = []
    judgements = folders = 0
    with support.folder(on_memory_disk=True) as path:
        record = path / "record"
        for size in LONG_SIZES if long else SIZES:
            (path / "file").unlink(missing_ok=True)
            for round in ("a new file", "the same again"):
                status, text = support.traced(programs, record, "replace", path / "file", size)
                calls = support.Calls(text)
                found = saves(calls)
                if status != 0 or len(found) != 1:
                    breaches.append(f"{size} bytes, {round}: status {status}, {len(found)} temporary files")
                    continue
                breaches += judged(found[0], size) + overwritten(calls, ['file"'])
                if ("fchmod" in found[0].steps) != (round == "the same again"):
                    breaches.append(f"{size} bytes, {round}: the mode was kept at the wrong time")
                judgements += 1
        for records in (1, 50, 1000) if long else (50,):
            stores = path / f"stores of {records}"
            support.made(programs, stores, records)
            status, text = support.traced(programs, record, "save", stores)
            calls = support.Calls(text)
            found = saves(calls)
            targets = sorted(save.target.rsplit("/", 1)[1] for save in found if save.target)
            # Both stores, and the first restore point of the day; before each store its checksum, which need not last.
            if (status != 0 or len(targets) != 5 or not set(KEPT) < set(targets)
                    or not any(target.endswith(".jsonl") for target in targets)):
                breaches.append(f"stores of {records}: status {status}, {targets}")
            for before, save in zip([None] + found, found):
                target = save.target.rsplit("/", 1)[1]
                if target.endswith(".checksum"):
                    if "fsync" in save.steps:
                        breaches.append(f"{target}: {', '.join(save.steps)}")
                    continue
                if target in STORES and before.target != save.target + ".checksum":
                    breaches.append(f"{target}: no checksum before it")
                breaches += judged(save, None)
                judgements += 1
            breaches += overwritten(calls, ['shoots.json"', 'catalog.json"'])
            breaches += [f"the name of a new folder was not synced: {line}" for line in unsynced_folders(calls)]
            folders += sum(name in ("mkdir", "mkdirat") and result(line) == 0 for name, _, line in calls.all)
    if folders == 0:
        breaches.append("no folder was made")
    support.conclude("order", f"{judgements} saves held against write, fsync, close, rename, fsync of the folder; "
                     f"{folders} new folders", breaches)


if __name__ == "__main__":
    main()
