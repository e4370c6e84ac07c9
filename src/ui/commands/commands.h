// Commands: the actions of a window's commands, which its menus, buttons and shortcuts share.
//
// An action does nothing until it is bound. Its text is plain: an ampersand in it is shown as one. Made for one window,
// which owns it, and whose shortcuts it brings along.
#pragma once

#include "ui/commands/command_table.h"

#include <QObject>
#include <functional>

class QAbstractButton;
class QAction;
class QMenuBar;
class QPushButton;
class QWidget;

namespace vantor::ui {

class Commands : public QObject {
public:
    // Help texts may name the web site.
    Commands(QWidget* window, const QString& siteHost);

    [[nodiscard]] QAction& action(CommandId id) const;

    void bind(CommandId id, std::function<void()> run);

    // Makes this button give the command, with its help text and shortcut as its own, enabled with it.
    void attach(QAbstractButton& button, CommandId id);
    // A button with the command's text and symbol.
    [[nodiscard]] QPushButton* makeButton(CommandId id, const char* objectName);

    // Tells the shortcut that leads to a field, with its help text.
    static void tellShortcut(QWidget& field, const QString& help, CommandId id);

    // Which commands can be given now.
    void update(const CommandState& state);
    // What undo and redo would take back and do again; empty for nothing.
    void nameSteps(const QString& undo, const QString& redo);

    // Adds the menus, with their commands. `beforeOpening` is called before any of them is shown.
    void fill(QMenuBar& bar, const std::function<void()>& beforeOpening) const;
};

} // namespace vantor::ui
