#include "cli/console.h"

#include <cstdio>
#include <string>

namespace vantor::cli {
namespace {

// The text with what `substitute` makes of each control character that a terminal would obey.
template <typename Substitute>
std::string harmless(std::string_view text, Substitute substitute) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        // U+0080 to U+009F, which some terminals obey as well, are C2 80 to C2 9F.
        const auto second =
            static_cast<unsigned char>(byte == 0xC2 && i + 1 < text.size() ? text[i + 1] : '\xFF');
        if (second < 0xA0) {
            out += substitute(second);
            ++i;
        } else if ((byte < 0x20 && byte != '\t' && byte != '\n') || byte == 0x7F) {
            out += substitute(byte);
        } else {
            out += text[i];
        }
    }
    return out;
}

std::string harmlessLine(std::string_view text) {
    return harmless(text, [](unsigned char) { return "\uFFFD"; });
}

} // namespace

void Console::collect(std::string_view text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size())
        m_failed = true;
}

void Console::print(std::string_view text) {
    collect(harmlessLine(text));
}

void Console::printJson(std::string_view json) {
    // Outside its texts JSON holds no such characters.
    collect(harmless(json, [](unsigned char control) {
        static constexpr std::string_view kDigits = "0123456789ABCDEF";
        return std::string("\\u00") + kDigits[control >> 4U] + kDigits[control & 0xFU];
    }));
}

bool Console::flush() {
    return std::fflush(stdout) == 0 && !m_failed;
}

void Console::complain(std::string_view line) {
    endProgress();
    std::fputs(("vantor-prep-cli: " + harmlessLine(line) + "\n").c_str(), stderr);
}

void Console::showProgress(std::string_view words) {
    if (!m_showsProgress)
        return;
    std::fputs(("\r" + std::string(words)).c_str(), stderr);
    std::fflush(stderr);
    m_progressShown = true;
}

void Console::endProgress() {
    if (m_progressShown)
        std::fputs("\r\033[K", stderr);
    m_progressShown = false;
}

} // namespace vantor::cli
