#include "ui/frame/style_painting.h"

#include "ui/frame/theme.h"
#include "ui/widgets/widgets.h"

#include <QAbstractScrollArea>
#include <QPainter>
#include <QPlainTextEdit>
#include <QStyle>
#include <QStyleOption>
#include <QTextEdit>
#include <algorithm>

namespace vantor::ui {
namespace {

bool has(const QStyleOption& option, QStyle::StateFlag state) {
    return option.state.testFlag(state);
}

bool isPressed(const QStyleOption& option) {
    return has(option, QStyle::State_Sunken);
}

bool isHovered(const QStyleOption& option) {
    return has(option, QStyle::State_MouseOver) && has(option, QStyle::State_Enabled);
}

// The edge, in the accent colour while it has the focus.
QColor edgeOf(const QStyleOption& option, const QColor& usual) {
    if (!has(option, QStyle::State_Enabled))
        return theme::hairline(option.palette);
    return has(option, QStyle::State_HasFocus) ? theme::accent(option.palette) : usual;
}

QColor groundOf(const QStyleOption& option, const QColor& usual) {
    if (isPressed(option))
        return theme::pressed(option.palette);
    return isHovered(option) ? theme::hovered(option.palette) : usual;
}

QColor accentGround(const QStyleOption& option) {
    const auto& palette = option.palette;
    if (!has(option, QStyle::State_Enabled))
        return theme::hovered(palette);
    const auto accent = theme::accent(palette);
    if (isPressed(option))
        return theme::mixed(Qt::black, accent, 0.16);
    return isHovered(option) ? theme::mixed(Qt::black, accent, 0.08) : accent;
}

// Round at the ends of the row alone; its neighbours' edges are one line.
void paintSegment(QPainter& painter, const QStyleOptionButton& option, const SegmentButton& segment) {
    const auto& palette = option.palette;
    const bool on = has(option, QStyle::State_On);
    QRectF box = option.rect;
    if (segment.place() != SegmentButton::Place::First)
        box.setLeft(box.left() - 2.0 * theme::kCornerRadius);
    if (segment.place() != SegmentButton::Place::Last)
        box.setRight(box.right() + 2.0 * theme::kCornerRadius);
    const auto ground = on ? accentGround(option) : groundOf(option, theme::surface(palette));
    painter.save();
    painter.setClipRect(option.rect);
    paintBox(painter, box, ground, edgeOf(option, on ? ground : theme::fieldEdge(palette)),
             theme::kCornerRadius);
    painter.restore();
}

bool isFilled(const QStyleOptionButton& option, const QWidget* widget) {
    if (dynamic_cast<const ProminentButton*>(widget) != nullptr)
        return true;
    return dynamic_cast<const SegmentButton*>(widget) != nullptr && has(option, QStyle::State_On);
}

QPalette::ColorGroup groupOf(const QStyleOption& option) {
    return has(option, QStyle::State_Enabled) ? QPalette::Active : QPalette::Disabled;
}

QColor inkOf(const QStyleOption& option, QPalette::ColorRole role) {
    return option.palette.color(groupOf(option), role);
}

int mnemonics(const QStyle& style, const QStyleOption& option) {
    return style.styleHint(QStyle::SH_UnderlineShortcut, &option) != 0 ? Qt::TextShowMnemonic
                                                                       : Qt::TextHideMnemonic;
}

void fill(QPainter& painter, const QRectF& box, const QColor& color, qreal radius) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(box, radius, radius);
    painter.restore();
}

void paintTick(QPainter& painter, const QRectF& box, const QColor& color) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, 1.75, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(QPolygonF({{box.x() + box.width() * 0.25, box.y() + box.height() * 0.52},
                                    {box.x() + box.width() * 0.44, box.y() + box.height() * 0.70},
                                    {box.x() + box.width() * 0.76, box.y() + box.height() * 0.32}}));
    painter.restore();
}

QRect squareIn(const QRect& rect, int edge) {
    return {rect.x() + (rect.width() - edge) / 2, rect.y() + (rect.height() - edge) / 2, edge, edge};
}

} // namespace

int menuLineHeight(int textHeight) {
    return std::max(theme::kRowControlHeight, textHeight + theme::kStep + theme::kHalfStep);
}

void paintBox(QPainter& painter, const QRectF& box, const QColor& ground, const QColor& edge, qreal radius) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(edge, 1));
    painter.setBrush(ground);
    painter.drawRoundedRect(box.adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    painter.restore();
}

void paintArrow(QPainter& painter, const QRectF& box, qreal angle, const QColor& color) {
    constexpr qreal kHalfWidth = 3.5;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(box.center());
    painter.rotate(angle);
    painter.setPen(QPen(color, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(
        QPolygonF({{-kHalfWidth, -kHalfWidth / 2}, {0, kHalfWidth / 2}, {kHalfWidth, -kHalfWidth / 2}}));
    painter.restore();
}

void paintPushButton(QPainter& painter, const QStyleOptionButton& option, const QWidget* widget) {
    const auto& palette = option.palette;
    if (const auto* const segment = dynamic_cast<const SegmentButton*>(widget))
        return paintSegment(painter, option, *segment);
    if (option.features.testFlag(QStyleOptionButton::Flat)) {
        if (isHovered(option) || isPressed(option))
            fill(painter, option.rect, groundOf(option, Qt::transparent), theme::kCornerRadius);
        return;
    }
    if (isFilled(option, widget)) {
        const auto ground = accentGround(option);
        const bool focused = has(option, QStyle::State_HasFocus);
        paintBox(painter, option.rect, ground,
                 focused ? theme::mixed(theme::text(palette), ground, 0.3) : ground, theme::kCornerRadius);
        return;
    }
    paintBox(painter, option.rect, groundOf(option, theme::surface(palette)),
             edgeOf(option, theme::edge(palette)), theme::kCornerRadius);
}

void paintPushButtonLabel(QPainter& painter, const QStyleOptionButton& option, const QWidget* widget) {
    const bool filled = isFilled(option, widget);
    const auto ink = inkOf(option, filled ? QPalette::HighlightedText : QPalette::ButtonText);
    const bool hasMenu = option.features.testFlag(QStyleOptionButton::HasMenu);
    const int arrow = hasMenu ? theme::kMargin : 0;
    const auto& metrics = option.fontMetrics;
    constexpr int kGap = theme::kStep;
    const int flags = mnemonics(*widget->style(), option) | Qt::TextSingleLine;
    const int text = metrics.size(Qt::TextShowMnemonic, option.text).width();
    const int icon = option.icon.isNull() ? 0 : option.iconSize.width();
    const int all = text + arrow + (icon > 0 ? icon + (option.text.isEmpty() ? 0 : kGap) : 0);
    int x = option.rect.x() + std::max(theme::kHalfStep, (option.rect.width() - all) / 2);
    if (icon > 0) {
        const auto mode = !has(option, QStyle::State_Enabled) ? QIcon::Disabled
                          : filled                            ? QIcon::Selected
                                                              : QIcon::Normal;
        const QRect place(QPoint(x, option.rect.y() + (option.rect.height() - option.iconSize.height()) / 2),
                          option.iconSize);
        option.icon.paint(&painter, place, Qt::AlignCenter, mode);
        x += icon + kGap;
    }
    painter.save();
    painter.setPen(ink);
    painter.drawText(QRect(x, option.rect.y(), option.rect.right() - x, option.rect.height()),
                     flags | Qt::AlignLeft | Qt::AlignVCenter, option.text);
    painter.restore();
    if (hasMenu)
        paintArrow(painter, QRectF(x + text + theme::kHalfStep, option.rect.y(), arrow, option.rect.height()),
                   0, ink);
}

void paintToolButton(QPainter& painter, const QStyleOption& option) {
    const bool flat = has(option, QStyle::State_AutoRaise);
    const bool on = has(option, QStyle::State_On);
    const auto ground = groundOf(option, on     ? theme::hovered(option.palette)
                                         : flat ? QColor(Qt::transparent)
                                                : theme::surface(option.palette));
    const auto edge = edgeOf(option, flat ? QColor(Qt::transparent) : theme::edge(option.palette));
    paintBox(painter, option.rect, ground,
             flat && !has(option, QStyle::State_HasFocus) ? QColor(Qt::transparent) : edge,
             theme::kCornerRadius);
}

void paintField(QPainter& painter, const QStyleOption& option) {
    const auto& palette = option.palette;
    paintBox(painter, option.rect, palette.color(groupOf(option), QPalette::Base),
             edgeOf(option, theme::fieldEdge(palette)), theme::kCornerRadius);
}

void paintFrame(QPainter& painter, const QStyleOption& option, const QWidget* widget) {
    const bool isEditor = qobject_cast<const QPlainTextEdit*>(widget) != nullptr ||
                          qobject_cast<const QTextEdit*>(widget) != nullptr;
    if (isEditor)
        return paintField(painter, option);
    paintBox(painter, option.rect, theme::surface(option.palette),
             edgeOf(option, theme::edge(option.palette)), theme::kCornerRadius);
}

void paintCheckBox(QPainter& painter, const QStyleOption& option) {
    const auto box = squareIn(option.rect, theme::kSymbolSize);
    const bool on = has(option, QStyle::State_On) || has(option, QStyle::State_NoChange);
    if (!on) {
        paintBox(painter, box, groundOf(option, theme::field(option.palette)),
                 edgeOf(option, theme::fieldEdge(option.palette)), theme::kTagRadius);
        return;
    }
    const auto ground = accentGround(option);
    const bool focused = has(option, QStyle::State_HasFocus);
    paintBox(painter, box, ground, focused ? theme::mixed(theme::text(option.palette), ground, 0.3) : ground,
             theme::kTagRadius);
    const auto ink = inkOf(option, QPalette::HighlightedText);
    if (has(option, QStyle::State_On))
        paintTick(painter, box, ink);
    else
        fill(painter, QRectF(box).adjusted(5, 8, -5, -8), ink, 1);
}

void paintRadioButton(QPainter& painter, const QStyleOption& option) {
    const QRectF box = squareIn(option.rect, theme::kSymbolSize);
    const bool on = has(option, QStyle::State_On);
    paintBox(painter, box, on ? accentGround(option) : groundOf(option, theme::field(option.palette)),
             edgeOf(option, on ? accentGround(option) : theme::fieldEdge(option.palette)), box.width() / 2);
    if (on)
        fill(painter, box.adjusted(6, 6, -6, -6), inkOf(option, QPalette::HighlightedText), 3);
}

void paintComboBox(QPainter& painter, const QStyleOptionComboBox& option) {
    const bool editable = option.editable;
    QStyleOption ground = option;
    ground.state.setFlag(QStyle::State_Sunken, false);
    const auto usual = editable ? theme::field(option.palette) : theme::surface(option.palette);
    paintBox(painter, option.rect, editable ? usual : groundOf(ground, usual),
             edgeOf(option, theme::fieldEdge(option.palette)), theme::kCornerRadius);
    QRectF arrow = option.rect;
    if (option.direction == Qt::RightToLeft)
        arrow.setRight(arrow.left() + 28);
    else
        arrow.setLeft(arrow.right() - 28);
    paintArrow(painter, arrow, 0, inkOf(option, QPalette::ButtonText));
}

void paintScrollBar(QPainter& painter, const QStyleOptionSlider& option, const QRect& slider) {
    if (option.minimum == option.maximum)
        return;
    constexpr qreal kInset = 3;
    const bool isLit = isHovered(option) || isPressed(option);
    const QRectF handle = QRectF(slider).adjusted(kInset, kInset, -kInset, -kInset);
    const auto radius = std::min(handle.width(), handle.height()) / 2;
    fill(painter, handle, isLit ? theme::secondaryText(option.palette) : theme::fieldEdge(option.palette),
         radius);
}

void paintProgress(QPainter& painter, const QStyleOptionProgressBar& option) {
    constexpr int kHeight = 6;
    const QRect rect = option.rect;
    const QRectF groove(rect.x(), rect.y() + (rect.height() - kHeight) / 2.0, rect.width(), kHeight);
    fill(painter, groove, theme::hairline(option.palette), kHeight / 2.0);
    const auto range = static_cast<qint64>(option.maximum) - option.minimum;
    const auto share = range > 0 ? static_cast<qreal>(static_cast<qint64>(option.progress) - option.minimum) /
                                       static_cast<qreal>(range)
                                 : 1;
    QRectF done = groove;
    done.setWidth(std::max<qreal>(kHeight, groove.width() * std::clamp<qreal>(share, 0, 1)));
    if (share > 0)
        fill(painter, done, theme::accent(option.palette), kHeight / 2.0);
}

void paintMenuBarItem(QPainter& painter, const QStyleOptionMenuItem& option, const QStyle& style) {
    painter.fillRect(option.rect, theme::window(option.palette));
    const bool open = has(option, QStyle::State_Selected) || isPressed(option);
    if (open)
        fill(painter, QRectF(option.rect).adjusted(0, 2, 0, -2), theme::hovered(option.palette),
             theme::kTagRadius);
    painter.save();
    painter.setPen(inkOf(option, QPalette::ButtonText));
    painter.drawText(option.rect, Qt::AlignCenter | Qt::TextSingleLine | mnemonics(style, option),
                     option.text);
    painter.restore();
}

void paintMenuItem(QPainter& painter, const QStyleOptionMenuItem& option, const QStyle& style) {
    const QRect rect = option.rect;
    if (option.menuItemType == QStyleOptionMenuItem::Separator) {
        painter.fillRect(rect.x() + theme::kStep, rect.center().y(), rect.width() - 2 * theme::kStep, 1,
                         theme::hairline(option.palette));
        return;
    }
    const bool enabled = has(option, QStyle::State_Enabled);
    if (has(option, QStyle::State_Selected) && enabled)
        fill(painter, QRectF(rect).adjusted(theme::kHalfStep, 0, -theme::kHalfStep, 0),
             theme::hovered(option.palette), theme::kTagRadius);
    const auto ink = inkOf(option, QPalette::ButtonText);
    const QRect symbol(rect.x() + theme::kHalfStep, rect.y(), MenuColumns::kSymbol, rect.height());
    if (option.checkType != QStyleOptionMenuItem::NotCheckable && option.checked)
        paintTick(painter, squareIn(symbol, theme::kSymbolSize), ink);
    else if (!option.icon.isNull())
        option.icon.paint(&painter, squareIn(symbol, theme::kSymbolSize), Qt::AlignCenter,
                          enabled ? QIcon::Normal : QIcon::Disabled);
    const QRect line(symbol.right() + 1 + theme::kHalfStep, rect.y(),
                     rect.right() - symbol.right() - theme::kPadding, rect.height());
    painter.save();
    painter.setFont(option.font);
    painter.setPen(ink);
    const auto tab = option.text.indexOf(QLatin1Char('\t'));
    const int flags = Qt::AlignVCenter | Qt::TextSingleLine | mnemonics(style, option);
    painter.drawText(line, flags | Qt::AlignLeft, tab < 0 ? option.text : option.text.left(tab));
    if (tab >= 0) {
        painter.setPen(enabled ? theme::secondaryText(option.palette) : ink);
        painter.drawText(line, flags | Qt::AlignRight, option.text.mid(tab + 1));
    }
    painter.restore();
    if (option.menuItemType == QStyleOptionMenuItem::SubMenu)
        paintArrow(painter,
                   QRectF(rect.right() - MenuColumns::kArrow, rect.y(), MenuColumns::kArrow, rect.height()),
                   -90, ink);
}

void paintHeader(QPainter& painter, const QStyleOptionHeader& option) {
    painter.fillRect(option.rect, groundOf(option, theme::surface(option.palette)));
    painter.fillRect(option.rect.x(), option.rect.bottom(), option.rect.width(), 1,
                     theme::hairline(option.palette));
}

void paintItemGround(QPainter& painter, const QStyleOption& option) {
    if (has(option, QStyle::State_Selected))
        painter.fillRect(option.rect, option.palette.color(groupOf(option), QPalette::Highlight));
    else if (isHovered(option))
        painter.fillRect(option.rect, theme::hovered(option.palette));
}

} // namespace vantor::ui
