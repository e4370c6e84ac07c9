#include "ui/widgets/flow_layout.h"

#include <algorithm>
#include <utility>

namespace vantor::ui {

FlowLayout::FlowLayout(int spacing) {
    setContentsMargins(0, 0, 0, 0);
    setSpacing(spacing);
}

FlowLayout::~FlowLayout() = default;

void FlowLayout::addItem(QLayoutItem* item) {
    m_items.emplace_back(item);
}

int FlowLayout::count() const {
    return static_cast<int>(m_items.size());
}

QLayoutItem* FlowLayout::itemAt(int index) const {
    return index >= 0 && index < count() ? m_items[static_cast<std::size_t>(index)].get() : nullptr;
}

QLayoutItem* FlowLayout::takeAt(int index) {
    if (index < 0 || index >= count())
        return nullptr;
    const auto place = m_items.begin() + index;
    QLayoutItem* const item = place->release();
    m_items.erase(place);
    return item;
}

int FlowLayout::heightForWidth(int width) const {
    return arrange(QRect(0, 0, width, 0), false);
}

QSize FlowLayout::sizeHint() const {
    int width = 0;
    for (const auto& item : m_items)
        width += item->isEmpty() ? 0 : item->sizeHint().width() + spacing();
    return {std::max(0, width - spacing()), heightForWidth(width)};
}

QSize FlowLayout::minimumSize() const {
    QSize least;
    for (const auto& item : m_items)
        least = least.expandedTo(item->minimumSize());
    return least;
}

void FlowLayout::setGeometry(const QRect& rect) {
    QLayout::setGeometry(rect);
    arrange(rect, true);
}

int FlowLayout::arrange(const QRect& rect, bool place) const {
    int y = rect.y();
    std::vector<QLayoutItem*> line;
    int lineWidth = 0;
    int lineHeight = 0;
    const auto endLine = [&] {
        int x = rect.right() + 1 - lineWidth;
        for (auto* const item : line) {
            const QSize size = item->sizeHint();
            if (place)
                item->setGeometry(QRect(QPoint(x, y + (lineHeight - size.height()) / 2), size));
            x += size.width() + spacing();
        }
        y += lineHeight;
        line.clear();
        lineWidth = 0;
        lineHeight = 0;
    };
    for (const auto& item : m_items) {
        if (item->isEmpty())
            continue;
        const QSize size = item->sizeHint();
        if (!line.empty() && lineWidth + spacing() + size.width() > rect.width()) {
            endLine();
            y += spacing();
        }
        lineWidth += size.width() + (line.empty() ? 0 : spacing());
        lineHeight = std::max(lineHeight, size.height());
        line.push_back(item.get());
    }
    endLine();
    return y - rect.y();
}

} // namespace vantor::ui
