// One row of semicolon-separated text: found, split and written.
//
// Reading knows quotes but no escape for them: a quote switches "inside quotes" on or off and is dropped.
// Writing doubles quotes, so a value that holds one does not survive a round trip.
#pragma once

#include "base/text.h"

#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantor {

// The next line that holds more than white space; itself untrimmed.
[[nodiscard]] std::optional<std::string_view> nextFilledLine(Lines& lines);

// The cells of one line, trimmed; at least one. A semicolon inside quotes belongs to its cell, and quotes may
// stand anywhere; one that is never closed takes the rest of the line.
// Stops after `mostCells`, at least 1; what stands behind them is no cell.
[[nodiscard]] std::vector<std::string>
parseCSVRow(std::string_view line, std::size_t mostCells = std::numeric_limits<std::size_t>::max());

// The cell as it is to be written: in quotes, inner ones doubled, if it holds a semicolon, a quote or a line feed.
[[nodiscard]] std::string quotedCell(std::string_view cell);

// The non-empty pieces between commas, each trimmed.
[[nodiscard]] std::vector<std::string> splitAtCommas(std::string_view text);

} // namespace vantor
