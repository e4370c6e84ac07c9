#include "base/local_time.h"
#include "tests/support/environment_variable.h"

#include <gtest/gtest.h>

#include <limits>

namespace vantor::testing {
namespace {

// Before anything asks where it is.
const EnvironmentVariable kZone("TZ", "Europe/Amsterdam");

std::string written(const CalendarTime& time) {
    const auto date = std::to_string(static_cast<int>(time.day.year())) + "-" +
                      std::to_string(static_cast<unsigned>(time.day.month())) + "-" +
                      std::to_string(static_cast<unsigned>(time.day.day()));
    return date + " " + std::to_string(time.hour) + ":" + std::to_string(time.minute);
}

TEST(CalendarTime, IsThatOfTheZoneWithItsSummerTime) {
    struct Case {
        const char* moment;
        const char* utc;
        const char* local;
    };
    for (const auto& [moment, utc, local] :
         {Case{"2026-01-31T13:32:59Z", "2026-1-31 13:32", "2026-1-31 14:32"},
          Case{"2026-07-31T13:32:00Z", "2026-7-31 13:32", "2026-7-31 15:32"},
          // Another day, month and year.
          Case{"2025-12-31T23:05:00Z", "2025-12-31 23:5", "2026-1-1 0:5"},
          // The hour that summer time leaves out.
          Case{"2026-03-29T00:59:59Z", "2026-3-29 0:59", "2026-3-29 1:59"},
          Case{"2026-03-29T01:00:00Z", "2026-3-29 1:0", "2026-3-29 3:0"},
          Case{"1999-12-31T12:00:00Z", "1999-12-31 12:0", "1999-12-31 13:0"}}) {
        const auto at = Timestamp::parseIso8601(moment);
        ASSERT_TRUE(at) << moment;
        EXPECT_EQ(written(utcTime(*at)), utc) << moment;
        EXPECT_EQ(written(localTime(*at)), local) << moment;
    }
}

TEST(CalendarTime, StaysWithinTheYearsOfFourDigits) {
    for (const double first :
         {-1e300, -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()})
        EXPECT_EQ(static_cast<int>(localTime({first}).day.year()), 0) << first;
    for (const double last : {1e300, std::numeric_limits<double>::infinity()})
        EXPECT_EQ(written(localTime({last})), "9999-12-31 23:59") << last;
}

} // namespace
} // namespace vantor::testing
