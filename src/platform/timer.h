// Timer: calls back on the user-interface thread after a while.
#pragma once

#include <chrono>
#include <functional>

namespace vantor {

class Timer {
public:
    // A timer that goes away does not fire any more.
    virtual ~Timer() = default;

    // Calls `onFire` every `period`, 1 ms to 24 days, until stopped, and never early; starting again forgets
    // what was started before. `onFire` may start and stop the timer, but not destroy it.
    virtual void startRepeating(std::chrono::milliseconds period, std::function<void()> onFire) = 0;
    virtual void startOnce(std::chrono::milliseconds delay, std::function<void()> onFire) = 0;
    virtual void stop() = 0;
};

} // namespace vantor
