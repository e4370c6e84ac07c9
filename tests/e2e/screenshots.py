"""Pictures of both windows and every sheet, for the README, the manual, and whoever wants to look.

Usage: screenshots.py PROGRAM CLI EXAMPLES FOLDER
"""

import json
import os
import re
import subprocess
import sys
import time

from desktop import Desktop, stored

# What a scanner is tried on: every kind of sign that a wrong setting would lose.
TEST_CARD = "Set;Merk;Items;Model;Locatie\n12b;Test & Co.;coated pants/blauw, T-shirt (wit);Zoë;'t Hoorntje, paal 9\n"


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
    with open(os.path.join(desktop.data, "catalog.json"), "w", encoding="utf-8") as file:
        json.dump({"products": products, "clients": ["Noorderlicht", "Wolkenveld", "Zoutkreek"],
                   "brands": ["Noorderlicht"]}, file)


def remember_newer_version(desktop):
    """As an earlier run would that had been told of a newer version."""
    folder = os.path.join(desktop.home, "config", "Vantor")
    os.makedirs(folder, exist_ok=True)
    with open(os.path.join(folder, "Vantor Prep.conf"), "w", encoding="utf-8") as file:
        file.write("[General]\nvantorprep.updateChecker.lastKnownVersion=0.2.0\n"
                   "vantorprep.updateChecker.lastKnownDownloadURL=https://vantor.example/download\n")


def take(desktop, folder, name, title="Vantor Prep"):
    # Nothing is to look as if the mouse were on it.
    desktop.run("xdotool", "mousemove", "9999", "9999")
    time.sleep(0.5)
    window = desktop.windows(title)[-1]
    desktop.screenshot(os.path.join(folder, name + ".png"), window)


def take_region(desktop, path, window, size):
    """The part of the screen, so large, that begins at the window's corner: menus are windows of their own."""
    time.sleep(0.5)
    told = desktop.run("xwininfo", "-id", window).stdout
    corner = [re.search(f"Absolute upper-left {axis}: +(\\d+)", told).group(1) for axis in "XY"]
    crop = f"{size[0]}x{size[1]}+{corner[0]}+{corner[1]}"
    desktop.run("import", "-window", "root", "-crop", crop, "+repage", path)


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


def picker(desktop, folder, scheme):
    """The menu of the catalogue, open down to the colours."""
    desktop.key("ctrl+t")
    window = desktop.window("Nieuwe Set")
    desktop.key(*["Tab"] * 8, "space")
    time.sleep(0.3)
    for key in ("Down", "Right", "Down", "Right"):
        desktop.key(key)
    take_region(desktop, os.path.join(folder, f"picker-{scheme}.png"), window, (640, 670))
    desktop.key("Escape", "Escape", "Escape", "Escape")
    desktop.wait_until_closed("Nieuwe Set")
    desktop.window("Vantor Prep")


def both_windows_and_sheets(program, examples, folder, scheme):
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
        desktop.key("ctrl+f")
        desktop.type("marvis")
        take(desktop, folder, f"search-{scheme}")
        desktop.key("ctrl+a", "BackSpace")
        desktop.run("xdotool", "windowsize", "--sync", window, "1180", "760")
        sheets(desktop, folder, scheme)
        picker(desktop, folder, scheme)
        desktop.key("ctrl+g")
        desktop.window("QR Generator")
        desktop.type("12")
        desktop.key("Tab")
        desktop.type("Marvis")
        desktop.key("Return")
        take(desktop, folder, f"generator-{scheme}", "QR Generator")
        desktop.key("ctrl+q")
        desktop.app.wait(timeout=120)
        remember_newer_version(desktop)
        window = desktop.start()
        desktop.run("xdotool", "windowsize", "--sync", window, "1180", "500")
        take(desktop, folder, f"update-{scheme}")
        desktop.leave()


def twice_as_large(program, examples, folder):
    with Desktop(program, size="2600x1800", environment={"QT_SCALE_FACTOR": "2"}) as desktop:
        example_home(desktop, examples)
        desktop.start()
        take(desktop, folder, "main-200")
        desktop.key("ctrl+g")
        desktop.window("QR Generator")
        take(desktop, folder, "generator-200", "QR Generator")
        desktop.key("ctrl+q")


def printed(cli, examples, folder):
    """A page of cards, and the code that the manual has scanners tried on."""
    pdf = os.path.join(folder, "cards.pdf")
    subprocess.run([cli, "cards", os.path.join(examples, "zomer-op-texel.vantor"), "--output", pdf], check=True)
    subprocess.run(["pdftoppm", "-r", "60", "-png", "-f", "1", "-l", "1", "-singlefile", pdf, pdf[:-4]], check=True)
    os.remove(pdf)
    subprocess.run([cli, "qr", "-", "--from", "csv", "--output", folder], input=TEST_CARD.encode(), check=True,
                   stdout=subprocess.DEVNULL)
    card = os.path.join(folder, "SET-12b-Test & Co..png")
    # White all around, for whoever reads the manual on a dark ground.
    page = pdf[:-4] + ".png"
    for source, target, color, width in ((card, "test-card.png", "white", "40"), (page, "cards.png", "gray", "1")):
        target = os.path.join(folder, target)
        subprocess.run(["convert", source, "-bordercolor", color, "-border", width, target], check=True)
    os.remove(card)


def main(program, cli, examples, folder):
    os.makedirs(folder, exist_ok=True)
    for scheme in ("light", "dark"):
        both_windows_and_sheets(program, examples, folder, scheme)
    twice_as_large(program, examples, folder)
    printed(cli, examples, folder)


if __name__ == "__main__":
    main(*sys.argv[1:])
