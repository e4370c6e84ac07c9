#include "ui/widgets/recycling_list.h"

#include "ui/frame/theme.h"
#include "ui/widgets/accessible_list.h"
#include "ui/widgets/widgets.h"

#include <QAbstractButton>
#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <utility>

namespace vantor::ui {

RecyclingList::RecyclingList(Rows rows, QWidget* parent)
    : QAbstractScrollArea(parent),
      m_rows(std::move(rows)) {
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::TabFocus);
    setFrameShape(QFrame::NoFrame);
    viewport()->setAutoFillBackground(true);
    viewport()->setBackgroundRole(QPalette::Button);
    makeListsAccessible();
    QWidget* const sample = takeFromPool();
    m_rowHeight = std::max(1, sample->sizeHint().height());
    sample->hide();
    m_pool.push_back(sample);
}

void RecyclingList::showFrame() {
    setFrameShape(QFrame::StyledPanel);
}

void RecyclingList::layScrollBarOverRows() {
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setViewportMargins(0, 0, -verticalScrollBar()->sizeHint().width(), 0);
    verticalScrollBar()->parentWidget()->raise();
}

void RecyclingList::setRowCount(int count) {
    auto* const bar = verticalScrollBar();
    const int offset = bar->value();
    const int first = offset / m_rowHeight;
    const std::string firstKey = m_firstKey;
    const auto before = m_current;
    const bool sawCurrent = before && m_inSight.contains(*before);
    m_count = count;
    findCurrentAgain();
    if (!m_current && before && m_count > 0)
        makeCurrent(std::min(*before, m_count - 1));
    updateScrollBar();
    // What was in sight stays where it was; at the top, what comes in front comes into sight.
    if (offset > 0) {
        const int last = sawCurrent ? *before : first;
        const auto now = sawCurrent ? m_current : placeOf(firstKey, first);
        bar->setValue(offset + (now.value_or(last) - last) * m_rowHeight);
    }
    arrange(Fill::AllRows);
}

void RecyclingList::showFound(int count) {
    m_count = count;
    findCurrentAgain();
    updateScrollBar();
    scrollToRow(m_current.value_or(0));
    arrange(Fill::AllRows);
}

void RecyclingList::open(int count, std::optional<int> place) {
    forgetRows(*this);
    m_count = count;
    makeCurrent(place);
    updateScrollBar();
    verticalScrollBar()->setValue(place ? *place * m_rowHeight - (viewport()->height() - m_rowHeight) / 2
                                        : 0);
    arrange(Fill::AllRows);
}

void RecyclingList::setCurrentRow(std::optional<int> place) {
    const auto before = m_current;
    makeCurrent(place);
    if (before == m_current)
        return;
    takeFocusFromRows(0, m_count);
    for (const auto& changed : {before, m_current}) {
        if (changed)
            fillRow(*changed);
    }
    announceCurrentRow(*this, before);
    if (m_current && m_rows.choose)
        m_rows.choose(*m_current);
}

void RecyclingList::makeCurrent(std::optional<int> place) {
    m_current = place;
    m_currentKey = place ? m_rows.key(*place) : std::string_view();
    if (m_rows.currentChanged)
        m_rows.currentChanged();
}

void RecyclingList::findCurrentAgain() {
    m_current = placeOf(m_currentKey, m_current.value_or(0));
}

void RecyclingList::scrollToRow(int place) {
    const int top = place * m_rowHeight;
    auto* const bar = verticalScrollBar();
    if (top < bar->value())
        bar->setValue(top);
    else if (top + m_rowHeight > bar->value() + viewport()->height())
        bar->setValue(top + m_rowHeight - viewport()->height());
}

QWidget* RecyclingList::rowWidget(int place) const {
    const auto found = m_inSight.find(place);
    return found == m_inSight.end() ? nullptr : found->second;
}

QSize RecyclingList::sizeHint() const {
    return {400, 6 * m_rowHeight};
}

QSize RecyclingList::minimumSizeHint() const {
    return {160, m_rowHeight + 2 * frameWidth()};
}

std::optional<int> RecyclingList::placeOf(const QWidget* within) const {
    for (const auto& [place, row] : m_inSight) {
        if (row == within || row->isAncestorOf(within))
            return place;
    }
    return std::nullopt;
}

std::optional<int> RecyclingList::placeOf(std::string_view key, int last) const {
    if (key.empty())
        return std::nullopt;
    if (last < m_count && m_rows.key(last) == key)
        return last;
    for (int place = 0; place < m_count; ++place) {
        if (m_rows.key(place) == key)
            return place;
    }
    return std::nullopt;
}

void RecyclingList::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    updateScrollBar();
    arrange(Fill::NewRows);
}

void RecyclingList::scrollContentsBy(int, int) {
    arrange(Fill::NewRows);
}

void RecyclingList::updateScrollBar() {
    auto* const bar = verticalScrollBar();
    bar->setRange(0, std::max(0, m_count * m_rowHeight - viewport()->height()));
    bar->setSingleStep(m_rowHeight / 2);
    bar->setPageStep(viewport()->height());
}

QWidget* RecyclingList::takeFromPool() {
    if (!m_pool.empty()) {
        QWidget* const row = m_pool.back();
        m_pool.pop_back();
        return row;
    }
    QWidget* const row = m_rows.make();
    row->setParent(viewport());
    row->installEventFilter(this);
    for (auto* const child : row->findChildren<QWidget*>())
        child->installEventFilter(this);
    return row;
}

void RecyclingList::arrange(Fill fill) {
    const int offset = verticalScrollBar()->value();
    const int first = offset / m_rowHeight;
    const int end = std::min(m_count, (offset + viewport()->height() + m_rowHeight - 1) / m_rowHeight);
    // The focus must not travel to another row with the widget that had it. First of all, as it arranges the rows.
    takeFocusFromRows(first, end);
    m_firstKey = first < m_count ? m_rows.key(first) : std::string_view();
    for (auto it = m_inSight.begin(); it != m_inSight.end();) {
        if (it->first >= first && it->first < end) {
            ++it;
            continue;
        }
        m_pool.push_back(it->second);
        it = m_inSight.erase(it);
    }
    for (int place = first; place < end; ++place) {
        auto& row = m_inSight[place];
        const bool isNew = row == nullptr;
        if (isNew)
            row = takeFromPool();
        row->setGeometry(0, place * m_rowHeight - offset, viewport()->width(), m_rowHeight);
        if (isNew || fill == Fill::AllRows)
            fillRow(place);
        if (isNew)
            row->show();
    }
    // Only now, as most are used again at once, which no one needs to hear of as hiding and showing.
    for (auto* const row : m_pool)
        row->hide();
}

void RecyclingList::fillRow(int place) {
    QWidget* const row = rowWidget(place);
    if (row == nullptr)
        return;
    m_rows.fill(*row, place, m_current == place);
    setTabStops(*row, m_current == place);
    announceNameOfRow(*this, place);
}

void RecyclingList::takeFocusFromRows(int first, int end) {
    const auto focused = placeOf(QApplication::focusWidget());
    if (focused && (focused != m_current || *focused < first || *focused >= end))
        setFocus(Qt::OtherFocusReason);
}

void RecyclingList::setTabStops(QWidget& row, bool isCurrent) {
    QWidget* before = this;
    for (auto* const button : row.findChildren<QAbstractButton*>(Qt::FindDirectChildrenOnly)) {
        button->setFocusPolicy(isCurrent ? Qt::TabFocus : Qt::NoFocus);
        if (isCurrent) {
            setTabOrder(before, button);
            before = button;
        }
    }
}

void RecyclingList::moveCurrent(int by) {
    if (m_count == 0)
        return;
    const int place = std::clamp(m_current ? *m_current + by : 0, 0, m_count - 1);
    scrollToRow(place);
    setCurrentRow(place);
}

bool RecyclingList::actOnCurrent(const std::function<void(int place)>& act) {
    // A change may not be shown yet: the row is then at another place, or gone.
    findCurrentAgain();
    if (!m_current || !act)
        return false;
    act(*m_current);
    return true;
}

void RecyclingList::keyPressEvent(QKeyEvent* event) {
    const int page = std::max(1, viewport()->height() / m_rowHeight);
    switch (event->key()) {
    case Qt::Key_Up:
        moveCurrent(-1);
        return;
    case Qt::Key_Down:
        moveCurrent(1);
        return;
    case Qt::Key_PageUp:
        moveCurrent(-page);
        return;
    case Qt::Key_PageDown:
        moveCurrent(page);
        return;
    case Qt::Key_Home:
        moveCurrent(-m_count);
        return;
    case Qt::Key_End:
        moveCurrent(m_count);
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (actOnCurrent(m_rows.activate))
            return;
        break;
    case Qt::Key_Space:
        if (actOnCurrent(m_rows.toggle))
            return;
        break;
    case Qt::Key_Delete:
        if (actOnCurrent(m_rows.remove))
            return;
        break;
    case Qt::Key_F10:
        // The menu key of keyboards that have none.
        if (event->modifiers() == Qt::ShiftModifier) {
            showMenuOfCurrentRow();
            return;
        }
        break;
    default:
        break;
    }
    // What the list has no use for goes on to the window; the base class would take the arrows.
    event->ignore();
}

void RecyclingList::showMenuOfCurrentRow() {
    QWidget* const row = m_current ? rowWidget(*m_current) : nullptr;
    if (row != nullptr && m_rows.showMenu)
        m_rows.showMenu(*m_current, row->mapToGlobal(row->rect().center()));
}

void RecyclingList::contextMenuEvent(QContextMenuEvent* event) {
    if (!m_rows.showMenu)
        return;
    if (event->reason() == QContextMenuEvent::Keyboard) {
        showMenuOfCurrentRow();
        return;
    }
    const int place = (event->pos().y() + verticalScrollBar()->value()) / m_rowHeight;
    if (place < m_count) {
        setCurrentRow(place);
        m_rows.showMenu(place, event->globalPos());
    }
}

void RecyclingList::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    if (!m_current && m_count > 0)
        makeCurrent(std::min(m_count - 1, (verticalScrollBar()->value() + m_rowHeight - 1) / m_rowHeight));
    if (m_current)
        fillRow(*m_current);
    // The toolkit announces the list itself after this, and the row is to be heard last.
    QMetaObject::invokeMethod(
        this, [this] { announceCurrentRow(*this, {}); }, Qt::QueuedConnection);
}

void RecyclingList::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    // Its frame goes with the focus.
    if (QWidget* const row = m_current ? rowWidget(*m_current) : nullptr)
        row->update();
}

bool RecyclingList::eventFilter(QObject* watched, QEvent* event) {
    auto* const widget = qobject_cast<QWidget*>(watched);
    if (widget == nullptr)
        return false;
    const auto place = placeOf(widget);
    if (event->type() == QEvent::MouseButtonPress && place) {
        setCurrentRow(*place);
        m_pressedKey = m_currentKey;
    }
    if (event->type() == QEvent::MouseButtonDblClick && place && *place < m_count &&
        m_rows.key(*place) != m_pressedKey)
        return true;
    // Whose button it is: told when it matters, as a row that is filled anew would have much to tell otherwise.
    if (event->type() == QEvent::FocusIn && place && *place < m_count) {
        const auto name = m_rows.tell(*place).name;
        describe(widget, name != widget->accessibleName() ? name : QString());
    }
    // A row's button has Space and Return for itself, and leaves the rest to the list.
    if (event->type() == QEvent::KeyPress && widget->hasFocus()) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown ||
            key == Qt::Key_Home || key == Qt::Key_End || key == Qt::Key_Delete) {
            setFocus(Qt::OtherFocusReason);
            keyPressEvent(static_cast<QKeyEvent*>(event));
            return true;
        }
    }
    if (event->type() == QEvent::ContextMenu && place && m_rows.showMenu) {
        const auto* const menu = static_cast<QContextMenuEvent*>(event);
        setCurrentRow(*place);
        const QPoint middle = rowWidget(*place)->mapToGlobal(rowWidget(*place)->rect().center());
        m_rows.showMenu(*place, menu->reason() == QContextMenuEvent::Keyboard ? middle : menu->globalPos());
        return true;
    }
    return false;
}

void RecyclingList::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::EnabledChange)
        viewport()->update();
}

} // namespace vantor::ui
