#!/usr/bin/env python3
"""Lets every write take less than it is given, and lets files end at a limit in the middle of one.

Who does not look at how much was written takes a short write for a whole one."""

import resource
import signal

import support

SIZES = (1, 1_000, 65_536, 200_000)
MOSTS = (1, 7, 4_096, 65_535, 100_000)
# One byte a call is tried where it does not take for ever.
MOST_CALLS = 20_000


def limited(most):
    """Runs before the driver: no file may grow beyond so many bytes."""
    def limit():
        signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
        resource.setrlimit(resource.RLIMIT_FSIZE, (most, most))
    return limit


def main():
    programs, long = support.arguments()
    breaches = []
    taken = limits = 0
    with support.folder(on_memory_disk=True) as path:
        for size in SIZES:
            _, _ = support.driver(programs, "replace", path / "whole", size)
            whole = (path / "whole").read_bytes()
            if len(whole) != size:
                breaches.append(f"{size} bytes: {len(whole)} without a fault")
            for most in MOSTS:
                if size // most > MOST_CALLS:
                    continue
                (path / "file").write_bytes(b"old")
                status, _ = support.driver(programs, "--most-per-write", most, "replace", path / "file", size)
                taken += 1
                if status != 0 or (path / "file").read_bytes() != whole:
                    breaches.append(f"{size} bytes by {most}: status {status}, "
                                    f"{(path / 'file').stat().st_size} bytes")
        stores = path / "stores"
        support.made(programs, stores, 300)
        for state, most in enumerate(MOSTS[1:], 1):
            status, _ = support.driver(programs, "--most-per-write", most, "save", stores)
            found = support.Found(programs, stores)
            taken += 1
            if status != 0 or (found.shoots, found.catalog) != (str(state), str(state)):
                breaches.append(f"stores by {most}: status {status}, {found.shoots}, {found.catalog}")
        size = 200_000
        levels = 400 if long else 40
        for level in range(levels + 1):
            room = min(size * level // levels, size - 1) if level < levels else size
            (path / "file").write_bytes(b"old")
            status, _ = support.driver(programs, "replace", path / "file", size, preexec_fn=limited(room))
            limits += 1
            content = (path / "file").read_bytes()
            if room < size and (status != 1 or content != b"old"):
                breaches.append(f"room for {room} of {size}: status {status}, {len(content)} bytes")
            if room == size and (status != 0 or len(content) != size):
                breaches.append(f"room for all {size}: status {status}, {len(content)} bytes")
            if list(path.glob(".vantor-save-*")):
                breaches.append(f"room for {room} of {size}: an unfinished save left")
    support.conclude("short_writes", f"{taken} replacements and saves by short writes, {limits} file limits of 0 to "
                     f"{size} bytes", breaches)


if __name__ == "__main__":
    main()
