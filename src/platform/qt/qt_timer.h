// QtTimer: a Timer on the toolkit's event loop.
//
// Fires to the millisecond: the toolkit's usual timers may come some minutes early in hours, and a check for
// a newer version that comes too early is left out.
#pragma once

#include "platform/timer.h"

#include <QTimer>

namespace vantor {

class QtTimer final : public Timer {
public:
    QtTimer();

    void startRepeating(std::chrono::milliseconds period, std::function<void()> onFire) override;
    void startOnce(std::chrono::milliseconds delay, std::function<void()> onFire) override;
    void stop() override;

private:
    void start(std::chrono::milliseconds interval, bool once, std::function<void()> onFire);

    QTimer m_timer;
    std::function<void()> m_onFire;
};

} // namespace vantor
