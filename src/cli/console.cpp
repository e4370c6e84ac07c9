#include "cli/console.h"

#include <cstdio>
#include <string>

namespace vantor::cli {
namespace {

std::string harmless(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        // U+0080 to U+009F, which some terminals obey as well, are C2 80 to C2 9F.
        const bool c1 = byte == 0xC2 && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) < 0xA0;
        if (c1)
            ++i;
        if (c1 || (byte < 0x20 && byte != '\t' && byte != '\n') || byte == 0x7F)
            out += "\uFFFD";
        else
            out += text[i];
    }
    return out;
}

} // namespace

void Console::print(std::string_view text) {
    const auto shown = harmless(text);
    if (std::fwrite(shown.data(), 1, shown.size(), stdout) != shown.size())
        m_failed = true;
}

bool Console::flush() {
    return std::fflush(stdout) == 0 && !m_failed;
}

void Console::complain(std::string_view line) {
    endProgress();
    std::fputs(("vantor-prep-cli: " + harmless(line) + "\n").c_str(), stderr);
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
