// The program's own symbols: one stroke width, in the colour of the text around them, sharp at every scale.
#pragma once

#include <QColor>
#include <QIcon>
#include <QPalette>
#include <QPixmap>
#include <QString>

namespace vantor::ui {

// Where the drawing of that name can be loaded from.
[[nodiscard]] QString symbolPath(const QString& name);

// The symbol of that name (a file of symbols/) in a colour of its own, `size` device-independent pixels wide.
[[nodiscard]] QPixmap symbolPixmap(const QString& name, int size, const QColor& color, qreal deviceRatio);

// The symbol as an icon that follows the program's palette: in the colour of the texts of buttons, or in one of its own;
// dimmed when it is disabled, and in the colour of texts on the accent when it is selected.
[[nodiscard]] QIcon symbolIcon(const QString& name, QColor (*color)(const QPalette& palette) = nullptr);

// The logo as the icon of the program's windows, in the sizes that desktops ask for.
[[nodiscard]] QIcon logoIcon();

} // namespace vantor::ui
