#!/usr/bin/env python3
"""Starts the program four times at the same moment on the same data, each time with a shoot file of its own.

One process at a time may own the data: hold the lock, or listen. In half of the rounds the owner is killed at a random
moment. Then whoever waits takes over, or a new start does. In the end one process is left, the
others have ended well, and every file is in the store once. A file whose own process was killed may be there or not, as
the user sees that process go. What was handed to a killed owner is there once as well.

In further rounds the owner is stopped at a random moment and goes on later. A start that gave it up has said so, not
before five seconds, and its file is not opened afterwards, unless it was being saved when the owner stopped; one that ended
well has its file opened once."""

import json
import os
import pathlib
import random
import signal
import subprocess
import sys
import time

import support

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), os.pardir, "e2e"))
from desktop import Desktop  # noqa: E402

STARTS = 4
NAMES = (b"Zomer op Texel.vantor", b"caf\xc3\xa9 & co.vantor", b"twee\nregels.vantor", b"byte \xff\xfe.vantor")
# A start gives an owner up after five seconds; how much later it comes to say so is the machine's affair.
GIVEN_UP = 4.5
# Only so that an attack that hangs ends; nothing is judged by it.
LONGEST = 120


def shoot_file(name):
    item = {"id": "10000000-0000-4000-8000-000000000001", "name": "jas", "color": "rood"}
    sets = [{"id": f"20000000-0000-4000-8000-{i:012}", "setNumber": str(i), "brand": "Marvis", "items": [item],
             "model": "Anna", "location": "", "timestamp": "2026-03-14T09:30:00Z", "taggedCount": 0, "email": ""}
            for i in range(20)]
    return {"id": "30000000-0000-4000-8000-000000000001", "name": name, "location": "", "client": "",
            "date": "2026-03-14T09:30:00Z", "sets": sets, "activationLog": []}


def told(process):
    """What can be known of a process that does not do what it should."""
    with open(f"/proc/{process.pid}/stat", encoding="utf-8", errors="replace") as status:
        state = status.read().rpartition(")")[2].split()[0]
    return process.pid, state, process.errors.read_text(errors="replace")[-100:]


class Data:
    """One user's data, and what can be seen from outside of who owns it."""

    def __init__(self, programs, path):
        self.program = programs / "vantor-prep"
        self.path = path
        self.runtime = path / "run"
        self.runtime.mkdir(parents=True, mode=0o700)
        self.lock = path / "data" / "Vantor" / "lock"
        self.store = path / "data" / "Vantor" / "shoots.json"
        self.environment = dict(
            support.ENVIRONMENT, HOME=str(path), XDG_DATA_HOME=str(path / "data"), XDG_CONFIG_HOME=str(path / "config"),
            XDG_CACHE_HOME=str(path / "cache"), XDG_RUNTIME_DIR=str(self.runtime), TMPDIR=str(path),
            QT_QPA_PLATFORM="offscreen", VANTOR_UPDATE_ENDPOINT="http://127.0.0.1:9/", LC_ALL="C.UTF-8")
        self.processes = []

    def file(self, index, name=None):
        """A shoot file, and an argument that names it: a path, a relative one, or an address."""
        folder = os.fsencode(self.path / f"map {index}")
        os.makedirs(folder, exist_ok=True)
        path = os.path.join(folder, NAMES[index % len(NAMES)])
        with open(path, "w", encoding="utf-8") as out:
            json.dump(shoot_file(name or f"shoot {index}"), out)
        if index % 3 == 1:
            return os.path.relpath(path, os.fsencode(self.path))
        if index % 3 == 2:
            return b"file://localhost" + b"".join(b"%%%02X" % c if c > 126 or c <= 32 or c == 37 else bytes([c])
                                                  for c in path)
        return path

    def start(self, *arguments):
        errors = open(self.path / f"errors {len(self.processes)}", "wb")
        process = subprocess.Popen([self.program, *arguments], cwd=self.path, env=self.environment, stderr=errors)
        errors.close()
        process.errors = self.path / f"errors {len(self.processes)}"
        process.arguments = arguments
        self.processes.append(process)
        return process

    def holder(self):
        """The process that holds the lock, by what the kernel says."""
        try:
            inode = self.lock.stat().st_ino
        except FileNotFoundError:
            return None
        holders = set()
        with open("/proc/locks", encoding="ascii") as locks:
            for line in locks:
                words = line.split()
                if "FLOCK" in words and "->" not in words and int(words[5].split(":")[2]) == inode:
                    holders.add(int(words[4]))
        known = [process.pid for process in self.processes if process.pid in holders]
        if len(known) > 1:
            raise support.Breach(f"{known} hold the lock")
        return known[0] if known else None

    def listeners(self):
        """The sockets that somebody listens at, also those whose name another one took."""
        found = set()
        with open("/proc/net/unix", encoding="utf-8", errors="surrogateescape") as sockets:
            for line in sockets:
                words = line.split(None, 7)
                if len(words) == 8 and words[3] == "00010000" and words[7].startswith(str(self.path)):
                    found.add(words[6])
        return found

    def check_listeners(self):
        # A process that is being killed still listens for a moment after its lock is gone.
        found = self.listeners()
        end = time.monotonic() + LONGEST
        while time.monotonic() < end:
            if len(found) < 2:
                return
            time.sleep(0.01)
            found &= self.listeners()
        raise support.Breach(f"{len(found)} processes listen")

    def shoots(self):
        try:
            return [shoot["name"] for shoot in json.loads(self.store.read_text(encoding="utf-8"))]
        except FileNotFoundError:
            return []

    def running(self):
        return [process for process in self.processes if process.poll() is None]

    def wait(self, condition, what, seconds=LONGEST, between=0.005):
        end = time.monotonic() + seconds
        while True:
            result = condition()
            if result:
                return result
            if time.monotonic() > end:
                raise support.Breach(f"waited in vain for {what}: running {list(map(told, self.running()))}, "
                                     f"holder {self.holder()}, {self.shoots()}")
            self.check_listeners()
            time.sleep(between)

    def has_owner(self):
        return self.holder() is not None and self.listeners()

    def end(self):
        for process in self.running():
            process.kill()
        for process in self.processes:
            process.wait()


def start_all(data, moments):
    """Starts one process for each file, at the same moment but for what the machine makes of it."""
    files = [data.file(i) for i in range(STARTS)]
    if moments.random() < 0.5:
        time.sleep(moments.random() * 0.01)
    return [data.start(file) for file in files]


def judge(data, starts, killed):
    """Waits until all has come to rest, and counts."""
    data.wait(lambda: len(data.running()) == 1, "all but the owner to end")
    owner = data.running()[0]
    data.wait(lambda: data.holder() == owner.pid, "the last one to be the owner")
    sure = [f"shoot {i}" for i, process in enumerate(starts) if process not in killed]
    data.wait(lambda: set(sure) <= set(data.shoots()), "every file to be opened")
    time.sleep(0.05)
    found = data.shoots()
    for i, process in enumerate(starts):
        count = found.count(f"shoot {i}")
        if count > 1 or (count == 0 and process not in killed):
            raise support.Breach(f"shoot {i} is there {count} times; killed: {[starts.index(p) for p in killed]}")
    for process in data.processes:
        if process is not owner and process not in killed and process.returncode != 0:
            raise support.Breach(f"a start ended with {process.returncode}")


def kill_owner(data, figures):
    """Kills the owner and tells which one it was, once there is another."""
    victim = data.wait(data.holder, "an owner")
    process = next(p for p in data.processes if p.pid == victim)
    process.kill()
    killed_at = time.monotonic()
    process.wait()
    others_wait = True

    def taken_over():
        nonlocal killed_at, others_wait
        if not data.running() and others_wait:
            # All others had their files opened and were about to end.
            others_wait = False
            killed_at = time.monotonic()
            data.start()
        return data.has_owner() and data.holder() != victim

    data.wait(taken_over, "a takeover", between=0.001)
    took = time.monotonic() - killed_at
    figures["waiting" if others_wait else "new"].append(took)
    return process


def kill_round(data, moments, figures, kills):
    starts = start_all(data, moments)
    began = time.monotonic()
    if not kills:
        judge(data, starts, [])
        figures["settled"] = time.monotonic() - began
        return
    moment = moments.random() * figures["settled"]
    while time.monotonic() - began < moment:
        data.check_listeners()
        time.sleep(0.001)
    killed = kill_owner(data, figures)
    figures["kills"] += 1
    figures["undone"] += sum(f"shoot {i}" not in data.shoots() for i in range(STARTS))
    judge(data, starts, [killed])


def begun_saves(data):
    """The shoots that stand in the store now, and those that an unfinished save is about to put there; and whether one more
    is on its way, as what is written before the store says: the copy of what there was, and the checksum."""
    names = set(data.shoots())
    for unfinished in data.store.parent.glob(".vantor-save-*"):
        names |= {f"shoot {i}" for i in range(STARTS) if f'"shoot {i}"' in unfinished.read_text(errors="replace")}
    before_it = [*data.store.parent.glob("versions/*"), *data.store.parent.glob("versions/.*"),
                 *data.store.parent.glob("shoots.json.checksum")]
    saved = data.store.stat().st_mtime_ns if data.store.exists() else 0
    return names, any(path.stat().st_mtime_ns > saved for path in before_it)


def stop_round(data, moments, figures):
    """The owner stops for longer than anybody waits for it."""
    starts = start_all(data, moments)
    data.wait(lambda: data.holder(), "an owner", between=0.001)
    time.sleep(moments.random() * figures["settled"])
    owner = next(p for p in data.processes if p.pid == data.holder())
    owner.send_signal(signal.SIGSTOP)
    # A shoot whose saving has begun is saved, whatever comes in between.
    saving, one_more = begun_saves(data)
    gave_up = set()

    def waiting():
        for process in data.running():
            if process is not owner and process not in gave_up and b"reageert niet" in process.errors.read_bytes():
                # Its message stands on a screen that nobody sees.
                gave_up.add(process)
                process.kill()
                process.wait()
        return len(data.running()) > 1

    data.wait(lambda: not waiting(), "every start to know")
    owner.send_signal(signal.SIGCONT)
    sure = [f"shoot {i}" for i, process in enumerate(starts) if process not in gave_up]
    data.wait(lambda: set(sure) <= set(data.shoots()), "what was opened")
    time.sleep(0.5)
    found = data.shoots()
    for i, process in enumerate(starts):
        count = found.count(f"shoot {i}")
        if process in gave_up and count == 1 and (f"shoot {i}" in saving or one_more):
            one_more = one_more and f"shoot {i}" in saving
            continue
        if count != (0 if process in gave_up else 1):
            raise support.Breach(f"shoot {i}, {'given up' if process in gave_up else 'handed over'}, is there "
                                 f"{count} times")
    figures["given up"] += len(gave_up)


def hung_round(programs):
    """The owner hangs, on a screen: the second start says so there, and leaves."""
    with Desktop(str(programs / "vantor-prep")) as desktop:
        data = Data(programs, pathlib.Path(desktop.home) / "files")
        desktop.start(data.file(0, "eerste"))
        desktop.wait_for_shoots(lambda shoots: len(shoots) == 1, "the first shoot")
        owner = desktop.app
        owner.send_signal(signal.SIGSTOP)
        before = os.stat(os.path.join(desktop.data, "shoots.json")).st_mtime_ns
        began = time.monotonic()
        second = subprocess.Popen([desktop.program, data.file(3, "tweede")], env=desktop.environment,
                                  stderr=subprocess.DEVNULL)
        try:
            desktop.window("Vantor Prep reageert niet")
            took = time.monotonic() - began
            if took < GIVEN_UP:
                raise support.Breach(f"the message came after {took:.2f} s")
            desktop.key("Return")
            status = second.wait(LONGEST)
        finally:
            second.kill()
            second.wait()
            owner.send_signal(signal.SIGCONT)
        if status != 1:
            raise support.Breach(f"the second start ended with {status}")
        time.sleep(1)
        if os.stat(os.path.join(desktop.data, "shoots.json")).st_mtime_ns != before:
            raise support.Breach("the store has changed")
        third = subprocess.run([desktop.program, data.file(4, "derde")], cwd=data.path, env=desktop.environment,
                               stderr=subprocess.DEVNULL, timeout=LONGEST)
        names = [shoot["name"] for shoot in desktop.shoots()]
        if third.returncode != 0 or names != ["derde", "eerste"]:
            raise support.Breach(f"the third start ended with {third.returncode}, {names}")
    return took


def main():
    programs, long = support.arguments()
    rounds, stops, hangs = (200, 20, 3) if long else (6, 1, 1)
    seed = random.randrange(1 << 32)
    moments = random.Random(seed)
    figures = {"settled": 0.5, "kills": 0, "undone": 0, "waiting": [], "new": [], "given up": 0}
    breaches = []
    for number in range(rounds + stops):
        with support.folder() as path:
            data = Data(programs, path)
            try:
                if number < rounds:
                    kill_round(data, moments, figures, kills=number % 2 == 1)
                else:
                    stop_round(data, moments, figures)
            except support.Breach as breach:
                breaches.append(f"round {number}: {breach}")
            finally:
                data.end()
    messages = []
    for number in range(hangs):
        try:
            messages.append(hung_round(programs))
        except (support.Breach, AssertionError) as breach:
            breaches.append(f"hang {number}: {breach}")
    longest = {kind: max(figures[kind], default=0) for kind in ("waiting", "new")}
    support.conclude(
        "processes", f"{rounds} rounds of {STARTS} starts, {figures['kills']} owners killed with {figures['undone']} "
        f"files not yet opened; longest takeover {longest['waiting']:.2f} s by one of {len(figures['waiting'])} that "
        f"waited, {longest['new']:.2f} s by one of {len(figures['new'])} new starts; {stops} owners stopped, "
        f"{figures['given up']} starts gave up; {hangs} hung, said so after {max(messages, default=0):.1f} s, seed {seed}",
        breaches)


if __name__ == "__main__":
    main()
