#include "base/text_lookup.h"

#include <utility>

namespace vantor {
namespace {

TextLookup& installedLookup() {
    static TextLookup lookup;
    return lookup;
}

} // namespace

void setTextLookup(TextLookup lookup) {
    installedLookup() = std::move(lookup);
}

std::string lookUp(std::string_view dutch) {
    return installedLookup() ? installedLookup()(dutch) : std::string(dutch);
}

std::string lookUp(std::string_view dutch, std::initializer_list<std::string_view> values) {
    const auto text = lookUp(dutch);
    std::string filled;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto place =
            text[i] == '%' && i + 1 < text.size() ? static_cast<std::size_t>(text[i + 1] - '1') : 9;
        if (place < values.size()) {
            filled += values.begin()[place];
            ++i;
        } else {
            filled += text[i];
        }
    }
    return filled;
}

} // namespace vantor
