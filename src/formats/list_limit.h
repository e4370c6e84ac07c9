// How long a list of sets or of products may be where a person hands one over.
//
// The readers themselves refuse nothing; windows and command line count first, and say why they refuse. No shoot comes
// near the limit, and a list beyond it would take gigabytes of memory and minutes.
#pragma once

#include <cstddef>
#include <string_view>

namespace vantor {

inline constexpr std::size_t kMostListLines = 100'000;

// The lines that readSetCSV() and readCatalogCSV() look at, the header among them: those that hold more than white space.
[[nodiscard]] std::size_t lineCount(std::string_view text);

} // namespace vantor
