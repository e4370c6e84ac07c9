// CalendarTime: a moment as a calendar and a clock show it.
//
// Moments outside the years 0000 to 9999 become the nearest one inside.
#pragma once

#include "base/timestamp.h"

#include <chrono>

namespace vantor {

struct CalendarTime {
    std::chrono::year_month_day day;
    int hour = 0;
    int minute = 0;
};

[[nodiscard]] CalendarTime utcTime(Timestamp at);
// Where this computer says that it is, with summer time; a zone that is changed counts from the next start on.
[[nodiscard]] CalendarTime localTime(Timestamp at);

} // namespace vantor
