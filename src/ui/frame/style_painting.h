// The painting of the program's style, control by control. Each paints what the toolkit's option tells of it.
#pragma once

#include <QRectF>

class QPainter;
class QPalette;
class QStyle;
class QStyleOption;
class QStyleOptionButton;
class QStyleOptionComboBox;
class QStyleOptionHeader;
class QStyleOptionMenuItem;
class QStyleOptionProgressBar;
class QStyleOptionSlider;
class QColor;
class QWidget;

namespace vantor::ui {

// The columns of a menu's line, as wide as its style measures them.
struct MenuColumns {
    static constexpr int kSymbol = 30;
    static constexpr int kArrow = 24;
    static constexpr int kGap = 24;
};
[[nodiscard]] int menuLineHeight(int textHeight);

// A box with rounded corners whose edge, one pixel thin, lies within `box`.
void paintBox(QPainter& painter, const QRectF& box, const QColor& ground, const QColor& edge, qreal radius);
// An arrow head of the program's stroke, `angle` degrees turned from pointing down.
void paintArrow(QPainter& painter, const QRectF& box, qreal angle, const QColor& color);

void paintPushButton(QPainter& painter, const QStyleOptionButton& option, const QWidget* widget);
void paintPushButtonLabel(QPainter& painter, const QStyleOptionButton& option, const QWidget* widget);
void paintToolButton(QPainter& painter, const QStyleOption& option);
void paintField(QPainter& painter, const QStyleOption& option);
void paintFrame(QPainter& painter, const QStyleOption& option, const QWidget* widget);
void paintCheckBox(QPainter& painter, const QStyleOption& option);
void paintRadioButton(QPainter& painter, const QStyleOption& option);
void paintComboBox(QPainter& painter, const QStyleOptionComboBox& option);
void paintScrollBar(QPainter& painter, const QStyleOptionSlider& option, const QRect& slider);
void paintProgress(QPainter& painter, const QStyleOptionProgressBar& option);
void paintMenuBarItem(QPainter& painter, const QStyleOptionMenuItem& option, const QStyle& style);
void paintMenuItem(QPainter& painter, const QStyleOptionMenuItem& option, const QStyle& style);
void paintHeader(QPainter& painter, const QStyleOptionHeader& option);
// Of an item in the toolkit's own lists.
void paintItemGround(QPainter& painter, const QStyleOption& option);

} // namespace vantor::ui
