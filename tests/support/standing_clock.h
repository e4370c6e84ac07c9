// StandingClock: a clock that shows what it was set to until it is set again.
#pragma once

#include "base/timestamp.h"

#include <memory>

namespace vantor::testing {

class StandingClock {
public:
    explicit StandingClock(Timestamp now = {}) : m_now(std::make_shared<Timestamp>(now)) {}

    void set(Timestamp now) { *m_now = now; }
    [[nodiscard]] Timestamp now() const { return *m_now; }
    // Follows this clock, and may outlive it.
    [[nodiscard]] Clock clock() const {
        return [now = m_now] { return *now; };
    }

private:
    std::shared_ptr<Timestamp> m_now;
};

} // namespace vantor::testing
