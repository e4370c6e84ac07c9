// StartArguments: what the program was started to do.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace vantor {

struct StartArguments {
    enum class Wish { Run, Help, Version, UnknownOption };

    Wish wish = Wish::Run;
    // Absolute, of any bytes, in the order in which they were named.
    std::vector<std::filesystem::path> files;
    // The one that is not known.
    std::string option;
};

// Reads the arguments without the program's own name. A file is named as a path, relative to `folder` unless it is
// absolute, or as a file address. What stands behind "--" is a file, whatever it looks like; "-" alone is one too.
[[nodiscard]] StartArguments readStartArguments(const std::vector<std::string_view>& arguments,
                                                const std::filesystem::path& folder);

// What --help prints.
[[nodiscard]] std::string helpText();

} // namespace vantor
