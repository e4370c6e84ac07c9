// Arguments: what the command line asks for, read and checked before anything is done.
//
// Options may stand before or behind the input; "--option=value" is the same as "--option value", and
// everything behind "--" is a file name.
#pragma once

#include "output/bulk_qr_pdf_exporter.h"

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace vantor::cli {

enum class Format { Csv, ShootFile };

// The format that a file's extension tells, in any case: ".csv", or ".vantor" and ".json".
[[nodiscard]] std::optional<Format> formatOf(const std::filesystem::path& file);

// A file, or the standard input where there is no path.
struct Input {
    std::optional<std::filesystem::path> path;
    Format format = Format::Csv;
};

struct CardsCall {
    Input input;
    std::filesystem::path output;
    BulkQRDensity density = BulkQRDensity::large;
};
struct QrCall {
    Input input;
    std::filesystem::path folder;
};
struct ConvertCall {
    Input input;
    std::filesystem::path output;
    Format format = Format::Csv;
};
struct ListCall {
    Input input;
};
struct ParseCall {
    std::optional<std::filesystem::path> path;
};
struct HelpCall {
    // Empty for the program as a whole.
    std::string_view about;
};
struct VersionCall {};

// What is wrong with the command line, as the user is to read it, and the call that it is about.
struct Misuse {
    std::string problem;
    std::string_view about;
};

using Call = std::variant<CardsCall, QrCall, ConvertCall, ListCall, ParseCall, HelpCall, VersionCall, Misuse>;

// Reads the arguments behind the program's name.
[[nodiscard]] Call readArguments(std::span<const std::string_view> arguments);

// The help on a call, or on the program.
[[nodiscard]] std::string helpText(std::string_view about);

} // namespace vantor::cli
