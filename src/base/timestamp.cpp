#include "base/timestamp.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace vantor {
namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year;
using std::chrono::year_month_day;

constexpr sys_days kReference = year{2001} / 1 / 1;
constexpr double kSecondsPerDay = 86400;

// Takes exactly `digits` decimal digits from the front of `text`.
std::optional<int> takeNumber(std::string_view& text, std::size_t digits) {
    if (text.size() < digits)
        return std::nullopt;
    const auto field = text.substr(0, digits);
    if (!std::all_of(field.begin(), field.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return std::nullopt;
    int value = 0;
    std::from_chars(field.data(), field.data() + field.size(), value);
    text.remove_prefix(digits);
    return value;
}

bool take(std::string_view& text, char expected) {
    if (text.empty() || text.front() != expected)
        return false;
    text.remove_prefix(1);
    return true;
}

// Takes ".123" of any length; 0 where there is none, absent when the point has no digit behind it.
std::optional<double> takeFraction(std::string_view& text) {
    if (!take(text, '.'))
        return 0.0;
    double value = 0;
    double unit = 0.1;
    std::size_t count = 0;
    for (; count < text.size() && text[count] >= '0' && text[count] <= '9'; ++count, unit /= 10)
        value += unit * (text[count] - '0');
    text.remove_prefix(count);
    return count > 0 ? std::optional(value) : std::nullopt;
}

// Takes the zone and the end of the text; the result is the offset from UTC in seconds.
std::optional<int> takeZone(std::string_view text) {
    if (text == "Z" || text == "z")
        return 0;
    const bool east = take(text, '+');
    if (!east && !take(text, '-'))
        return std::nullopt;
    const auto hours = takeNumber(text, 2);
    take(text, ':');
    const auto minutes = takeNumber(text, 2);
    if (!hours || !minutes || !text.empty() || *hours > 23 || *minutes > 59)
        return std::nullopt;
    const int offset = *hours * 3600 + *minutes * 60;
    return east ? offset : -offset;
}

} // namespace

Timestamp Timestamp::now() {
    const auto elapsed = std::chrono::system_clock::now() - kReference;
    return {std::chrono::duration<double>(elapsed).count()};
}

std::optional<Timestamp> Timestamp::parseIso8601(std::string_view text) {
    const auto y = takeNumber(text, 4);
    const bool dash1 = take(text, '-');
    const auto mon = takeNumber(text, 2);
    const bool dash2 = take(text, '-');
    const auto d = takeNumber(text, 2);
    const bool t = take(text, 'T') || take(text, 't');
    const auto h = takeNumber(text, 2);
    const bool colon1 = take(text, ':');
    const auto min = takeNumber(text, 2);
    const bool colon2 = take(text, ':');
    const auto s = takeNumber(text, 2);
    if (!y || !dash1 || !mon || !dash2 || !d || !t || !h || !colon1 || !min || !colon2 || !s)
        return std::nullopt;
    const year_month_day date{year{*y}, std::chrono::month(static_cast<unsigned>(*mon)),
                              std::chrono::day(static_cast<unsigned>(*d))};
    if (!date.ok() || *h > 23 || *min > 59 || *s > 60)
        return std::nullopt;
    const auto fraction = takeFraction(text);
    const auto zone = takeZone(text);
    if (!fraction || !zone)
        return std::nullopt;
    const double dayCount = static_cast<double>((sys_days(date) - kReference).count());
    return Timestamp{dayCount * kSecondsPerDay + *h * 3600 + *min * 60 + *s - *zone + *fraction};
}

std::string Timestamp::iso8601() const {
    static constexpr double kFirst =
        static_cast<double>((sys_days(year{0} / 1 / 1) - kReference).count()) * kSecondsPerDay;
    static constexpr double kLast =
        static_cast<double>((sys_days(year{10000} / 1 / 1) - kReference).count()) * kSecondsPerDay - 1;
    // A not-a-number would pass through clamp; comparisons with it are false, so it lands on the first moment.
    const double inside = secondsSinceReference >= kFirst ? std::min(secondsSinceReference, kLast) : kFirst;
    const auto whole = static_cast<std::int64_t>(std::floor(inside));
    const auto dayCount = static_cast<int>(std::floor(static_cast<double>(whole) / kSecondsPerDay));
    const year_month_day date{kReference + days{dayCount}};
    const auto second = static_cast<int>(whole - std::int64_t{dayCount} * 86400);
    std::array<char, 32> buffer{};
    const int length = std::snprintf(buffer.data(), buffer.size(), "%04d-%02u-%02uT%02d:%02d:%02dZ",
                                     int{date.year()}, unsigned{date.month()}, unsigned{date.day()},
                                     second / 3600, second / 60 % 60, second % 60);
    return {buffer.data(), static_cast<std::size_t>(length)};
}

} // namespace vantor
