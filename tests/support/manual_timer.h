// ManualTimer: a Timer that fires when it is told to.
#pragma once

#include "platform/timer.h"

#include <chrono>
#include <functional>
#include <optional>
#include <utility>

namespace vantor::testing {

class ManualTimer final : public Timer {
public:
    void startRepeating(std::chrono::milliseconds period, std::function<void()> onFire) override {
        ++starts;
        repeating = true;
        interval = period;
        m_onFire = std::move(onFire);
    }
    void startOnce(std::chrono::milliseconds delay, std::function<void()> onFire) override {
        ++starts;
        repeating = false;
        interval = delay;
        m_onFire = std::move(onFire);
    }
    void stop() override {
        interval.reset();
        m_onFire = nullptr;
    }

    // Does nothing while the timer does not run.
    void fire() {
        const auto onFire = m_onFire;
        if (!repeating)
            stop();
        if (onFire)
            onFire();
    }

    int starts = 0;
    bool repeating = false;
    // Absent while it does not run.
    std::optional<std::chrono::milliseconds> interval;

private:
    std::function<void()> m_onFire;
};

} // namespace vantor::testing
