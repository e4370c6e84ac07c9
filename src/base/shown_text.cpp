#include "base/shown_text.h"

#include "base/text.h"

#include <algorithm>

namespace vantor {
namespace {

constexpr char32_t kFirstStrongIsolate = 0x2068;
constexpr char32_t kPopIsolate = 0x2069;

bool isEmbedding(char32_t c) {
    return c >= 0x202A && c <= 0x202E;
}

bool isIsolate(char32_t c) {
    return c >= 0x2066 && c <= kFirstStrongIsolate;
}

bool isUnseen(char32_t c) {
    return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029;
}

// Its number, in letters that every font has: many lack the pictures that Unicode has of the controls.
std::u32string signOf(char32_t c) {
    constexpr std::u32string_view kDigits = U"0123456789ABCDEF";
    std::u32string sign = U"<U+";
    for (int shift = 12; shift >= 0; shift -= 4)
        sign += kDigits[(c >> shift) & 0xF];
    return sign + U'>';
}

} // namespace

std::string shownText(std::string_view text) {
    std::u32string out;
    bool needsClosing = false;
    int openIsolates = 0;
    for (const char32_t c : characters(text)) {
        if (c == kPopIsolate && openIsolates == 0) {
            // It would end the isolate that is put around the text.
            needsClosing = true;
            continue;
        }
        needsClosing = needsClosing || isEmbedding(c) || isIsolate(c) || isRightToLeft(c);
        openIsolates += isIsolate(c) ? 1 : c == kPopIsolate ? -1 : 0;
        if (isUnseen(c))
            out += signOf(c);
        else
            out += c;
    }
    if (needsClosing) {
        out.append(static_cast<std::size_t>(openIsolates), kPopIsolate);
        out.insert(out.begin(), kFirstStrongIsolate);
        out += kPopIsolate;
    }
    return utf8(out);
}

std::string shownLines(std::string_view text) {
    std::string out;
    for (std::size_t from = 0; from <= text.size();) {
        const auto end = std::min(text.find('\n', from), text.size());
        out += shownText(text.substr(from, end - from));
        if (end < text.size())
            out += '\n';
        from = end + 1;
    }
    return out;
}

} // namespace vantor
