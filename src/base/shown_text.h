// What came from outside, made fit to stand in a line on screen.
#pragma once

#include <string>
#include <string_view>

namespace vantor {

// The text with a visible sign ("<U+0009>") for every control character and line break, and closed off where it holds right-to-left letters
// or directional controls (Unicode FSI … PDI, UAX #9), so that it cannot reorder the texts around it. Any other
// text is unchanged.
[[nodiscard]] std::string shownText(std::string_view text);

// The same for a text of several lines: line feeds stay, each line is treated by itself.
[[nodiscard]] std::string shownLines(std::string_view text);

} // namespace vantor
