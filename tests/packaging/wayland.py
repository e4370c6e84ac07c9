"""The program on Wayland as on X11: it starts, takes files over, closes, and what it copied stays to be pasted.

    wayland.py PROGRAM SHOOT.vantor [FOLDER FOR SCREENSHOTS]

Once on a compositor without a screen, and once on one that shows its screen in a window of a virtual display, so
that keys reach the program; then the clipboard again on X11.
"""

import glob
import os
import re
import subprocess
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "e2e"))
from desktop import Desktop  # noqa: E402

PROGRAM, SHOOT = (os.path.abspath(argument) for argument in sys.argv[1:3])
PICTURES = os.path.abspath(sys.argv[3]) if len(sys.argv) > 3 else None
SOCKET = "vantor-test"


def said(what):
    print("ok     ", what, flush=True)


class Compositor:
    """weston on a desktop of its own, of one kind of output; the desktop's programs become Wayland programs."""

    def __init__(self, desktop, backend, *arguments):
        self.desktop = desktop
        self.log = os.path.join(desktop.home, f"{backend}.log")
        environment = {**desktop.environment}
        environment.pop("QT_QPA_PLATFORM")
        self.process = subprocess.Popen(
            ["weston", f"--backend={backend}-backend.so", f"--socket={SOCKET}", "--idle-time=0", "--no-config",
             f"--log={self.log}", *arguments],
            env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        desktop.processes.append(self.process)
        socket = os.path.join(desktop.environment["XDG_RUNTIME_DIR"], SOCKET)
        desktop.wait_for(lambda: os.path.exists(socket), "the compositor")
        desktop.environment.update(QT_QPA_PLATFORM="wayland", WAYLAND_DISPLAY=SOCKET, WAYLAND_DEBUG="1")
        self.protocol = os.path.join(desktop.home, f"{backend}-protocol.log")

    def start(self, *arguments):
        """Starts the program, keeping what it says to the compositor: that is where its window can be seen."""
        with open(self.protocol, "wb") as file:
            self.desktop.app = subprocess.Popen([self.desktop.program, *arguments], env=self.desktop.environment,
                                                stderr=file)
        self.desktop.wait_for(lambda: 'set_title("Vantor Prep")' in self.spoken(), "the window")
        self.desktop.wait_for(lambda: ".commit()" in self.spoken(), "its picture")
        # From the first picture to the last of its start.
        time.sleep(1)
        assert self.desktop.app.poll() is None, "the program left"

    def times_focused(self):
        return len(re.findall(r"wl_keyboard[@#]\d+\.enter\(", self.spoken()))

    def spoken(self):
        with open(self.protocol, encoding="utf-8", errors="replace") as file:
            return file.read()


def hand_over(desktop, shoots):
    later = subprocess.run([desktop.program, SHOOT], env=desktop.environment, stderr=subprocess.DEVNULL, timeout=120)
    assert later.returncode == 0, f"the later start ended with {later.returncode}"
    desktop.wait_for_shoots(lambda stored: len(stored) == shoots, "the shoot that was handed over")


def without_a_screen():
    with Desktop(PROGRAM) as desktop:
        compositor = Compositor(desktop, "headless", "--width=1400", "--height=1000", "--use-pixman")
        compositor.start()
        said("headless: the program starts")
        application = [line for line in compositor.spoken().splitlines() if "set_app_id(" in line]
        entry, = glob.glob(os.path.join(os.path.dirname(PROGRAM), "..", "packaging", "*.desktop"))
        expected = os.path.basename(entry).removesuffix(".desktop")
        assert application and f'set_app_id("{expected}")' in application[-1], (expected, application)
        said(f"headless: its window belongs to {expected}")
        hand_over(desktop, 1)
        said("headless: a later start hands its file over")
        desktop.app.terminate()
        desktop.app.wait(timeout=120)
        assert len(desktop.shoots()) == 1
        compositor.start(SHOOT)
        desktop.wait_for_shoots(lambda stored: len(stored) == 2, "the shoot on the command line")
        said("headless: a start opens its file")


def on_wayland(desktop):
    return subprocess.run(["wl-paste", "--type", "image/png"], env=desktop.environment, stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL, timeout=120).stdout


def on_x11(desktop):
    return subprocess.run(["xclip", "-selection", "clipboard", "-t", "image/png", "-o"], env=desktop.environment,
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, timeout=120).stdout


def pasted_code(desktop, paste):
    """What the code says that another program pastes; nothing when it gets no picture of one."""
    picture = os.path.join(desktop.home, "pasted.png")
    with open(picture, "wb") as file:
        file.write(paste(desktop))
    if os.path.getsize(picture) == 0:
        return None
    return subprocess.run(["zbarimg", "--quiet", "--raw", picture], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                          text=True, timeout=120).stdout.strip()


def copies(desktop, where, paste, open_generator):
    """Copies two codes out of the QR generator by keys alone, and pastes each of them twice."""
    open_generator()
    for number in ("7", "8"):
        desktop.key("ctrl+a")
        desktop.type(number)
        desktop.key("Return")
        # Backwards from the first field: the saving button, then the copying one.
        desktop.key("shift+Tab", "shift+Tab", "space")
        desktop.wait_for(lambda: pasted_code(desktop, paste) == f"SET:{number}", f"code {number} to be pasted")
        time.sleep(2)
        assert pasted_code(desktop, paste) == f"SET:{number}", "the second time it could not be pasted"
        desktop.key("Tab", "Tab")
    said(f"{where}: a copied code can be pasted, and again, and so can the next one")
    desktop.key("ctrl+w")
    time.sleep(1)
    assert pasted_code(desktop, paste) == "SET:8", "gone with the window that it was copied in"
    said(f"{where}: it stays when the window closes that it was copied in")


def with_a_seat():
    with Desktop(PROGRAM) as desktop:
        compositor = Compositor(desktop, "x11", "--width=1200", "--height=900", "--use-pixman", "--shell=kiosk-shell.so")
        desktop.wait_for(lambda: "Weston Compositor" in desktop.run("xwininfo", "-root", "-tree").stdout,
                         "the compositor's window")
        compositor.start(SHOOT)
        if PICTURES:
            desktop.screenshot(os.path.join(PICTURES, "wayland.png"))
        said("Wayland: the program starts")
        # Keys go where the focus is.
        desktop.wait_for(compositor.times_focused, "the keyboard")
        before = compositor.times_focused()

        def asked_for_generator():
            # The compositor now and then swallows its first key.
            desktop.key("ctrl+g")
            time.sleep(1)
            return 'set_title("QR Generator")' in compositor.spoken()

        def open_generator():
            desktop.wait_for(asked_for_generator, "the generator")
            desktop.wait_for(lambda: compositor.times_focused() > before, "the keyboard in the generator")
            time.sleep(1)

        def paste(desktop):
            # Whoever pastes has the focus for it, and keys are lost until it has come back.
            focused = compositor.times_focused()
            picture = on_wayland(desktop)
            desktop.wait_for(lambda: compositor.times_focused() > focused, "the focus to come back")
            time.sleep(0.3)
            return picture

        copies(desktop, "Wayland", paste, open_generator)
        desktop.leave()
        said("Wayland: Ctrl+Q leaves")


def on_a_plain_display():
    with Desktop(PROGRAM) as desktop:
        desktop.start(SHOOT)

        def open_generator():
            desktop.key("ctrl+g")
            desktop.window("QR Generator")

        copies(desktop, "X11", on_x11, open_generator)
        desktop.window("Vantor Prep")
        desktop.leave()
        said("X11: Ctrl+Q leaves")


without_a_screen()
with_a_seat()
on_a_plain_display()
