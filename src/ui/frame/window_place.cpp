#include "ui/frame/window_place.h"

#include <QEvent>
#include <QScreen>
#include <charconv>

namespace vantor::ui {
namespace {

// What the frame of a window takes that has none yet. Title bars are seldom higher.
constexpr QSize kUsualFrame{10, 40};
constexpr const char* kPlaceName = "windowPlace";

// A window that is not shown yet is to stand over its parent, and is framed like it.
const QWidget& shownOf(const QWidget& window) {
    const auto* const parent = window.parentWidget();
    return window.isVisible() || parent == nullptr ? window : *parent->window();
}

std::string sizeKey(const QWidget& window) {
    return "vantorprep.windowSize." + window.objectName().toStdString();
}

void fitScreen(QWidget& window) {
    allowForScreen(window);
    if (window.windowState().testAnyFlags(Qt::WindowMaximized | Qt::WindowFullScreen))
        return;
    window.resize(window.size().boundedTo(roomOnScreen(window)));
    if (window.testAttribute(Qt::WA_Moved))
        moveOntoScreen(window);
}

} // namespace

QSize roomOnScreen(const QWidget& window) {
    const auto& shown = shownOf(window);
    const QSize frame = (shown.frameSize() - shown.size()).expandedTo(kUsualFrame);
    return shown.screen()->availableSize() - frame;
}

void moveOntoScreen(QWidget& window) {
    const QRect room = window.screen()->availableGeometry();
    const QRect place = window.frameGeometry();
    const QPoint to(std::max(room.x(), std::min(place.x(), room.right() + 1 - place.width())),
                    std::max(room.y(), std::min(place.y(), room.bottom() + 1 - place.height())));
    if (to != place.topLeft())
        window.move(to);
}

void allowForScreen(QWidget& window) {
    const QSize room = roomOnScreen(window);
    // Only what is too much: a size that is set is the window's, whatever its contents need later.
    if (window.minimumWidth() > room.width())
        window.setMinimumWidth(room.width());
    if (window.minimumHeight() > room.height())
        window.setMinimumHeight(room.height());
}

std::optional<QSize> rememberedSize(const QWidget& window) {
    const auto* const store = WindowPlace::storeFor(window);
    const auto text = store != nullptr ? store->text(sizeKey(window)) : std::nullopt;
    if (!text)
        return std::nullopt;
    QSize size;
    const char* const end = text->data() + text->size();
    const auto width = std::from_chars(text->data(), end, size.rwidth());
    if (width.ec != std::errc() || width.ptr == end ||
        std::from_chars(width.ptr + 1, end, size.rheight()).ec != std::errc())
        return std::nullopt;
    return size;
}

void rememberSize(const QWidget& window, const QSize& size) {
    if (auto* const store = WindowPlace::storeFor(window))
        store->setText(sizeKey(window), std::to_string(size.width()) + "x" + std::to_string(size.height()));
}

WindowPlace::WindowPlace(QWidget* window, KeyValueStore& store, const QSize& defaultSize)
    : QObject(window),
      m_window(window),
      m_store(store),
      m_key("vantorprep.windowPlace." + window->objectName().toStdString()) {
    setObjectName(QLatin1String(kPlaceName));
    window->resize(defaultSize);
    if (const auto place = m_store.text(m_key))
        window->restoreGeometry(QByteArray::fromBase64(QByteArray::fromStdString(*place)));
    window->installEventFilter(this);
}

KeyValueStore* WindowPlace::storeFor(const QWidget& window) {
    for (const auto* each = &window; each != nullptr; each = each->parentWidget()) {
        if (auto* const place =
                each->findChild<QObject*>(QLatin1String(kPlaceName), Qt::FindDirectChildrenOnly))
            return &static_cast<WindowPlace*>(place)->m_store;
    }
    return nullptr;
}

bool WindowPlace::eventFilter(QObject*, QEvent* event) {
    if (event->type() == QEvent::Show && !event->spontaneous())
        fitScreen(*m_window);
    if (event->type() == QEvent::Close)
        m_store.setText(m_key, m_window->saveGeometry().toBase64().toStdString());
    return false;
}

} // namespace vantor::ui
