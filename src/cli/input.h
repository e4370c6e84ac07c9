// Reads the shoot, or the text, that a call works on.
#pragma once

#include "cli/arguments.h"
#include "model/shoot.h"
#include "platform/file_store.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <variant>

namespace vantor::cli {

// CSV is read up to this size, and up to kMostListLines lines; a larger file is no list of sets.
inline constexpr std::uint64_t kMostCsvBytes = std::uint64_t{64} << 20U;

// Why something could not be done, as the user is to read it: the file, the line where there is one, and the reason.
struct Problem {
    std::string text;
};

template <typename Value>
using Outcome = std::variant<Value, Problem>;

// What an input is called in messages; without a path it is the standard input.
[[nodiscard]] std::string nameOf(const std::optional<std::filesystem::path>& path);

// The shoot of a CSV file is named after the file, and its sets stand in the order in which the program's own
// import leaves them. A file without a single usable set is a problem.
[[nodiscard]] Outcome<Shoot> readShootFrom(const Input& input, const FileStore& files);

// A text file, or the standard input where there is no path.
[[nodiscard]] Outcome<std::string> readTextFrom(const std::optional<std::filesystem::path>& path,
                                                const FileStore& files);

} // namespace vantor::cli
