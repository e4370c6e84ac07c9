// Timestamp: an absolute point in time with sub-second precision.
//
// - Counted in seconds since the reference date 2001-01-01T00:00:00Z, negative before it; the stores write
//   this number as it stands, so it is kept as read, to the last bit.
// - The other text form is ISO 8601 in UTC with whole seconds, "2026-03-14T09:30:00Z", rounded down.
// - Knows neither time zones nor locales.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace vantor {

struct Timestamp {
    double secondsSinceReference = 0;

    [[nodiscard]] static Timestamp now();

    // Reads "YYYY-MM-DDThh:mm:ss", an optional fraction, and "Z" or an offset ("+hh:mm", "-hhmm").
    // Absent for anything else, and for dates that no calendar holds.
    [[nodiscard]] static std::optional<Timestamp> parseIso8601(std::string_view text);

    // Moments outside the years 0000 to 9999, which the form cannot write, become the nearest one inside.
    [[nodiscard]] std::string iso8601() const;

    // To the last bit of the number, as it is stored.
    friend bool operator==(const Timestamp&, const Timestamp&) = default;
};

// Tells the present moment; what needs the time is given one, so that tests can stand still.
using Clock = std::function<Timestamp()>;

} // namespace vantor
