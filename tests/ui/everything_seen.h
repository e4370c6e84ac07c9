// Everything that a window says, to the eye and to assistive technology.
#pragma once

#include <QMenu>
#include <QString>
#include <QWidget>
#include <string>
#include <vector>

namespace vantor::testing {

struct Seen {
    // The widget, and how it says it.
    QString where;
    QString text;
    // Whether it is read as markup.
    bool isMarkup = false;
};

// With labels, buttons, boxes, menus, titles, tool tips and to assistive technology. What fields and editors hold is
// for editing, and left out.
[[nodiscard]] std::vector<Seen> everythingSeen(QWidget& window);

// A menu and all menus within it, as opening them makes them, without a popup on screen.
[[nodiscard]] std::vector<QMenu*> menusWithin(QMenu& menu);

// What a tool tip would show, read as the tool tip reads it.
[[nodiscard]] std::string shownToolTip(const QWidget& widget);

} // namespace vantor::testing
