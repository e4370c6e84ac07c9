#include "ui/widgets/list_row.h"

#include "ui/frame/theme.h"

#include <QLayout>
#include <QPainter>
#include <algorithm>

namespace vantor::ui {
namespace {

constexpr int kActiveEdge = 3;

} // namespace

ListRow::ListRow(QWidget* parent) : QWidget(parent) {}

void ListRow::setCurrent(bool current) {
    m_current = current;
    update();
}

void ListRow::setActive(bool active) {
    m_active = active;
    update();
}

void ListRow::setLitUp(bool litUp) {
    m_litUp = litUp;
    update();
}

QSize ListRow::sizeHint() const {
    const QSize content = layout() != nullptr ? layout()->sizeHint() : QSize();
    return {content.width(), std::max(theme::kRowHeight, content.height())};
}

QWidget* ListRow::list() const {
    return parentWidget() != nullptr ? parentWidget()->parentWidget() : nullptr;
}

QColor ListRow::ground() const {
    if (m_litUp)
        return theme::litUp(palette());
    const auto resting = m_active ? theme::activeRow(palette()) : theme::surface(palette());
    // The tint shows through the light.
    return isLit() ? theme::mixed(theme::hovered(palette()), resting, m_active ? 0.5 : 1) : resting;
}

void ListRow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), ground());
    painter.fillRect(0, height() - 1, width(), 1, theme::hairline(palette()));
    if (m_current && list() != nullptr && list()->hasFocus()) {
        painter.setPen(QPen(theme::accent(palette()), 2));
        painter.drawRect(QRectF(rect()).adjusted(1, 1, -1, -2));
    }
    if (m_active)
        painter.fillRect(0, 0, kActiveEdge, height() - 1, theme::green(palette()));
}

void ListRow::enterEvent(QEnterEvent*) {
    m_hovered = true;
    update();
}

void ListRow::leaveEvent(QEvent*) {
    m_hovered = false;
    update();
}

} // namespace vantor::ui
