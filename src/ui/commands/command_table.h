// The table of commands: everything that the windows offer, once: what it is called, what it does, its symbol, its
// shortcut, where it stands in the menu bar, and when it can be given.
//
// Menus, buttons, shortcuts and the list of shortcuts follow from it.
#pragma once

#include <span>
#include <string_view>

namespace vantor::ui {

enum class CommandId {
    NewShoot,
    NewSet,
    Open,
    Save,
    ImportCsv,
    ExportCsv,
    ExportJson,
    BulkExport,
    Versions,
    DeleteShoot,
    CloseWindow,
    Quit,
    Undo,
    Redo,
    Cut,
    Copy,
    Paste,
    SelectAll,
    Search,
    EditSet,
    ShowCode,
    ActivateSet,
    DeleteSet,
    ScannerField,
    Clients,
    Catalog,
    Generator,
    FullScreen,
    Manual,
    OnlineManual,
    Shortcuts,
    About,
};

enum class MenuId { File, Edit, View, Help };

// What decides whether a command can be given.
struct CommandState {
    bool hasShoot = false;
    bool hasSets = false;
    // Whether a row of the list is the current one.
    bool hasCurrentSet = false;
    bool canUndo = false;
    bool canRedo = false;
};

struct Command {
    CommandId id;
    // For tests and assistive technology: "newShoot".
    std::string_view name;
    // In Dutch, as they are looked up.
    std::string_view text;
    std::string_view help;
    // Empty for none.
    std::string_view symbol;
    // As the toolkit reads it: "Ctrl+Shift+Z". Empty for none.
    std::string_view shortcut;
    MenuId menu;
    // Whether a line stands above it in its menu.
    bool beginsGroup;
    bool (*canBeGiven)(const CommandState& state);
};

// In the order of the menus.
[[nodiscard]] std::span<const Command> commandTable();
[[nodiscard]] const Command& command(CommandId id);

struct Menu {
    MenuId id;
    // In Dutch, as it is looked up.
    std::string_view title;
    // Which of its letters opens it, with Alt.
    char letter;
};

// In the order of the menu bar.
[[nodiscard]] std::span<const Menu> menuTable();

} // namespace vantor::ui
