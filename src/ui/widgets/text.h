// Texts between the core, which speaks UTF-8, and the widgets.
#pragma once

#include "base/shown_text.h"
#include "base/text_lookup.h"

#include <QString>
#include <string>
#include <string_view>

namespace vantor::ui {

[[nodiscard]] inline QString qstring(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// What was typed, as it stands.
[[nodiscard]] inline std::string typed(const QString& text) {
    return text.toStdString();
}

// One of the program's own texts, as the user is to read it.
[[nodiscard]] inline QString shown(std::string_view dutch) {
    return qstring(lookUp(dutch));
}

// A piece of data, fit to stand in a line.
[[nodiscard]] inline QString shownData(std::string_view text) {
    return qstring(shownText(text));
}

// A piece of data for a place where "&" marks a shortcut: menus, buttons and check boxes.
[[nodiscard]] inline QString dataInMenu(std::string_view text) {
    return shownData(text).replace(QLatin1Char('&'), QLatin1String("&&"));
}

// A tool tip that shows the text as it is, whatever markup it looks like.
[[nodiscard]] QString plainToolTip(const QString& text);

} // namespace vantor::ui
