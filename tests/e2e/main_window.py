"""The main window, used as on the morning of a shoot: start, scan, search, activate, delete, start again."""

import os
import sys

from desktop import Desktop, card_text, stored


def main(program, example):
    with Desktop(program) as desktop:
        # A first start on an empty home shows the empty state, stores nothing, and ends as it came.
        desktop.start()
        assert not os.path.exists(os.path.join(desktop.data, "shoots.json"))
        desktop.leave("ctrl+w")

        shoot = stored(example)
        shoot["activationLog"] = []
        desktop.store_shoots([shoot])
        names = [(s["setNumber"], s["brand"]) for s in shoot["sets"]]
        known = shoot["sets"][::3][:8]
        unknown = ["SET:901\nBRAND:Marvis\nITEM:jeans/blue", "SET:902\nBRAND:Zoutkreek"]

        desktop.start()
        for count, text in enumerate([card_text(s) for s in known] + unknown, 1):
            desktop.scan(text, 1)
            desktop.wait_for_shoots(lambda s: len(s[0]["activationLog"]) == count, f"scan {count}")
        shoots = desktop.shoots()
        sets = {s["id"]: (s["setNumber"], s["brand"]) for s in shoots[0]["sets"]}
        scanned = [sets[a["setId"]] for a in shoots[0]["activationLog"]]
        assert scanned == [(s["setNumber"], s["brand"]) for s in known] + [("901", "Marvis"), ("902", "Zoutkreek")]
        assert [(s["setNumber"], s["brand"]) for s in shoots[0]["sets"]] == \
            [("902", "Zoutkreek"), ("901", "Marvis")] + names
        assert shoots[0]["sets"][1]["items"][0]["name"] == "jeans"

        # Slowly as well, with forty milliseconds a key.
        desktop.scan(card_text(known[3]), 40)
        desktop.wait_for_shoots(lambda s: len(s[0]["activationLog"]) == 11, "a slow scanner")

        # Search, then activate the first hit from the list by keyboard.
        desktop.key("ctrl+f")
        desktop.type("901")
        desktop.key("Tab", "Tab")
        desktop.key("Home", "Return")
        log = desktop.wait_for_shoots(lambda s: len(s[0]["activationLog"]) == 12, "the activation")[0]["activationLog"]
        assert sets[log[-1]["setId"]] == ("901", "Marvis")

        # Deleting asks first, and Return answers no.
        desktop.key("Delete")
        desktop.window("Vantor Prep")
        desktop.key("Return")
        desktop.key("Delete")
        desktop.window("Vantor Prep")
        assert len(desktop.shoots()[0]["sets"]) == len(names) + 2
        desktop.key("shift+Tab", "space")
        left = desktop.wait_for_shoots(lambda s: len(s[0]["sets"]) == len(names) + 1, "the deletion")[0]
        assert [(s["setNumber"], s["brand"]) for s in left["sets"]] == [("902", "Zoutkreek")] + names

        desktop.window("Vantor Prep")
        desktop.leave("ctrl+w")
        assert desktop.shoots()[0] == left
        desktop.start()
        desktop.scan("SET:902\nBRAND:Zoutkreek")
        after = desktop.wait_for_shoots(lambda s: len(s[0]["activationLog"]) == 13, "a scan after the restart")[0]
        assert after["sets"] == left["sets"]
        desktop.leave()
    print("1 passed, 0 failed")


if __name__ == "__main__":
    main(*sys.argv[1:])
