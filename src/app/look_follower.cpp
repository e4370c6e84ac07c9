#include "app/look_follower.h"

#include <QApplication>
#include <QEvent>
#include <QPalette>
#include <utility>

namespace vantor {
namespace {

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

} // namespace

LookFollower::LookFollower(DesktopSettings& desktop, std::string environment,
                           std::function<void(const Look&)> apply)
    : m_desktop(desktop),
      m_environment(std::move(environment)),
      m_apply(std::move(apply)),
      m_platformIsDark(isDark(QApplication::palette())),
      m_subscription(desktop.didChange().connect([this] { schedule(); })) {
    update();
    qApp->installEventFilter(this);
}

bool LookFollower::eventFilter(QObject*, QEvent* event) {
    // Comes to each window, and also where the palette that the program has set hides that the platform's is another.
    if (event->type() == QEvent::ThemeChange) {
        m_themeHasChanged = true;
        schedule();
    }
    return false;
}

void LookFollower::schedule() {
    QMetaObject::invokeMethod(
        this, [this] { update(); }, Qt::QueuedConnection);
}

void LookFollower::update() {
    if (std::exchange(m_themeHasChanged, false)) {
        // The toolkit tells the platform's palette only where no other one is set.
        QApplication::setPalette(QPalette());
        m_platformIsDark = isDark(QApplication::palette());
        m_applied.reset();
    }
    const auto look = wantedLook(m_desktop.look(), m_environment, m_platformIsDark);
    if (m_applied == look)
        return;
    m_applied = look;
    m_apply(look);
}

} // namespace vantor
