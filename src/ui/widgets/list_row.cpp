#include "ui/widgets/list_row.h"

#include "ui/frame/theme.h"

#include <QLayout>
#include <QPainter>
#include <algorithm>

namespace vantor::ui {

ListRow::ListRow(QWidget* parent) : QWidget(parent) {}

void ListRow::setCurrent(bool current) {
    m_current = current;
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

void ListRow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (m_litUp)
        painter.fillRect(rect(), theme::litUp(palette()));
    else if (m_hovered || m_current)
        painter.fillRect(rect(), theme::hovered(palette()));
    painter.fillRect(0, height() - 1, width(), 1, theme::hairline(palette()));
    if (m_current && list() != nullptr && list()->hasFocus()) {
        painter.setPen(QPen(theme::accent(palette()), 2));
        painter.drawRect(QRectF(rect()).adjusted(1, 1, -1, -2));
    }
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
