"""Files from the desktop: named at the start, handed to the program that runs, of any name, and none at all."""

import os
import subprocess
import sys

from desktop import Desktop

FIRST = "Zomer 2026.vantor"
ADDRESS = "café\nnoord.vantor"
BYTES = b"byte \xff.vantor"


def has_ended(process):
    try:
        with open(f"/proc/{process}/stat", encoding="utf-8") as status:
            return status.read().rpartition(")")[2].split()[0] == "Z"
    except FileNotFoundError:
        return True


def main(program, example):
    with open(example, encoding="utf-8") as file:
        text = file.read()

    def made(desktop, name, shoot):
        """A shoot file of that name in the desktop's home."""
        path = os.path.join(os.fsencode(desktop.home), os.fsencode(name))
        with open(path, "w", encoding="utf-8") as out:
            out.write(text.replace('"Zomer op Texel"', f'"{shoot}"'))
        return path

    assert '"Zomer op Texel"' in text
    with Desktop(program) as desktop:
        def started(*arguments, **more):
            return subprocess.run([program, *arguments], env=desktop.environment, cwd=desktop.home, timeout=120,
                                  capture_output=True, **more)

        # Options need no display and no data.
        bare = {key: value for key, value in desktop.environment.items() if key not in ("DISPLAY", "QT_QPA_PLATFORM")}
        for option, status in (("--help", 0), ("--version", 0)):
            told = subprocess.run([program, option], env=bare, capture_output=True, text=True, timeout=120)
            assert told.returncode == status and "vantor-prep" in told.stdout and not told.stderr, told
        told = started("--onbekend")
        assert told.returncode == 2 and b"--onbekend" in told.stderr and not told.stdout, told
        assert not os.path.exists(desktop.data)

        # In order, and the last one is the first of the list.
        made(desktop, FIRST, "een")
        address = made(desktop, ADDRESS, "twee")
        raw = made(desktop, BYTES, "drie")
        desktop.start(os.path.join(desktop.home, FIRST),
                      "file://" + os.fsdecode(address).replace("é", "%C3%A9").replace("\n", "%0A"), raw)
        names = lambda shoots: [shoot["name"] for shoot in shoots]  # noqa: E731
        desktop.wait_for_shoots(lambda s: names(s) == ["drie", "twee", "een"], "the files of the start")

        # Handed to the one that runs, also by a relative name and one that looks like an option.
        made(desktop, "-platform", "vier")
        assert started(FIRST, raw, "--", "-platform").returncode == 0
        assert names(desktop.shoots()) == ["vier", "drie", "een", "drie", "twee", "een"]

        # What cannot be opened is said once, and holds nobody up.
        os.mkfifo(os.path.join(desktop.home, "pijp.vantor"))
        with open(os.path.join(desktop.home, "groot.vantor"), "wb") as large:
            large.truncate(200 << 20)
        assert started("pijp.vantor", "groot.vantor", desktop.home, "/dev/zero", FIRST).returncode == 0
        assert names(desktop.shoots()) == ["een", "vier", "drie", "een", "drie", "twee", "een"]
        desktop.key("Return")
        assert started().returncode == 0
        desktop.window("Vantor Prep")
        desktop.leave()

        # A disk that does not answer keeps the program from neither running nor ending.
        slow = os.path.join(desktop.home, FIRST)
        stuck = subprocess.Popen(["strace", "-f", "-o", "/dev/null", "-P", slow, "-e", "trace=read",
                                  "-e", "inject=read:delay_enter=1200s", program, slow], env=desktop.environment)
        try:
            desktop.window("Vantor Prep")
            with open(f"/proc/{stuck.pid}/task/{stuck.pid}/children", encoding="ascii") as children:
                traced = children.read().split()[0]
            assert not has_ended(traced)
            assert started(raw).returncode == 0
            assert names(desktop.shoots())[:2] == ["drie", "een"], names(desktop.shoots())
            desktop.key("ctrl+q")
            # Who holds the read up keeps what is left of its thread; the program itself has ended.
            desktop.wait_for(lambda: has_ended(traced), "the end of the program")
        finally:
            if stuck.poll() is None:
                stuck.kill()
                stuck.wait()
        assert len(desktop.shoots()) == 8
    print("1 passed, 0 failed")


if __name__ == "__main__":
    main(*sys.argv[1:])
