#include "base/file_address.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace vantor {
namespace {

bool startsWithIgnoringCase(std::string_view text, std::string_view lowerCase) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return text.size() >= lowerCase.size() &&
           std::ranges::equal(text.substr(0, lowerCase.size()), lowerCase, {}, lower);
}

std::string percentDecoded(std::string_view text) {
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned value = 0;
        const auto* const end = text.data() + std::min(i + 3, text.size());
        if (text[i] == '%' && i + 2 < text.size() &&
            std::from_chars(text.data() + i + 1, end, value, 16).ptr == end) {
            decoded += static_cast<char>(value);
            i += 2;
        } else {
            decoded += text[i];
        }
    }
    return decoded;
}

} // namespace

std::optional<std::filesystem::path> fileOfAddress(std::string_view address) {
    constexpr std::string_view kScheme = "file:";
    constexpr std::string_view kThisMachine = "localhost";
    if (!startsWithIgnoringCase(address, kScheme))
        return std::nullopt;
    address.remove_prefix(kScheme.size());
    if (address.starts_with("//")) {
        address.remove_prefix(2);
        if (startsWithIgnoringCase(address, kThisMachine))
            address.remove_prefix(kThisMachine.size());
    }
    if (!address.starts_with('/'))
        return std::nullopt;
    auto path = percentDecoded(address);
    if (path.find('\0') != std::string::npos)
        return std::nullopt;
    return std::filesystem::path(std::move(path));
}

std::vector<std::filesystem::path> filesOfAddressList(std::string_view list) {
    std::vector<std::filesystem::path> files;
    while (!list.empty()) {
        const auto end = std::min(list.find_first_of("\r\n"), list.size());
        if (auto file = fileOfAddress(list.substr(0, end)))
            files.push_back(std::move(*file));
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return files;
}

} // namespace vantor
