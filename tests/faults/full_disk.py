#!/usr/bin/env python3
"""Saves on disks that are really full: with free space from nothing to just not enough, and with enough.

Where it is not enough the old content stays and no unfinished file takes up the rest; where it is, the new content
is there. What was not saved is once there is room, old restore points make room, and none takes the room of a save. On
a small disk in memory and on ext4 in a file; as root, since both have to be mounted. Nobody else sees the disks, and
they go with the attack even when it is killed."""

import os
import subprocess
import sys

import support

STORES = ("shoots", "catalog")


def run(*command):
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    if done.returncode != 0:
        raise OSError(f"{' '.join(command[:3])}: {done.stdout.strip()}")


def mounted(kind, folder):
    """Where a small file system of that kind is mounted now."""
    place, image = folder / kind, folder / "image"
    place.mkdir()
    if kind == "tmpfs":
        run("mount", "-t", "tmpfs", "-o", "size=24m", "none", str(place))
    else:
        image.touch()
        os.truncate(image, 40 << 20)
        run("mkfs.ext4", "-q", "-F", "-b", "1024", "-m", "0", str(image))
        run("mount", "-o", "loop", str(image), str(place))
    return place


def free(place):
    status = os.statvfs(place)
    return status.f_bavail * status.f_frsize


def leave(place, room):
    """Fills the disk with one file until no more than that is free."""
    filler = place / "filler"
    filler.unlink(missing_ok=True)
    descriptor = os.open(filler, os.O_CREAT | os.O_WRONLY)
    try:
        surplus = free(place) - room
        # Blocks that say where the file's blocks are come out of the same space.
        while surplus > 0:
            size = os.fstat(descriptor).st_size
            os.posix_fallocate(descriptor, size, max(surplus - surplus // 100, 1))
            surplus = free(place) - room
    finally:
        os.close(descriptor)


def attack(programs, place, kind, name, levels, breaches):
    """Saves one store at so many levels of free space; how often the old content stayed, and the new one came."""
    stores = place / "stores"
    file = stores / f"{name}.json"
    stayed = came = 0
    block = os.statvfs(place).f_frsize
    before = int(getattr(support.Found(programs, stores), name))
    # Makes the restore point of the day too, which would take the room of the save otherwise.
    support.driver(programs, f"save-{name}", stores)
    # The next save is as long, to within a few hundred bytes.
    old = file.read_bytes()
    need = len(old) // block * block - block
    rooms = [need * level // (levels - 1) for level in range(levels)]
    if len({room // block for room in rooms}) < levels:
        breaches.append(f"{kind}: {levels} levels are not different ones")
    for room in rooms:
        leave(place, room)
        status, _ = support.driver(programs, f"save-{name}", stores)
        left = [each.name for each in stores.rglob(".vantor-save-*")]
        if file.read_bytes() != old or status != 1 or left:
            breaches.append(f"{kind}, {name}, {room} of {len(old)} bytes free: status {status}, {left} left, "
                            f"the old content is {'there' if file.read_bytes() == old else 'gone'}")
        else:
            stayed += 1
    for more in (64, 128, 1024):
        leave(place, len(old) + more * 1024)
        status, _ = support.driver(programs, f"save-{name}", stores)
        if status != 0 or file.read_bytes() == old:
            breaches.append(f"{kind}, {name}, {more} KiB more than needed: not saved, status {status}")
        else:
            came += 1
        old = file.read_bytes()
    breaches += insistence(programs, place, kind, name)
    breaches += points(programs, place, kind, name)
    (place / "filler").unlink()
    found = support.Found(programs, stores)
    if getattr(found, name) != str(before + 6) or found.aside:
        breaches.append(f"{kind}: {name} in state {getattr(found, name)}, {found.aside} set aside")
    return stayed, came


def insistence(programs, place, kind, name):
    """Fills the disk, has both stores changed, makes room, and has them try again."""
    leave(place, 0)
    stores = place / "stores"
    old = (stores / f"{name}.json").read_bytes()
    with subprocess.Popen([programs / "store_driver", "insist", stores], stdin=subprocess.PIPE,
                          stdout=subprocess.PIPE, env=support.ENVIRONMENT, text=True) as driver:
        if driver.stdout.readline() != "unsaved 1\n":
            yield f"{kind}, {name}: nobody noticed that the disk is full"
        (place / "filler").unlink()
        driver.communicate("go on\n", timeout=60)
    if driver.returncode != 0 or (stores / f"{name}.json").read_bytes() == old:
        yield f"{kind}, {name}: not saved when there was room again, status {driver.returncode}"


def points(programs, place, kind, name):
    """Saves on a full disk with restore points of a week, and none of today."""
    stores = place / "stores"
    file = stores / f"{name}.json"
    versions = stores / "versions"
    made = [each.read_bytes() for each in versions.glob("*.jsonl")]
    if len(made) != 1:
        yield f"{kind}, {name}: {len(made)} restore points of today"
        return
    days = [f"2020010{day}T080000Z.jsonl" for day in range(1, 8)]
    for old in versions.iterdir():
        old.unlink()
    for day in days:
        (versions / day).write_bytes(made[0])
    old = file.read_bytes()
    leave(place, 0)
    status, _ = support.driver(programs, f"save-{name}", stores)
    left = sorted(each.name for each in versions.iterdir())
    if status != 0 or file.read_bytes() == old:
        yield f"{kind}, {name}: no restore point made room, status {status}, {left}"
    if left == days or left != days[-len(left):] or len(left) < 3:
        yield f"{kind}, {name}: these restore points are left: {left}"
    # They would make room for the other store too.
    for day in left:
        (versions / day).unlink()


def with_mounts_of_its_own():
    """Starts the attack again where mounting changes nothing for other processes, unless it is there already."""
    if os.environ.get("VANTOR_OWN_MOUNTS"):
        return
    command = ["unshare", "--mount"]
    try:
        done = subprocess.run(command + ["true"], stderr=subprocess.PIPE, text=True)
        why = "" if done.returncode == 0 else done.stderr.strip()
    except OSError as error:
        why = str(error)
    if why or os.geteuid() != 0:
        print(f"full_disk: SKIPPED, only root may mount a small disk {why}")
        sys.exit(support.SKIPPED)
    os.environ["VANTOR_OWN_MOUNTS"] = "1"
    os.execvp(command[0], command + [sys.executable, *sys.argv])


def main():
    programs, long = support.arguments()
    # A catalogue of more blocks than levels, so that each level is another one.
    levels, records = (200, 7_500) if long else (20, 1_500)
    with_mounts_of_its_own()
    breaches, figures, skipped = [], [], []
    for kind in ("tmpfs", "ext4"):
        with support.folder() as path:
            try:
                place = mounted(kind, path)
            except OSError as error:
                skipped.append(f"{kind} SKIPPED ({error})")
                continue
            try:
                support.made(programs, place / "stores", records)
                for name in STORES:
                    stayed, came = attack(programs, place, kind, name, levels, breaches)
                    figures.append(f"{name} on {kind}: the old content stayed at {stayed} of {levels} levels, "
                                   f"the new one came at {came} of 3")
            finally:
                run("umount", str(place))
    if not figures:
        print("full_disk: " + ", ".join(skipped))
        sys.exit(support.SKIPPED)
    support.conclude("full_disk", "; ".join(figures + skipped), breaches)


if __name__ == "__main__":
    main()
