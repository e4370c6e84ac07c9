// The file of a restore point: three lines of JSON (JSON Lines): what it is, shoots.json, catalog.json.
//
// Its name is the moment in UTC, "20260314T093000Z.jsonl"; of points of one second the later ones are numbered.
#pragma once

#include "base/timestamp.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vantor {

inline constexpr std::string_view kPointFolder = "versions";
// Where earlier versions of the program kept a copy of each store a day.
inline constexpr std::string_view kDailyCopyFolder = "backups";
// What is enough to read the first line.
inline constexpr std::size_t kMostPointHeadBytes = 65536;

struct PointHead {
    Timestamp at;
    std::string before;
    std::int64_t shoots = 0;
    std::int64_t sets = 0;
    // Tells contents apart.
    std::string checksum;
};

[[nodiscard]] std::string writePoint(const PointHead& head, std::string_view shoots,
                                     std::string_view catalog);
// From the beginning of the file. Absent when there is no whole first line that says what it is.
[[nodiscard]] std::optional<PointHead> readPointHead(std::string_view beginning);

struct PointLines {
    std::string_view shoots;
    std::string_view catalog;
};
// Views into the file's bytes.
[[nodiscard]] std::optional<PointLines> linesOfPoint(std::string_view bytes);

// The day of a copy named "shoots-2026-03-14.json"; empty when the name is not one of a copy.
[[nodiscard]] std::string dayOfCopy(std::string_view name);

// "20260314T093000Z"
[[nodiscard]] std::string compactTime(Timestamp at);
// Absent when the text does not begin with one.
[[nodiscard]] std::optional<Timestamp> timeOfName(std::string_view name);
// Whether the point named `a` was made after the one named `b`.
[[nodiscard]] bool isNewerPoint(std::string_view a, std::string_view b);

} // namespace vantor
