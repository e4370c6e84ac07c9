#include "platform/qt/qt_timer.h"

#include <utility>

namespace vantor {

QtTimer::QtTimer() {
    m_timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
        // A copy, as it may start the timer anew with another one.
        const auto onFire = m_onFire;
        onFire();
    });
}

void QtTimer::startRepeating(std::chrono::milliseconds period, std::function<void()> onFire) {
    start(period, false, std::move(onFire));
}

void QtTimer::startOnce(std::chrono::milliseconds delay, std::function<void()> onFire) {
    start(delay, true, std::move(onFire));
}

void QtTimer::stop() {
    m_timer.stop();
}

void QtTimer::start(std::chrono::milliseconds interval, bool once, std::function<void()> onFire) {
    m_onFire = std::move(onFire);
    m_timer.setSingleShot(once);
    m_timer.start(interval);
}

} // namespace vantor
