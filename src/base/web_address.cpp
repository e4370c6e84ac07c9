#include "base/web_address.h"

#include <algorithm>

namespace vantor {
namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isHexDigit(char c) {
    return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// Letters, digits, `alsoAllowed` and whole percent escapes.
bool holdsOnly(std::string_view text, std::string_view alsoAllowed) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '%') {
            if (text.size() - i < 3 || !isHexDigit(text[i + 1]) || !isHexDigit(text[i + 2]))
                return false;
            i += 2;
        } else if (!isLetter(c) && !isDigit(c) && alsoAllowed.find(c) == std::string_view::npos) {
            return false;
        }
    }
    return true;
}

bool takeIgnoringCase(std::string_view& text, std::string_view lowerCase) {
    const auto lowered = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    if (text.size() < lowerCase.size() || !std::equal(lowerCase.begin(), lowerCase.end(), text.begin(),
                                                      [&](char a, char b) { return a == lowered(b); }))
        return false;
    text.remove_prefix(lowerCase.size());
    return true;
}

// The host of an authority, taken off its front; an address in brackets without them.
std::string_view takeHost(std::string_view& authority) {
    if (authority.starts_with('[')) {
        const auto end = authority.find(']');
        if (end == std::string_view::npos)
            return {};
        const auto host = authority.substr(1, end - 1);
        authority.remove_prefix(end + 1);
        const bool isPlausible = host.find(':') != std::string_view::npos &&
                                 std::all_of(host.begin(), host.end(),
                                             [](char c) { return isHexDigit(c) || c == ':' || c == '.'; });
        return isPlausible ? host : std::string_view();
    }
    const auto host = authority.substr(0, authority.find(':'));
    authority.remove_prefix(host.size());
    return holdsOnly(host, "-._~!$&'()*+,;=") ? host : std::string_view();
}

} // namespace

bool isWebAddress(std::string_view text) {
    static constexpr std::string_view kPathCharacters = "-._~!$&'()*+,;=:@/?";
    if (!takeIgnoringCase(text, "https://") && !takeIgnoringCase(text, "http://"))
        return false;

    auto authority = text.substr(0, text.find_first_of("/?#"));
    text.remove_prefix(authority.size());
    if (takeHost(authority).empty())
        return false;
    if (!authority.empty() && (authority.front() != ':' || authority.size() > 6 ||
                               !std::all_of(authority.begin() + 1, authority.end(), isDigit)))
        return false;

    const auto fragment = text.find('#');
    return holdsOnly(text.substr(0, fragment), kPathCharacters) &&
           (fragment == std::string_view::npos || holdsOnly(text.substr(fragment + 1), kPathCharacters));
}

} // namespace vantor
