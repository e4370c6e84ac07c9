// What a text becomes in the name of a file.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vantor {

// The text without what no file system takes: "-" for "/" and zero bytes, and no more whole characters than leave room
// for `furtherBytes` of the same name, such as its extension. All else stands as it is.
[[nodiscard]] std::string fileNamePart(std::string_view text, std::size_t furtherBytes);

} // namespace vantor
