"""Pictures of both windows and every sheet, for the README, the manual, and whoever wants to look.

Usage: screenshots.py PROGRAM EXAMPLES FOLDER
"""

import os
import shutil
import sys
import time

from desktop import Desktop, stored


def example_home(desktop, examples):
    shoot = stored(os.path.join(examples, "zomer-op-texel.vantor"))
    second = {**shoot, "id": "0B5C7E7A-5C1C-4F43-9A3F-3B8E6C1D2A10", "name": "Herfst in de Ardennen", "client": "",
              "sets": [], "activationLog": []}
    desktop.store_shoots([shoot, second])
    lines = open(os.path.join(examples, "productcatalogus.csv"), encoding="utf-8").read().split("\n")[1:]
    products = []
    for number, line in enumerate(lines):
        name, colors, brand = line.split(";")
        products.append({"id": f"00000000-0000-4000-8000-{number:012X}", "name": name,
                         "colors": [c.strip() for c in colors.split(",") if c.strip()], "brand": brand})
    import json
    with open(os.path.join(desktop.data, "catalog.json"), "w", encoding="utf-8") as file:
        json.dump({"products": products, "clients": ["Noorderlicht", "Wolkenveld", "Zoutkreek"],
                   "brands": ["Noorderlicht"]}, file)


def take(desktop, folder, name, title="Vantor Prep"):
    time.sleep(0.5)
    window = desktop.windows(title)[-1]
    desktop.screenshot(os.path.join(folder, name + ".png"), window)


def command(place):
    """From the scanner field to the command at that place of the shoot bar, whose picker is 0, and press it."""
    return ["ctrl+l"] + ["Tab"] * (place + 1) + ["space"]


CLIENTS, IMPORT, BULK_EXPORT, CATALOG = (command(place) for place in (1, 3, 7, 8))
# The list's first row, and the first button in it.
FIRST_ROW = ["ctrl+f", "Tab", "Home", "Tab"]


def sheets(desktop, folder, scheme):
    def shown(name, title, *keys):
        desktop.key(*keys)
        desktop.window(title)
        take(desktop, folder, f"{name}-{scheme}", title)

    def closed(title, under="Vantor Prep"):
        desktop.key("Escape")
        desktop.wait_until_closed(title)
        desktop.window(under)

    for name, title, keys in (
            ("new-shoot", "Nieuwe Shoot", ["ctrl+n"]), ("new-set", "Nieuwe Set", ["ctrl+t"]),
            ("clients", "Klanten", CLIENTS), ("import-sets", "Import CSV", IMPORT),
            ("bulk-export", "Bulk QR-export", BULK_EXPORT),
            ("qr", "QR-code: .*", [*FIRST_ROW, "space"]),
            ("edit-set", "Set bewerken", [*FIRST_ROW, "Tab", "space"])):
        shown(name, title, *keys)
        closed(title)
    shown("catalog", "Productcatalogus", *CATALOG)
    shown("import-catalog", "Import Productcatalogus", *["shift+Tab"] * 4, "space")
    closed("Import Productcatalogus", "Productcatalogus")
    shown("edit-product", "Product bewerken", "Tab", "Tab", "Tab", "Tab", "Tab", "Tab", "Home", "Return")
    closed("Product bewerken", "Productcatalogus")
    closed("Productcatalogus")


def main(program, examples, folder):
    os.makedirs(folder, exist_ok=True)
    for scheme in ("light", "dark"):
        with Desktop(program, environment={"VANTOR_COLOR_SCHEME": scheme}) as desktop:
            desktop.start()
            take(desktop, folder, f"empty-{scheme}")
            desktop.leave("ctrl+w")
            example_home(desktop, examples)
            window = desktop.start()
            desktop.scan("SET:4\nBRAND:Marvis")
            time.sleep(1.5)
            take(desktop, folder, f"main-{scheme}")
            desktop.run("xdotool", "windowsize", "--sync", window, "700", "500")
            take(desktop, folder, f"main-least-{scheme}")
            desktop.run("xdotool", "windowsize", "--sync", window, "1180", "760")
            sheets(desktop, folder, scheme)
            desktop.key("ctrl+g")
            generator = desktop.window("QR Generator")
            desktop.type("12")
            desktop.key("Tab")
            desktop.type("Marvis")
            desktop.key("Return")
            take(desktop, folder, f"generator-{scheme}", "QR Generator")
            desktop.key("ctrl+q")
    with Desktop(program, size="2600x1800", environment={"QT_SCALE_FACTOR": "2"}) as desktop:
        example_home(desktop, examples)
        desktop.start()
        take(desktop, folder, "main-200")
        desktop.key("ctrl+g")
        desktop.window("QR Generator")
        take(desktop, folder, "generator-200", "QR Generator")
        desktop.key("ctrl+q")


if __name__ == "__main__":
    main(*sys.argv[1:])
