#include "base/local_time.h"

#include <unicode/timezone.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>

namespace vantor {
namespace {

using std::chrono::days;
using std::chrono::floor;
using std::chrono::seconds;
using std::chrono::sys_days;
using std::chrono::sys_seconds;
using std::chrono::year;

constexpr sys_seconds kReference = sys_days(year{2001} / 1 / 1);
constexpr sys_seconds kFirst = sys_days(year{0} / 1 / 1);
constexpr sys_seconds kLast = sys_days(year{10000} / 1 / 1) - seconds(1);

sys_seconds wholeSeconds(Timestamp at) {
    constexpr auto kLeast = static_cast<double>((kFirst - kReference).count());
    constexpr auto kMost = static_cast<double>((kLast - kReference).count());
    // Not a number fails every comparison, and is the first moment.
    const double inside =
        at.secondsSinceReference >= kLeast ? std::min(at.secondsSinceReference, kMost) : kLeast;
    return kReference + seconds(static_cast<std::int64_t>(std::floor(inside)));
}

CalendarTime shownBy(sys_seconds clock) {
    const auto at = std::clamp(clock, kFirst, kLast);
    const auto day = floor<days>(at);
    const auto minutes = std::chrono::duration_cast<std::chrono::minutes>(at - day).count();
    return {day, static_cast<int>(minutes / 60), static_cast<int>(minutes % 60)};
}

} // namespace

CalendarTime utcTime(Timestamp at) {
    return shownBy(wholeSeconds(at));
}

CalendarTime localTime(Timestamp at) {
    const auto utc = wholeSeconds(at);
    const std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createDefault());
    std::int32_t standard = 0;
    std::int32_t summer = 0;
    auto status = U_ZERO_ERROR;
    zone->getOffset(static_cast<double>(utc.time_since_epoch().count()) * 1000, false, standard, summer,
                    status);
    return shownBy(U_SUCCESS(status) ? utc + seconds((standard + summer) / 1000) : utc);
}

} // namespace vantor
