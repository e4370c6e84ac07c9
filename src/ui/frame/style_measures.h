// The measures of the program's style, in device-independent pixels; they grow with the user's font.
#pragma once

#include <QStyle>
#include <optional>

class QStyleOptionSlider;

namespace vantor::ui {

// Of buttons, fields and boxes: lower in the rows of a list. `option` may be null.
[[nodiscard]] int controlHeight(const QStyleOption* option, const QWidget* widget);

// Absent where the toolkit's is right.
[[nodiscard]] std::optional<int> measureOf(QStyle::PixelMetric metric);

// A scroll bar without arrows: its slider, and what lies before and after.
[[nodiscard]] QRect scrollBarPart(const QStyleOptionSlider& bar, QStyle::SubControl part);

} // namespace vantor::ui
