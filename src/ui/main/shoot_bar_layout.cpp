#include "ui/main/shoot_bar_layout.h"

#include "ui/frame/theme.h"

#include <QWidget>
#include <algorithm>
#include <numeric>
#include <utility>

namespace vantor::ui {
namespace {

// Symbols have room around them of their own.
int between(ShootBarLayout::Part one, ShootBarLayout::Part next) {
    using enum ShootBarLayout::Part;
    if (one == Command && next == Command)
        return 0;
    return one == Picker && next == Last ? theme::kPadding : theme::kHalfStep;
}

// Whether it is shown or not.
QSize sizeOf(const QLayoutItem& item) {
    const auto* const widget = item.widget();
    return widget != nullptr ? widget->sizeHint().expandedTo(widget->minimumSize()) : item.sizeHint();
}

int sum(const std::vector<int>& numbers) {
    return std::accumulate(numbers.begin(), numbers.end(), 0);
}

// In the middle of its row.
void placeIn(QLayoutItem& item, const QRect& room) {
    const int height = sizeOf(item).height();
    item.setGeometry(QRect(room.x(), room.y() + (room.height() - height) / 2, room.width(), height));
}

} // namespace

ShootBarLayout::ShootBarLayout() {
    setContentsMargins(theme::kMargin, theme::kStep, theme::kMargin, theme::kStep);
    setSpacing(theme::kStep);
}

ShootBarLayout::~ShootBarLayout() = default;

void ShootBarLayout::add(QWidget* widget, Part part) {
    addChildWidget(widget);
    m_items.push_back({part, std::make_unique<QWidgetItem>(widget)});
    invalidate();
}

void ShootBarLayout::addItem(QLayoutItem* item) {
    m_items.push_back({Part::Command, std::unique_ptr<QLayoutItem>(item)});
}

int ShootBarLayout::count() const {
    return static_cast<int>(m_items.size());
}

QLayoutItem* ShootBarLayout::itemAt(int index) const {
    return index >= 0 && index < count() ? m_items[static_cast<std::size_t>(index)].item.get() : nullptr;
}

QLayoutItem* ShootBarLayout::takeAt(int index) {
    if (index < 0 || index >= count())
        return nullptr;
    const auto place = m_items.begin() + index;
    QLayoutItem* const item = place->item.release();
    m_items.erase(place);
    return item;
}

ShootBarLayout::Row ShootBarLayout::itemsOf(std::initializer_list<Part> parts) const {
    Row row;
    for (const auto& item : m_items) {
        if (std::ranges::find(parts, item.part) != parts.end())
            row.push_back(&item);
    }
    return row;
}

int ShootBarLayout::widthOf(const Row& row) {
    int width = 0;
    for (std::size_t i = 0; i < row.size(); ++i)
        width += sizeOf(*row[i]->item).width() + (i > 0 ? between(row[i - 1]->part, row[i]->part) : 0);
    return width;
}

std::vector<int> ShootBarLayout::columnsWithin(int width) const {
    const auto commands = itemsOf({Part::Command});
    for (std::size_t rows = 1;; ++rows) {
        const std::size_t perRow = (commands.size() + rows - 1) / rows;
        std::vector<int> columns(perRow, 0);
        for (std::size_t i = 0; i < commands.size(); ++i)
            columns[i % perRow] = std::max(columns[i % perRow], sizeOf(*commands[i]->item).width());
        if (perRow <= 1 || sum(columns) <= width)
            return columns;
    }
}

int ShootBarLayout::heightForWidth(int width) const {
    return arrange(QRect(0, 0, width, 0), false);
}

QSize ShootBarLayout::sizeHint() const {
    const auto margins = contentsMargins();
    const int width = widthOf(itemsOf({Part::Title, Part::Picker, Part::Command, Part::Last})) +
                      margins.left() + margins.right();
    return {width, heightForWidth(width)};
}

QSize ShootBarLayout::minimumSize() const {
    QSize least(widthOf(itemsOf({Part::Picker, Part::Last})), 0);
    for (const auto* const each : itemsOf({Part::Title, Part::Picker, Part::Command}))
        least = least.expandedTo(each->item->minimumSize());
    return least.grownBy(contentsMargins());
}

void ShootBarLayout::setGeometry(const QRect& rect) {
    QLayout::setGeometry(rect);
    arrange(rect, true);
}

int ShootBarLayout::arrange(const QRect& rect, bool place) const {
    const QRect room = rect.marginsRemoved(contentsMargins());
    const auto title = itemsOf({Part::Title}).front()->item.get();
    const int titleHeight = sizeOf(*title).height();
    const auto leavesTitleItsLeast = [&](const Row& right) {
        return title->minimumSize().width() + spacing() + widthOf(right) <= room.width();
    };
    auto right = itemsOf({Part::Picker, Part::Command, Part::Last});
    const bool inOneRow = leavesTitleItsLeast(right);
    if (!inOneRow)
        right = itemsOf({Part::Picker, Part::Last});
    const bool titleAlone = !leavesTitleItsLeast(right);

    QRect row(room.x(), room.y(), room.width(), titleHeight);
    if (titleAlone) {
        if (place)
            placeIn(*title, row);
        row.moveTop(row.bottom() + 1 + theme::kHalfStep);
    }
    int height = titleAlone ? 0 : titleHeight;
    for (const auto* const each : right)
        height = std::max(height, sizeOf(*each->item).height());
    row.setHeight(height);
    if (place) {
        const int end = placeAtRight(right, row);
        if (!titleAlone)
            placeIn(*title, QRect(row.x(), row.y(), end - spacing() - row.x(), height));
    }
    int bottom = row.bottom() + 1;
    if (!inOneRow) {
        bottom += theme::kHalfStep;
        bottom += arrangeCommands(QRect(room.x(), bottom, room.width(), 0), place);
    }
    return bottom + contentsMargins().bottom() - rect.y();
}

int ShootBarLayout::arrangeCommands(const QRect& rect, bool place) const {
    const auto commands = itemsOf({Part::Command});
    const auto columns = columnsWithin(rect.width());
    const int free = std::max(0, rect.width() - sum(columns));
    const int gaps = std::max(1, static_cast<int>(columns.size()) - 1);
    int y = rect.y();
    int x = rect.x();
    int height = 0;
    for (std::size_t i = 0; i < commands.size(); ++i) {
        const auto column = i % columns.size();
        if (column == 0) {
            y += height;
            x = rect.x();
            height = 0;
        }
        auto& item = *commands[i]->item;
        const QSize size = sizeOf(item);
        const int left = x + free * static_cast<int>(column) / gaps + (columns[column] - size.width()) / 2;
        if (place)
            item.setGeometry(QRect(QPoint(left, y), size));
        x += columns[column];
        height = std::max(height, size.height());
    }
    return y + height - rect.y();
}

int ShootBarLayout::placeAtRight(const Row& row, const QRect& rect) {
    int x = rect.right() + 1;
    const Item* next = nullptr;
    for (auto each = row.rbegin(); each != row.rend(); ++each) {
        auto& item = *(*each)->item;
        if (item.isEmpty())
            continue;
        const int width = sizeOf(item).width();
        x -= width + (next != nullptr ? between((*each)->part, next->part) : 0);
        placeIn(item, QRect(x, rect.y(), width, rect.height()));
        next = *each;
    }
    return x;
}

} // namespace vantor::ui
