#include "base/file_name.h"

#include "base/text.h"

#include <algorithm>

namespace vantor {

std::string fileNamePart(std::string_view text, std::size_t furtherBytes) {
    static constexpr std::size_t kMostBytes = 255;
    std::string name(firstCharacters(text, kMostBytes - std::min(furtherBytes, kMostBytes)));
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c == '/' || c == '\0'; }, '-');
    return name;
}

} // namespace vantor
