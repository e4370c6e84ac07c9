#include "ui/commands/command_table.h"

#include "base/text_lookup.h"

#include <algorithm>
#include <array>

namespace vantor::ui {
namespace {

using enum CommandId;
using enum MenuId;

bool always(const CommandState& /*state*/) {
    return true;
}
bool withShoot(const CommandState& state) {
    return state.hasShoot;
}
bool withSets(const CommandState& state) {
    return state.hasSets;
}
bool withCurrentSet(const CommandState& state) {
    return state.hasCurrentSet;
}
bool withUndo(const CommandState& state) {
    return state.canUndo;
}
bool withRedo(const CommandState& state) {
    return state.canRedo;
}

// clang-format off: a row each
const std::array kTable{
    Command{NewShoot, "newShoot", toLookUp("Nieuwe Shoot"),
            toLookUp("Maakt een shoot aan, die meteen de actieve is"), "plus", "Ctrl+N", File, false, always},
    Command{NewSet, "newSet", toLookUp("+ Set"), toLookUp("Maakt een set aan in deze shoot"), "", "Ctrl+T",
            File, false, withShoot},
    Command{Open, "open", toLookUp("Open..."),
            toLookUp("Open een .vantor-bestand, bijv. een shoot geëxporteerd uit Vantor"), "folder", "Ctrl+O",
            File, true, always},
    Command{Save, "save", toLookUp("Bewaar..."),
            toLookUp("Bewaar de volledige shoot als .vantor-bestand, te openen in Vantor of Vantor Prep"),
            "save", "Ctrl+S", File, false, withSets},
    Command{ImportCsv, "importCsv", toLookUp("Import CSV"),
            toLookUp("Voegt de sets uit een CSV-bestand toe aan een shoot"), "import", "Ctrl+I", File, true,
            always},
    Command{ExportCsv, "exportCsv", toLookUp("Export CSV"),
            toLookUp("Bewaart de sets van deze shoot als CSV-bestand, te openen als spreadsheet"), "export",
            "", File, false, withSets},
    Command{ExportJson, "exportJson", toLookUp("Export JSON"),
            toLookUp("Bewaart deze shoot met al haar sets als JSON-bestand"), "export", "", File, false,
            withSets},
    Command{BulkExport, "bulkExport", toLookUp("Bulk QR-export"),
            toLookUp("Maakt een PDF met de QR-kaarten van de sets die je kiest, om te printen"), "cards",
            "Ctrl+P", File, false, withSets},
    Command{Versions, "versions", toLookUp("Eerdere versies..."),
            toLookUp("Zet alles of één shoot terug zoals het eerder was"), "", "", File, true, always},
    Command{DeleteShoot, "deleteShoot", toLookUp("Shoot verwijderen"),
            toLookUp("Shoot verwijderen (inclusief alle sets erin)"), "trash", "", File, false, withShoot},
    Command{CloseWindow, "closeWindow", toLookUp("Sluit venster"),
            toLookUp("Sluit dit venster; het programma stopt met het laatste"), "", "Ctrl+W", File, true,
            always},
    Command{Quit, "quit", toLookUp("Stop Vantor Prep"), toLookUp("Sluit alle vensters"), "", "Ctrl+Q", File,
            false, always},

    Command{Undo, "undo", toLookUp("Ongedaan maken"), toLookUp("Neemt de laatste wijziging terug"), "",
            "Ctrl+Z", Edit, false, withUndo},
    Command{Redo, "redo", toLookUp("Opnieuw"), toLookUp("Doet wat ongedaan is gemaakt opnieuw"), "",
            "Ctrl+Shift+Z", Edit, false, withRedo},
    Command{Cut, "cut", toLookUp("Knip"), toLookUp("Neemt de gekozen tekst mee naar het klembord"), "",
            "Ctrl+X", Edit, true, always},
    Command{Copy, "copy", toLookUp("Kopieer"), toLookUp("Zet de gekozen tekst op het klembord"), "", "Ctrl+C",
            Edit, false, always},
    Command{Paste, "paste", toLookUp("Plak"), toLookUp("Zet de tekst van het klembord hier neer"), "",
            "Ctrl+V", Edit, false, always},
    Command{SelectAll, "selectAll", toLookUp("Kies alles"), toLookUp("Kiest alle tekst van dit veld"), "",
            "Ctrl+A", Edit, false, always},
    Command{Search, "search", toLookUp("Zoek"), toLookUp("Zoekt in de sets van deze shoot"), "magnifier",
            "Ctrl+F", Edit, true, withShoot},
    Command{EditSet, "editSet", toLookUp("Set bewerken"), toLookUp("Bewerkt de set van de gekozen regel"),
            "pencil", "F2", Edit, true, withCurrentSet},
    Command{ShowCode, "showCode", toLookUp("QR-code tonen"),
            toLookUp("Toont de QR-code van de gekozen regel"), "qrcode", "F4", Edit, false, withCurrentSet},
    Command{ActivateSet, "activateSet", toLookUp("Activeren"),
            toLookUp("Maakt de set van de gekozen regel de actieve"), "", "", Edit, false, withCurrentSet},
    Command{DeleteSet, "deleteSet", toLookUp("Set verwijderen"),
            toLookUp("Verwijdert de set van de gekozen regel"), "trash", "", Edit, false, withCurrentSet},

    Command{ScannerField, "scannerField", toLookUp("Naar het scannerveld"),
            toLookUp("Zet de cursor in het scannerveld"), "barcode", "Ctrl+L", View, false, withShoot},
    Command{Clients, "clients", toLookUp("Klanten"),
            toLookUp("Klanten beheren, kiesbaar bij een nieuwe shoot en in de productcatalogus"), "clients",
            "", View, true, always},
    Command{Catalog, "catalog", toLookUp("Productcatalogus"),
            toLookUp("Producten en merken beheren, kiesbaar bij het aanmaken van een set"), "catalog", "",
            View, false, always},
    Command{Generator, "generator", toLookUp("QR Generator"),
            toLookUp("Opent een venster voor losse QR-codes, buiten een shoot om"), "qrcode", "Ctrl+G", View,
            false, always},
    Command{FullScreen, "fullScreen", toLookUp("Volledig scherm"),
            toLookUp("Vult het scherm met dit venster, of niet meer"), "", "F11", View, true, always},

    Command{Manual, "manual", toLookUp("Handleiding van deze versie"),
            toLookUp("Opent de handleiding die bij het programma hoort, zonder internet"), "manual", "F1",
            Help, false, always},
    Command{OnlineManual, "onlineManual", toLookUp("Handleiding"),
            toLookUp("Opent de handleiding op %1 in je browser"), "manual", "", Help, false, always},
    Command{Shortcuts, "shortcuts", toLookUp("Sneltoetsen"), toLookUp("Toont alle sneltoetsen"), "", "Ctrl+?",
            Help, true, always},
    Command{About, "about", toLookUp("Over Vantor Prep"), toLookUp("Toont de versie en de licentie"), "", "",
            Help, false, always},
};
// clang-format on

constexpr std::array kMenus{Menu{File, toLookUp("Bestand"), 'B'}, Menu{Edit, toLookUp("Bewerken"), 'e'},
                            Menu{View, toLookUp("Beeld"), 'l'}, Menu{Help, toLookUp("Help"), 'H'}};

} // namespace

std::span<const Command> commandTable() {
    return kTable;
}

const Command& command(CommandId id) {
    return *std::ranges::find(kTable, id, &Command::id);
}

std::span<const Menu> menuTable() {
    return kMenus;
}

} // namespace vantor::ui
