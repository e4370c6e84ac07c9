#!/usr/bin/env python3
"""Types cards into the real program as a scanner does, while it saves a large store and while sheets open.

A card is right when its set became active, once and in its turn. Two in five cards are of sets that the store does not
know: they have to be added, with every field as the card has it, so that no key was lost. Sheets and questions are
opened by mouse in the middle of a card, and by keyboard right before one. Where the card's first key was the scanner
field's, the card is so to its end, and the sheet has to stay as it was opened: what is typed into it behind the card is
all that it holds."""

import collections
import ctypes
import difflib
import os
import random
import re
import sys
import time
import uuid

import support

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), os.pardir, "e2e"))
from desktop import KEYSYMS, Desktop, card_text  # noqa: E402

# Milliseconds a key, and how many cards the short form types so.
PACES = {0: 7, 1: 6, 5: 5, 20: 4, 50: 3}
PAUSE = 0.3  # from the last key of a card to the first of the next
# Keys further apart than this (milliseconds) come from no scanner: the first two, and any two.
MOST_AT_FIRST = 60
MOST = 120
# A display that is too busy for this many cards has no time for scanners.
MOST_LATE_CARDS = 100
# The program gives a sheet the focus as soon as the display shows it, and the display does a moment later, which is
# rarely this long (seconds).
BETWEEN = 0.005

BRANDS = ("Marvis", "Noorderlicht", "H&M", "Été")
MODELS = ("Zoë", "Anaïs", "Mo & Bo", "Jan-Willem", "Séverine", "Kiki")
PLACES = ("Studio A", "De Slufter", "Café (achter)", "Kade 12")
THINGS = ("trui", "broek", "lange jas", "crème sjaal", "laarzen", "pet")
COLORS = ("rood", "bleu-écru", "zwart; wit", "", "groen")

# What happens around a card, and how often.
HAPPENINGS = {"nothing": 10, "set sheet": 2, "code sheet": 1, "question": 1, "sheet right before": 2,
              "shortcut": 1, "activation": 3}
WINDOWS = ("set sheet", "code sheet", "question", "sheet right before")


class EventMask(ctypes.Structure):
    _fields_ = [("device", ctypes.c_int), ("length", ctypes.c_int), ("mask", ctypes.c_char_p)]


class Cookie(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("extension", ctypes.c_int), ("kind", ctypes.c_int),
                ("cookie", ctypes.c_uint), ("data", ctypes.c_void_p)]


class RawKey(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("extension", ctypes.c_int), ("kind", ctypes.c_int),
                ("time", ctypes.c_ulong)]


class Listener:
    """Hears when the display took each key, which is the time that programs are told."""

    GENERIC_EVENT, RAW_KEY_PRESS, ALL_MASTER_DEVICES = 35, 13, 1

    def __init__(self, x, display):
        self.x = x
        input_extension = ctypes.CDLL("libXi.so.6")
        self.display = ctypes.c_void_p(x.XOpenDisplay(display.encode()))
        major, minor = ctypes.c_int(2), ctypes.c_int(2)
        input_extension.XIQueryVersion(self.display, ctypes.byref(major), ctypes.byref(minor))
        mask = EventMask(self.ALL_MASTER_DEVICES, 2, bytes([0, 1 << self.RAW_KEY_PRESS - 8]))
        x.XDefaultRootWindow.restype = ctypes.c_ulong
        input_extension.XISelectEvents(self.display, ctypes.c_ulong(x.XDefaultRootWindow(self.display)),
                                       ctypes.byref(mask), 1)
        x.XSync(self.display, 0)

    def times(self):
        """Of the keys pressed since it was last asked, in milliseconds."""
        self.x.XSync(self.display, 0)
        times = []
        event = ctypes.create_string_buffer(24 * ctypes.sizeof(ctypes.c_long))
        cookie = ctypes.cast(event, ctypes.POINTER(Cookie)).contents
        while self.x.XPending(self.display):
            self.x.XNextEvent(self.display, event)
            if cookie.type == self.GENERIC_EVENT and self.x.XGetEventData(self.display, event):
                times.append(ctypes.cast(cookie.data, ctypes.POINTER(RawKey)).contents.time)
                self.x.XFreeEventData(self.display, event)
        return times

    def close(self):
        self.x.XCloseDisplay(self.display)


class Typist:
    """A keyboard and a mouse on the display, fast enough for any scanner."""

    def __init__(self, display):
        self.x = ctypes.CDLL("libX11.so.6")
        self.test = ctypes.CDLL("libXtst.so.6")
        self.x.XOpenDisplay.restype = ctypes.c_void_p
        self.x.XStringToKeysym.restype = ctypes.c_ulong
        self.x.XkbKeycodeToKeysym.restype = ctypes.c_ulong
        self.display = ctypes.c_void_p(self.x.XOpenDisplay(display.encode()))
        self.listener = Listener(self.x, display)
        self.codes = {}
        self.shift, self.control = self.code("Shift_L")[0], self.code("Control_L")[0]
        for symbol in {KEYSYMS.get(c, c) for c in "".join(BRANDS + MODELS + PLACES + THINGS + COLORS)}:
            self.code(symbol)

    def close(self):
        self.listener.close()
        self.x.XCloseDisplay(self.display)

    def code(self, name):
        """The key of that name, and whether it takes Shift."""
        if name not in self.codes:
            symbol = ctypes.c_ulong(self.x.XStringToKeysym(name.encode()))
            code = self.x.XKeysymToKeycode(self.display, symbol)
            if code == 0:
                raise RuntimeError(f"no key for {name}")
            self.codes[name] = code, self.x.XkbKeycodeToKeysym(self.display, code, 0, 0) != symbol.value
        return self.codes[name]

    def press(self, code, down, after=0):
        self.test.XTestFakeKeyEvent(self.display, code, down, ctypes.c_ulong(after))

    def tap(self, name, held=None, after=0):
        """Presses and releases a key, so many milliseconds after the one before it, which the display sees to."""
        code, shifted = self.code(name)
        held = held or (self.shift if shifted else None)
        if held:
            self.press(held, 1, after)
        self.press(code, 1, 0 if held else after)
        self.press(code, 0)
        if held:
            self.press(held, 0)

    def sync(self):
        self.x.XSync(self.display, 0)

    def keys(self, *names, held=None):
        """As a person presses them."""
        for name in names:
            self.tap(name, held)
            self.sync()
            time.sleep(0.08)

    def click(self, place):
        self.test.XTestFakeMotionEvent(self.display, -1, *place, ctypes.c_ulong(0))
        for down in (1, 0):
            self.test.XTestFakeButtonEvent(self.display, 1, down, ctypes.c_ulong(0))

    def focus(self):
        """The window that gets the next key."""
        window, revert = ctypes.c_ulong(), ctypes.c_int()
        self.x.XGetInputFocus(self.display, ctypes.byref(window), ctypes.byref(revert))
        return window.value

    def begin(self, character, window):
        """Types one key if this window is the one that gets it: whether it is, and whether it is no more at once."""
        self.listener.times()
        self.x.XGrabServer(self.display)
        has_focus = self.focus() == window
        if has_focus:
            self.tap(KEYSYMS.get(character, character))
        self.x.XUngrabServer(self.display)
        self.sync()
        end = time.monotonic() + BETWEEN
        while has_focus and time.monotonic() < end:
            if self.focus() != window:
                return True, True
        return has_focus, False

    def card(self, text, pace, act_at=None, act=None, begun=0):
        """Types the rest of a card, of which so many keys have been typed, and acts before its key at that place.
        Whether all of the card's keys came as a scanner's do; a busy display can be late with them."""
        if not begun:
            self.listener.times()
        for place, character in list(enumerate(text + "\n"))[begun:]:
            if place == act_at:
                act()
            self.tap(KEYSYMS.get(character, character), after=pace if place else 0)
        self.sync()
        times = self.listener.times()
        gaps = [b - a for a, b in zip(times, times[1:])]
        if len(gaps) < len(text):
            raise RuntimeError(f"heard only {len(times)} keys of {text!r}")
        return max(gaps) <= MOST and max(gaps[:2]) <= MOST_AT_FIRST


def make_set(number, chance, is_short):
    """A set with a card of four to eight lines, or of three short ones for a slow scanner."""
    def identifier():
        return str(uuid.UUID(int=chance.getrandbits(128), version=4)).upper()
    things = chance.sample(THINGS, 1 if is_short else chance.randrange(1, 4))
    return {"id": identifier(), "setNumber": number, "brand": chance.choice(BRANDS),
            "items": [{"id": identifier(), "name": thing, "color": chance.choice(COLORS)} for thing in things],
            "model": "" if is_short else chance.choice(MODELS),
            "location": "" if is_short or len(things) == 3 and chance.random() < 0.5 else chance.choice(PLACES),
            "email": "" if is_short or chance.random() < 0.5 else "foto@vantor.example",
            "taggedCount": 0, "timestamp": 800000000.0}


def told(one_set):
    """What a card tells of a set."""
    return (one_set["setNumber"], one_set["brand"], tuple((i["name"], i["color"]) for i in one_set["items"]),
            one_set["model"], one_set["location"], one_set["email"])


class TooBusy(Exception):
    """The display is late with too many keys to type as a scanner does."""


class Attack:
    """One start of the program, with a store of so many sets, and the cards that are typed into it."""

    def __init__(self, desktop, chance, sets):
        self.desktop = desktop
        self.chance = chance
        # Every second one has a short card.
        self.known = [make_set(str(number), chance, number % 2 == 1) for number in range(sets)]
        self.wanted = [told(s) for s in self.known]  # what should be in the store
        desktop.store_shoots([{"id": str(uuid.UUID(int=chance.getrandbits(128), version=4)).upper(), "name": "Zomer",
                               "date": 800000000.0, "location": "", "client": "", "sets": self.known,
                               "activationLog": []}])
        self.typist = Typist(desktop.environment["DISPLAY"])
        self.main = int(desktop.start())
        self.breaches = []
        self.counts = collections.Counter()
        self.happenings = []
        self.last = "the start"
        self.begin()
        self.find_buttons()

    def begin(self):
        """From here on until the next judgement."""
        self.expected = []  # what the cards told, in their order
        self.typed = []  # and how each was typed
        self.clicks = 0  # on buttons that activate a set
        self.logged = len(self.shoot()["activationLog"])

    # --- the program's windows

    def shoot(self):
        return self.desktop.shoots()[0]

    def over_main(self):
        """The titles of the windows that stand over the main window; help texts and menus are none."""
        windows = re.findall("0x[0-9a-f]+", self.desktop.run("xprop", "-root", "_NET_CLIENT_LIST").stdout)
        return [self.desktop.run("xdotool", "getwindowname", window, check=False).stdout.strip()
                for window in windows if int(window, 16) != self.main]

    def await_focus(self, on_main):
        self.desktop.wait_for(lambda: (self.typist.focus() == self.main) == on_main, "the focus")
        # The focus has reached the window; the program learns of it a moment later.
        time.sleep(0.2)

    def close_windows(self):
        for _ in range(50):
            count = len(self.over_main())
            if count == 0:
                break
            # One that was closing is gone by then, and the focus may be back already.
            self.desktop.wait_for(lambda: self.typist.focus() != self.main or len(self.over_main()) < count, "the focus")
            if len(self.over_main()) < count:
                continue
            self.typist.keys("Escape")
            try:
                self.desktop.wait_for(lambda: len(self.over_main()) < count, "a window to close", 10)
            except AssertionError:
                pass
        self.await_focus(on_main=True)

    def opened_by(self, place):
        """The title of the window that a click opens; none within three seconds is none."""
        self.typist.click(place)
        self.typist.sync()
        for _ in range(60):
            time.sleep(0.05)
            if titles := self.over_main():
                self.close_windows()
                return titles[0]
        return ""

    def find_buttons(self):
        """Finds the buttons that open something by trying, from where they usually are."""
        shell = self.desktop.run("xdotool", "getwindowgeometry", "--shell", str(self.main)).stdout
        at = {name: int(value) for name, value in (line.split("=") for line in shell.split())}
        left, right = at["X"] + 54, at["X"] + at["WIDTH"]

        def find(name, title, usual, step):
            for away in sorted(range(-10, 11), key=abs):
                place = usual[0] + away * step[0], usual[1] + away * step[1]
                if self.opened_by(place).startswith(title):
                    self.buttons[name] = place
                    return place[1]
            raise RuntimeError(f"found no button for the {name}")

        self.buttons = {}
        first_row = 94 + find("set sheet", "Nieuwe Set", (left, at["Y"] + 180), (0, 10))
        find("code sheet", "QR-code", (right - 194, first_row), (8, 0))
        find("question", "Vantor Prep", (right - 32, at["Y"] + 123), (0, 8))
        # That of the second row.
        self.buttons["activation"] = right - 60, first_row + 60

    # --- the cards

    def next_set(self, is_short):
        if self.chance.random() < 0.4:
            return make_set(f"X{len(self.wanted)}", self.chance, is_short)
        return self.known[2 * self.chance.randrange(len(self.known) // 2) + is_short]

    def type_card(self, pace, happening):
        """Whether the card's keys came as a scanner's do. If not, nothing follows from it."""
        one_set = self.next_set(pace >= 20)
        text = card_text(one_set)
        self.before, self.last = self.last, f"{happening!r} at {pace} ms"
        act_at = act = None
        begun, either = 0, False
        if happening in self.buttons:
            act_at, act = self.chance.randrange(2, len(text)), lambda: self.typist.click(self.buttons[happening])
            self.clicks += happening == "activation"
        elif happening == "shortcut":
            act_at, act = self.chance.randrange(2, len(text)), lambda: self.typist.tap("t", self.typist.control)
        elif happening == "sheet right before":
            self.typist.tap("t", self.typist.control)
            self.typist.sync()
            time.sleep(self.chance.choice((0, 0, 0.002, 0.005, 0.01, 0.02, 0.04)))
            begun, either = self.typist.begin(text[0], self.main)
            if not begun:
                # Too late for this card: what is typed now is meant for the sheet.
                self.wait_for_window()
                self.check_windows()
                happening = "nothing"
        if not self.typist.card(text, pace, act_at, act, int(begun)):
            return False
        if either and self.went_to_sheet(one_set, text):
            return True
        self.expected.append(told(one_set))
        self.typed.append(f"{self.last}, {begun} keys before the rest, after {self.before}")
        if one_set not in self.known:
            self.wanted.append(told(one_set))
        if happening in WINDOWS:
            time.sleep(0.3)
            self.wait_for_card()
            self.wait_for_window()
            self.check_windows()
        else:
            time.sleep(PAUSE)
            if titles := self.over_main():
                self.breaches.append(f"{titles} opened by {self.last}")
                self.close_windows()
        return True

    def went_to_sheet(self, one_set, text):
        """Whether a card that was begun while the focus moved is the sheet's, which then has to hold all of it."""
        time.sleep(0.3)
        self.expected.append(told(one_set))
        came = self.wait_for_card()
        self.expected.pop()
        if came:
            return False
        self.wait_for_window()
        self.check_windows(text.replace("\n", ""))
        self.counts["of sheets"] += 1
        return True

    def wait_for_card(self):
        """Waits for the last card, and whether it came; one that does not come is found later."""
        if not self.expected:
            return False

        def has_come():
            shoot = self.shoot()
            recent = {entry["setId"] for entry in shoot["activationLog"][self.logged:][-3:]}
            return any(s["id"] in recent and told(s) == self.expected[-1] for s in shoot["sets"])
        try:
            self.desktop.wait_for(has_come, "a card", 8)
        except AssertionError:
            return False
        return True

    def wait_for_window(self):
        """Waits for what is opening over the main window, if anything is: a row's button may have been missed."""
        try:
            self.desktop.wait_for(self.over_main, "a window", 10)
        except AssertionError:
            pass

    def check_windows(self, held=""):
        """Closes what opened over the main window; the set sheet has to add what is typed into it now, behind what it
        should already hold, and no more."""
        titles = self.over_main()
        self.counts["windows"] += len(titles)
        if "Nieuwe Set" in titles:
            self.await_focus(on_main=False)
            marker = f"Z{len(self.wanted)}"
            # Return adds from the last field only: behind the brand come three more, and a line of two for the item.
            self.typist.keys(*marker, "Tab", "b", *["Return"] * 6)
            self.wanted.append((held + marker, "b", (), "", "", ""))
        self.close_windows()

    def next_happening(self):
        if not self.happenings:
            self.happenings = [kind for kind, often in HAPPENINGS.items() for _ in range(often)]
            self.chance.shuffle(self.happenings)
        return self.happenings.pop()

    def group(self, pace, cards):
        self.begin()
        done = 0
        while done < cards:
            before = len(self.expected)
            in_time = self.type_card(pace, self.next_happening())
            done += len(self.expected) - before
            if not in_time:
                self.counts["late"] += 1
                if self.counts["late"] > MOST_LATE_CARDS:
                    raise TooBusy
                self.recover()
            if not in_time or done == cards:
                self.wait_for_card()
                self.judge(f"{pace} ms", spoilt=not in_time)
                self.begin()

    def recover(self):
        """Brings the windows back to where they were before a card that came in pieces."""
        time.sleep(1)
        self.close_windows()
        for key in "la":
            self.typist.tap(key, self.typist.control)
        self.typist.keys("Delete")

    def judge(self, group, spoilt):
        """Compares what came of the cards with what should have. What else is there may be a spoilt card's."""
        shoot = self.shoot()
        sets = {s["id"]: told(s) for s in shoot["sets"]}
        log = [sets.get(entry["setId"]) for entry in shoot["activationLog"][self.logged:]]
        matcher = difflib.SequenceMatcher(None, self.expected, log, autojunk=False)
        activated = sum(block.size for block in matcher.get_matching_blocks())
        if activated < len(self.expected):
            self.breaches.append(f"{group}: {activated} of {len(self.expected)} activated in their turn")
            self.breaches += [f"{group}: not activated: {one}, {how}" for one, how in zip(self.expected, self.typed)
                          if one not in log]
        held, wanted = collections.Counter(sets.values()), collections.Counter(self.wanted)
        self.breaches += [f"{group}: not in the store: {one}" for one in wanted - held]
        others = []
        if len(log) - activated > self.clicks:
            others.append(f"{group}: {len(log) - activated} more activations, {self.clicks} clicks")
        others += [f"{group}: in the store, but never scanned: {one}" for one in held - wanted]
        if not spoilt:
            self.breaches += others
            self.counts["changes"] += len(log) - activated
        elif self.breaches:
            print(*others, sep="\n", file=sys.stderr)
        self.wanted = list(held.elements())
        self.counts.update(cards=len(self.expected), activated=activated)


def main():
    programs, long = support.arguments()
    sets = 5000 if long else 1000
    if not long:
        # Whose the first key is then is decided within milliseconds, which a machine that is busy with other tests
        # stretches: too often for what every change is held against.
        del HAPPENINGS["sheet right before"]
    seed = int(os.environ.get("SEED", random.randrange(1 << 32)))
    with Desktop(str(programs / "vantor-prep")) as desktop:
        attack = Attack(desktop, random.Random(seed), sets)
        try:
            for pace, short in PACES.items():
                attack.group(pace, 200 if long else short)
            desktop.leave()
        except TooBusy:
            if not attack.breaches:
                print("scanner: SKIPPED, the display is too busy to type like a scanner")
                sys.exit(support.SKIPPED)
        except AssertionError as error:
            attack.breaches.append(f"{error} after {attack.last}, with {attack.over_main()} open and the focus on "
                                   f"{attack.typist.focus():#x} instead of {attack.main:#x}")
            if folder := os.environ.get("VANTOR_FAULTS_KEEP"):
                desktop.screenshot(os.path.join(folder, "scanner.png"))
        attack.typist.close()
    counts = attack.counts
    support.conclude("scanner", f"{counts['activated']} of {counts['cards']} cards activated, {counts['windows']} "
                     f"windows opened and {counts['changes']} sets activated meanwhile, {counts['of sheets']} more cards "
                     f"begun as the focus moved and whole in the sheet, {counts['late']} that the display was late "
                     f"with, seed {seed}", attack.breaches)



if __name__ == "__main__":
    main()
