#!/usr/bin/env python3
"""Kills a process at random moments while it saves both stores without a pause, and starts anew.

Both files have to hold the state before or after the change that was running, whole, every restore point is whole, and
the next start has to remove what the unfinished save left."""

import os
import random
import signal
import subprocess
import sys
import time

import support

RECORDS = 300
MOST_SECONDS = 0.06


def told(lines, store, state):
    """The states that the store may be in by what the process told before it was killed."""
    for line in lines:
        name, what, number = line.split()
        if name == store:
            state = {int(number)} if what == "done" else {int(number) - 1, int(number)}
    return state


def attack(programs, path, moment, at_start):
    """Kills once, so many seconds after the first change began or after the start; what the process told."""
    process = subprocess.Popen([programs / "store_driver", "run", path], stdout=subprocess.PIPE,
                               env=support.ENVIRONMENT)
    try:
        first = b"" if at_start else process.stdout.readline()
        time.sleep(moment)
    finally:
        os.kill(process.pid, signal.SIGKILL)
        rest, _ = process.communicate()
    if process.returncode != -signal.SIGKILL:
        raise support.Breach(f"the process had ended by itself with {process.returncode}")
    return (first + rest).decode().split("\n")[:-1]


def main():
    programs, long = support.arguments()
    kills = 2000 if long else 60
    seed = random.randrange(1 << 32)
    moments = random.Random(seed)
    breaches = []
    inside = changes = 0
    with support.folder() as disk, support.folder(on_memory_disk=True) as memory:
        # A disk makes most moments fall into its syncing, memory makes them fall into the writing.
        places = [disk / "stores", memory / "stores"]
        states = [({0}, {0})] * 2
        for path in places:
            support.made(programs, path, RECORDS)
        for kill in range(kills):
            which = kill % 2
            try:
                lines = attack(programs, places[which], moments.uniform(0, MOST_SECONDS),
                               at_start=kill % 10 > 7)
                shoots = told(lines, "shoots", states[which][0])
                catalog = told(lines, "catalog", states[which][1])
                found = support.Found(programs, places[which])
                for what, state, states_told in (("shoots", found.shoots, shoots), ("catalogue", found.catalog, catalog)):
                    if state not in map(str, states_told):
                        breaches.append(f"kill {kill}: {what} in state {state}, not in {states_told}")
                if found.left or found.aside:
                    breaches.append(f"kill {kill}: {found.left} unfinished saves left, {found.aside} set aside")
                inside += found.unfinished > 0
                if breaches:
                    break
                changes += int(found.shoots) - min(states[which][0])
                states[which] = ({int(found.shoots)}, {int(found.catalog)})
            except support.Breach as breach:
                breaches.append(f"kill {kill}: {breach}")
                break
    if not breaches and inside < kills // 20:
        breaches.append(f"only {inside} kills fell between the making of a file and its renaming")
    support.conclude("kill", f"{kills} kills, {inside} of them between the making of a file and its renaming, "
                     f"during {changes} changes of the shoots and as many of the catalogue, seed {seed}", breaches)


if __name__ == "__main__":
    main()
