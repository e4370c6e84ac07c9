"""Every sheet, by keyboard alone: from an empty home to printed cards, and the shoot and catalogue on to a second home."""

import os
import re
import subprocess
import sys

from desktop import FIRST_ROW, Desktop, card_text, command


def choose_file(desktop, title, path, under=None):
    """Types the path into the file dialog that is open and confirms it; waits for the window below, if one is named."""
    desktop.window(title)
    desktop.key("ctrl+a")
    desktop.type(path)
    desktop.key("Return")
    desktop.wait_until_closed(title, under)


def read_code(picture):
    """The bytes of the one code in a picture, read by zbar; none when there is no code."""
    return subprocess.run(["zbarimg", "-q", "--raw", "-Sbinary", picture], capture_output=True).stdout


def read_codes(pdf, folder):
    """The bytes of every code on the pages of four cards each, rasterised and cut into their quarters."""
    width, height = 1240, 1754  # a quarter of an A4 page at 300 dpi
    pages = int(re.search(r"Pages: +(\d+)", subprocess.run(["pdfinfo", pdf], check=True, capture_output=True,
                                                           text=True).stdout).group(1))
    codes = []
    for page in range(1, pages + 1):
        for corner in range(4):
            quarter = os.path.join(folder, f"quarter-{page}-{corner}")
            subprocess.run(["pdftoppm", "-r", "300", "-gray", "-png", "-f", str(page), "-l", str(page), "-singlefile",
                            "-x", str(corner % 2 * width), "-y", str(corner // 2 * height), "-W", str(width),
                            "-H", str(height), pdf, quarter], check=True)
            codes.append(read_code(quarter + ".png"))
    return [code for code in codes if code]


def products(catalog):
    return [(p["name"], p["colors"], p["brand"]) for p in catalog["products"]]


def make_a_shoot(desktop):
    """A client in the clients sheet, and a shoot for it."""
    desktop.key("ctrl+n")
    desktop.window("Nieuwe Shoot")
    desktop.type("Herfst 2026")
    desktop.key("Tab")
    desktop.type("Texel")
    desktop.key("Tab", "Tab", "space")
    desktop.window("Klanten")
    desktop.type("marvis")
    desktop.key("Return", "Escape")
    desktop.wait_until_closed("Klanten", "Nieuwe Shoot")
    assert desktop.catalog()["clients"] == ["marvis"]
    # Back to the picker: the first client stands below "Geen klant".
    desktop.key("shift+Tab", "Down", "shift+Tab", "Return")
    desktop.wait_until_closed("Nieuwe Shoot")
    shoot = desktop.wait_for_shoots(lambda s: len(s) == 1, "the shoot")[0]
    assert (shoot["name"], shoot["location"], shoot["client"], shoot["sets"]) == ("Herfst 2026", "Texel", "marvis", [])
    desktop.window("Vantor Prep")


def import_catalogue(desktop, stops_to_import, file):
    desktop.key(*["shift+Tab"] * stops_to_import, "space")
    desktop.window("Import Productcatalogus")
    desktop.key("Tab", "space")
    choose_file(desktop, "Open bestand", file, "Import Productcatalogus")
    desktop.key("Tab", "Tab", "space")
    desktop.wait_until_closed("Import Productcatalogus", "Productcatalogus")


def fill_the_catalogue(desktop, examples):
    """A brand and a product typed, the example's products imported, one product edited and one deleted."""
    desktop.key(*command(5))
    desktop.window("Productcatalogus")
    desktop.type("Marvis")
    desktop.key("Return")
    desktop.wait_for(lambda: desktop.catalog()["brands"] == ["Marvis"], "the brand")
    file = os.path.join(examples, "productcatalogus.csv")
    import_catalogue(desktop, 4, file)
    with open(file, encoding="utf-8") as lines:
        imported = len(lines.read().split("\n")) - 1
    assert len(desktop.catalog()["products"]) == imported

    # From the import button on to the list: export, picker, delete, new brand, its button, list.
    desktop.key("Tab", "Tab", "Tab", "Tab", "Tab", "Tab", "Home", "Return")
    desktop.window("Product bewerken")
    desktop.key("ctrl+a")
    desktop.type("aaa eerste")
    desktop.key("Tab")
    desktop.key("ctrl+a")
    desktop.type("rood, , blauw ")
    desktop.key("Return")
    desktop.wait_until_closed("Product bewerken", "Productcatalogus")
    desktop.wait_for(lambda: products(desktop.catalog())[0] == ("aaa eerste", ["rood", "blauw"], "Marvis"), "the edit")
    desktop.key("End", "Delete")
    desktop.wait_for(lambda: len(desktop.catalog()["products"]) == imported - 1, "the deletion")
    desktop.key("Escape")
    desktop.wait_until_closed("Productcatalogus", "Vantor Prep")


def add_sets(desktop, examples):
    """One set typed, one from the catalogue, and the example's by import."""
    desktop.key("ctrl+t")
    desktop.window("Nieuwe Set")
    for text in ("7", "Zoutkreek", "Anna", "Strand", "anna@example.nl", "jeans", "blauw"):
        desktop.type(text)
        desktop.key("Tab")
    desktop.key("shift+Tab", "Return")
    desktop.wait_until_closed("Nieuwe Set")
    first = desktop.wait_for_shoots(lambda s: len(s[0]["sets"]) == 1, "the typed set")[0]["sets"][0]
    assert card_text(first) == ("SET:7\nBRAND:Zoutkreek\nITEM:jeans/blauw\nMODEL:Anna\nLOCATION:Strand\n"
                                "EMAIL:anna@example.nl")

    # The picker puts the client's own brand first; its first product comes in the colours just given.
    desktop.window("Vantor Prep")
    desktop.key("ctrl+t")
    desktop.window("Nieuwe Set")
    desktop.key(*["Tab"] * 8, "space")
    for keys in (["Down"], ["Right"], ["Right"], ["Down", "Return"]):
        desktop.key(*keys)
    desktop.key("Tab", "Tab", "space")
    desktop.wait_until_closed("Nieuwe Set")
    second = desktop.wait_for_shoots(lambda s: len(s[0]["sets"]) == 2, "the picked set")[0]["sets"][0]
    assert card_text(second) == "SET:2\nITEM:aaa eerste/blauw", card_text(second)

    desktop.window("Vantor Prep")
    desktop.key(*command(3))
    desktop.window("Import CSV")
    desktop.key("Tab", "space")
    choose_file(desktop, "Open bestand", os.path.join(examples, "zomer-op-texel.csv"), "Import CSV")
    desktop.key("Tab", "Tab", "space")
    desktop.wait_until_closed("Import CSV")
    desktop.wait_for_shoots(lambda s: len(s[0]["sets"]) == 30, "the imported sets")
    desktop.window("Vantor Prep")


def edit_first_set(desktop):
    desktop.key(*FIRST_ROW, "Tab", "space")
    desktop.window("Set bewerken")
    desktop.type("28b")
    # The button is the stop before the first field.
    desktop.key("shift+Tab", "space")
    desktop.wait_until_closed("Set bewerken")
    desktop.wait_for_shoots(lambda s: s[0]["sets"][0]["setNumber"] == "28b", "the edit")
    desktop.window("Vantor Prep")


def save_one_code(desktop, cli):
    path = os.path.join(desktop.home, "code.png")
    desktop.key(*FIRST_ROW, "space")
    desktop.window("QR-code: .*")
    desktop.key("Tab", "space")
    choose_file(desktop, "Bewaar als", path, "QR-code: .*")
    desktop.key("Escape")
    desktop.wait_until_closed("QR-code: .*")
    code = read_code(path)
    assert code.decode() == card_text(desktop.shoots()[0]["sets"][0])
    parsed = subprocess.run([cli, "parse"], input=code, check=True, capture_output=True).stdout
    assert b'"setNumber": "28b"' in parsed
    desktop.window("Vantor Prep")


def print_cards(desktop):
    pdf = os.path.join(desktop.home, "kaarten.pdf")
    desktop.key(*command(7))
    desktop.window("Bulk QR-export")
    desktop.key("space")
    choose_file(desktop, "Bewaar als", pdf)
    desktop.wait_until_closed("Bulk QR-export")
    expected = sorted(card_text(one_set).encode() for one_set in desktop.shoots()[0]["sets"])
    assert sorted(read_codes(pdf, desktop.home)) == expected
    desktop.window("Vantor Prep")


def export_catalogue(desktop, path):
    """The sheet opens on the client's own brand, so that the brand can be deleted: three stops back to the export."""
    desktop.key(*command(8))
    desktop.window("Productcatalogus")
    desktop.key("shift+Tab", "shift+Tab", "shift+Tab", "space")
    choose_file(desktop, "Bewaar als", path, "Productcatalogus")
    desktop.key("Escape")
    desktop.wait_until_closed("Productcatalogus", "Vantor Prep")


def main(program, cli, examples):
    with Desktop(program) as desktop:
        desktop.start()
        make_a_shoot(desktop)
        fill_the_catalogue(desktop, examples)
        add_sets(desktop, examples)
        edit_first_set(desktop)
        save_one_code(desktop, cli)
        print_cards(desktop)
        catalog_file = os.path.join(desktop.home, "catalogus.csv")
        export_catalogue(desktop, catalog_file)
        shoot_file = os.path.join(desktop.home, "herfst.vantor")
        desktop.key("ctrl+s")
        choose_file(desktop, "Bewaar als", shoot_file, "Vantor Prep")
        desktop.leave()
        shoot, catalog = desktop.shoots()[0], desktop.catalog()

        with Desktop(program) as second:
            second.start()
            second.key("ctrl+o")
            choose_file(second, "Open bestand", shoot_file)
            opened = second.wait_for_shoots(lambda s: len(s) == 1, "the opened shoot")[0]
            second.window("Vantor Prep")
            assert opened["name"] == shoot["name"] and opened["client"] == shoot["client"]
            assert [card_text(s) for s in opened["sets"]] == [card_text(s) for s in shoot["sets"]]
            assert not {s["id"] for s in opened["sets"]} & {s["id"] for s in shoot["sets"]}
            # No brand is known there, so that none can be deleted.
            second.key(*command(8))
            second.window("Productcatalogus")
            import_catalogue(second, 3, catalog_file)
            assert products(second.catalog()) == products(catalog)
            second.key("Escape")
            second.wait_until_closed("Productcatalogus", "Vantor Prep")
            again = os.path.join(second.home, "opnieuw.csv")
            export_catalogue(second, again)
            with open(catalog_file, "rb") as one, open(again, "rb") as other:
                assert one.read() == other.read()
            second.leave()
    print("1 passed, 0 failed")


if __name__ == "__main__":
    main(*sys.argv[1:])
