"""A desktop of its own for one test: a virtual display, a window manager, and the program in an empty home.

Everything that is started here is ended here, by its process id. Keys go through the display, as a keyboard's or
a scanner's would; what came of them is read from the files that the program keeps.
"""

import json
import os
import shutil
import signal
import subprocess
import tempfile
import time

# Letters that the virtual keyboard gets keys for, so that a simulated scanner can type them at full speed.
ACCENTS = "éëèêïöóüçàâîñÉ—·"

KEYSYMS = {
    **{letter: f"U{ord(letter):04X}" for letter in ACCENTS},
    ":": "colon", "/": "slash", " ": "space", ".": "period", "-": "minus", ",": "comma", "@": "at",
    "\n": "Return", "&": "ampersand", ";": "semicolon", "_": "underscore", "(": "parenleft", ")": "parenright",
}


class Desktop:
    def __init__(self, program, size="1400x1000", environment=None):
        self.program = program
        self.home = tempfile.mkdtemp(prefix="vantor-e2e-")
        self.data = os.path.join(self.home, "data", "Vantor")
        self.processes = []
        self.app = None
        read_end, write_end = os.pipe()
        self.processes.append(subprocess.Popen(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0", size + "x24", "-nolisten", "tcp", "-noreset"],
            pass_fds=[write_end], stderr=subprocess.DEVNULL))
        os.close(write_end)
        display = b""
        while not display.endswith(b"\n"):
            piece = os.read(read_end, 16)
            if not piece:
                raise RuntimeError("no virtual display")
            display += piece
        os.close(read_end)
        runtime = os.path.join(self.home, "run")
        os.mkdir(runtime, 0o700)
        self.environment = {
            **os.environ,
            "DISPLAY": ":" + display.decode().strip(),
            "HOME": self.home,
            "XDG_DATA_HOME": os.path.join(self.home, "data"),
            "XDG_CONFIG_HOME": os.path.join(self.home, "config"),
            "XDG_CACHE_HOME": os.path.join(self.home, "cache"),
            "XDG_RUNTIME_DIR": runtime,
            "QT_QPA_PLATFORM": "xcb",
            # Nothing answers there: a test asks no web site for updates.
            "VANTOR_UPDATE_ENDPOINT": "http://127.0.0.1:9/",
            "LC_ALL": "C.UTF-8",
            **(environment or {}),
        }
        self.processes.append(subprocess.Popen(["openbox"], env=self.environment, stderr=subprocess.DEVNULL))
        # A window that is mapped while the window manager is still starting may never be shown.
        self.wait_for(lambda: "window id" in self.run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK", check=False).stdout,
                      "the window manager")

        free = [line.split()[1] for line in self.run("xmodmap", "-pke").stdout.splitlines() if line.rstrip().endswith("=")]
        for keycode, letter in zip(free, ACCENTS):
            self.run("xmodmap", "-e", f"keycode {keycode} = {KEYSYMS[letter]}")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if self.app and self.app.poll() is None:
            self.app.kill()
            self.app.wait()
        for process in reversed(self.processes):
            process.terminate()
            process.wait()
        shutil.rmtree(self.home, ignore_errors=True)

    def run(self, *command, check=True, **more):
        return subprocess.run(command, env=self.environment, check=check, capture_output=True, text=True, **more)

    def wait_for(self, condition, what, seconds=120):
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            result = condition()
            if result:
                return result
            time.sleep(0.02)
        raise AssertionError(f"waited {seconds} s in vain for {what}")

    def start(self, *arguments, environment=None):
        self.app = subprocess.Popen([self.program, *arguments], env={**self.environment, **(environment or {})})
        return self.window("Vantor Prep")

    def windows(self, title):
        return self.run("xdotool", "search", "--onlyvisible", "--name", f"^{title}$", check=False).stdout.split()

    def window(self, title):
        """Waits for the window of exactly this title and for the focus to be on it; the result is its id."""
        found = self.wait_for(lambda: self.windows(title), f"the window “{title}”")[-1]
        self.run("xdotool", "windowactivate", "--sync", found)
        self.wait_for(lambda: self.run("xdotool", "getactivewindow", check=False).stdout.strip() == found,
                      f"the focus on “{title}”")
        # The focus has reached the window; the program learns of it a moment later.
        time.sleep(0.15)
        return found

    def wait_until_closed(self, title, under=None):
        """And then for the window below it, if one is named."""
        self.wait_for(lambda: not self.windows(title), f"“{title}” to close")
        time.sleep(0.15)
        if under:
            self.window(under)

    def key(self, *keys):
        self.run("xdotool", "key", *keys)
        time.sleep(0.05)

    def type(self, text):
        """As a person types into a field."""
        self.run("xdotool", "type", "--delay", "12", text)
        time.sleep(0.1)

    def scan(self, text, milliseconds=1):
        """As a scanner types a card: every line feed as Return, and Return at the end."""
        keys = [KEYSYMS.get(c, c) for c in text + "\n"]
        self.run("xdotool", "key", "--delay", str(milliseconds), *keys)

    def leave(self, *keys):
        """Ends the program as its user does, and makes sure that it ended well."""
        self.key(*(keys or ("ctrl+q",)))
        if self.app.wait(timeout=120) != 0:
            raise AssertionError(f"the program ended with {self.app.returncode}")

    def screenshot(self, path, window=None):
        self.run("import", "-window", window or "root", path)

    def shoots(self):
        with open(os.path.join(self.data, "shoots.json"), encoding="utf-8") as file:
            return json.load(file)

    def catalog(self):
        with open(os.path.join(self.data, "catalog.json"), encoding="utf-8") as file:
            return json.load(file)

    def store_shoots(self, shoots):
        os.makedirs(self.data, exist_ok=True)
        with open(os.path.join(self.data, "shoots.json"), "w", encoding="utf-8") as file:
            json.dump(shoots, file)

    def wait_for_shoots(self, condition, what):
        def holds():
            try:
                shoots = self.shoots()
            except FileNotFoundError:
                return None
            return shoots if condition(shoots) else None
        return self.wait_for(holds, what)


# The list's first row, and the first button in it.
FIRST_ROW = ["ctrl+f", "Tab", "Home", "Tab"]


def command(stops):
    """So many Tab stops on from the scanner field, and press what is there. A disabled command is no stop."""
    return ["ctrl+l"] + ["Tab"] * stops + ["space"]


def stored(shoot_file):
    """A shoot file's shoot as the program's own store keeps it: dates as seconds since 2001."""
    from datetime import datetime, timezone
    reference = datetime(2001, 1, 1, tzinfo=timezone.utc)

    def converted(value, key=None):
        if key in ("date", "timestamp", "activatedAt"):
            return (datetime.fromisoformat(value.replace("Z", "+00:00")) - reference).total_seconds()
        if isinstance(value, dict):
            return {k: converted(v, k) for k, v in value.items()}
        return [converted(v) for v in value] if isinstance(value, list) else value

    with open(shoot_file, encoding="utf-8") as file:
        return converted(json.load(file))


def card_text(one_set):
    """The text of a set's card."""
    def lines(*fields):
        return [f"{tag}:{one_set[key]}" for tag, key in fields if one_set[key]]
    items = [f"ITEM:{item['name']}" + (f"/{item['color']}" if item["color"] else "") for item in one_set["items"]]
    return "\n".join(lines(("SET", "setNumber"), ("BRAND", "brand")) + items
                     + lines(("MODEL", "model"), ("LOCATION", "location"), ("EMAIL", "email")))
