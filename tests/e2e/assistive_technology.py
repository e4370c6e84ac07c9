"""What a screen reader hears of the list of sets, from the real program over the accessibility bus."""

import os
import sys
import uuid

from desktop import Desktop, stored

COUNT = 10_000


class Listener:
    """Takes down every event of a program's objects, and finds its list of sets."""

    def __init__(self):
        import gi
        gi.require_version("Atspi", "2.0")
        from gi.repository import Atspi, GLib
        # Milliseconds; the library's own patience is that of somebody who listens, not of a busy machine.
        Atspi.set_timeout(120_000, 120_000)
        self.desktop = Atspi.get_desktop
        self.context = GLib.MainContext.default()
        self.events = []
        self.listener = Atspi.EventListener.new(self.take)
        self.listener.register("object:")

    def take(self, event):
        self.events.append((event.type, event.detail1, event.source.get_role_name(), event.source.get_name()))

    def heard(self, event):
        while self.context.iteration(False):
            pass
        return event in self.events

    def find_list(self):
        def search(within):
            if within is None or (within.get_role_name(), within.get_name()) == ("list", "Sets"):
                return within
            children = range(min(within.get_child_count(), 100))
            return next((found for child in children if (found := search(within.get_child_at_index(child)))), None)
        return search(self.desktop(0))


def or_skip(wait):
    """What the bus has to do before anything can be heard at all. Where it does not, nothing can be judged here."""
    try:
        return wait()
    except Exception as failure:
        print(f"skipped: the accessibility bus does not answer here: {failure}")
        sys.exit(77)


def focus(name):
    return ("object:state-changed:focused", 1, "list item", name)


def main(program, example):
    with Desktop(program, environment={"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}) as desktop:
        shoot = stored(example)
        shoot["activationLog"] = []
        shoot["sets"] = [{**shoot["sets"][0], "id": str(uuid.uuid4()).upper(), "setNumber": str(number), "brand": "Marvis"}
                         for number in range(1, COUNT + 1)]
        desktop.store_shoots([shoot])
        # A program learns at its start who listens; of one that comes right behind it, it may never hear.
        os.environ.update(desktop.environment)
        listener = Listener()
        desktop.start()
        sets = or_skip(lambda: desktop.wait_for(listener.find_list, "the list on the accessibility bus"))
        assert sets.get_child_count() == COUNT
        last = sets.get_child_at_index(COUNT - 1)
        assert (last.get_role_name(), last.get_name()) == ("list item", f"Set {COUNT} — Marvis")
        assert last.get_index_in_parent() == COUNT - 1

        def press(key, event):
            listener.events.clear()
            desktop.key(key)
            desktop.wait_for(lambda: listener.heard(event), event)
            return listener.events

        # The window has to be the active one before its keys reach it.
        search = ("object:state-changed:focused", 1, "text", "Zoek op naam, model of item...")

        def search_has_the_focus():
            desktop.key("ctrl+l")
            desktop.key("ctrl+f")
            return listener.heard(search)

        or_skip(lambda: desktop.wait_for(search_has_the_focus, search))
        press("Tab", focus("Set 1 — Marvis"))
        heard = press("Down", focus("Set 2 — Marvis"))
        assert ("object:state-changed:selected", 1, "list item", "Set 2 — Marvis") in heard
        assert not [event for event in heard if "property-change" in event[0]], heard
        assert len(press("End", focus(f"Set {COUNT} — Marvis"))) < 40, listener.events
        active = f"Set {COUNT} — Marvis, ACTIEF"
        press("Return", ("object:property-change:accessible-name", 0, "list item", active))
        states = {state.value_nick for state in last.get_state_set().get_states()}
        assert {"active", "selected", "focused", "showing"} <= states, states
        desktop.leave()


if __name__ == "__main__":
    main(*sys.argv[1:])
