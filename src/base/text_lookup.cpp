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

} // namespace vantor
