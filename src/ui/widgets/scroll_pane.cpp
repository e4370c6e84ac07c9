#include "ui/widgets/scroll_pane.h"

#include "ui/frame/theme.h"

#include <QApplication>
#include <QEvent>
#include <QLayout>
#include <QScrollBar>
#include <algorithm>

namespace vantor::ui {
namespace {

// How much of its contents, in lines of text, a pane shows however small it becomes.
constexpr int kLeastLines = 6;

} // namespace

ScrollPane::ScrollPane(const char* objectName) : m_contents(new QWidget) {
    setObjectName(QLatin1String(objectName));
    setFrameShape(NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setWidget(m_contents);
    // The window's own ground, with whatever shade it has, stands behind it.
    m_contents->setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
    QObject::connect(qApp, &QApplication::focusChanged, this, [this] { showFocused(); });
    // A line that was just added has the focus before it has its place.
    QObject::connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, [this] { showFocused(); });
}

ScrollPane::~ScrollPane() {
    // The focus leaves the contents when they are deleted, which is after this.
    QObject::disconnect(qApp, nullptr, this, nullptr);
}

bool ScrollPane::canGrow() const {
    return m_contents->layout() != nullptr &&
           m_contents->layout()->expandingDirections().testFlag(Qt::Vertical);
}

int ScrollPane::heightForAll(int width) const {
    const auto* const layout = m_contents->layout();
    if (layout == nullptr)
        return 0;
    // What can grow is content with the least it needs; everything else is to have what it asks for.
    if (!layout->hasHeightForWidth())
        return canGrow() ? layout->minimumSize().height() : layout->sizeHint().height();
    return canGrow() ? layout->minimumHeightForWidth(width) : layout->heightForWidth(width);
}

QSize ScrollPane::sizeHint() const {
    const int width = std::max(m_contents->sizeHint().width(), minimumSizeHint().width());
    return {width, heightForAll(width)};
}

QSize ScrollPane::minimumSizeHint() const {
    const int width = m_contents->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width();
    return {width, std::min(heightForAll(width), kLeastLines * fontMetrics().lineSpacing())};
}

void ScrollPane::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    arrange();
}

bool ScrollPane::eventFilter(QObject* watched, QEvent* event) {
    const bool asksForRoom = watched == m_contents && event->type() == QEvent::LayoutRequest;
    const bool handled = QScrollArea::eventFilter(watched, event);
    if (asksForRoom) {
        arrange();
        updateGeometry();
    }
    return handled;
}

void ScrollPane::arrange() {
    const QSize room = maximumViewportSize();
    const int least = m_contents->minimumSizeHint().width();
    int width = std::max(room.width(), least);
    int needed = heightForAll(width);
    if (needed > room.height()) {
        width = std::max(room.width() - verticalScrollBar()->sizeHint().width(), least);
        needed = heightForAll(width);
    }
    m_contents->resize(width, canGrow() ? std::max(needed, room.height()) : needed);
}

void ScrollPane::showFocused() {
    auto* const focused = QApplication::focusWidget();
    if (focused == nullptr || !m_contents->isAncestorOf(focused))
        return;
    // Of a field the toolkit would show the cursor alone, and cut its edge.
    const QRect place(focused->mapTo(m_contents, QPoint()), focused->size());
    const int around = place.height() / 2 + theme::kStep;
    if (2 * around <= viewport()->height())
        ensureVisible(place.center().x(), place.center().y(), 0, around);
    else
        ensureWidgetVisible(focused, 0, theme::kStep);
}

} // namespace vantor::ui
