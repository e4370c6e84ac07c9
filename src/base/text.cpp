#include "base/text.h"

#include <unicode/brkiter.h>
#include <unicode/casemap.h>
#include <unicode/coll.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/utext.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstdint>
#include <memory>

// ICU's decoding macros narrow integers and cast on their way.
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wsign-conversion"
#pragma GCC diagnostic ignored "-Wold-style-cast"

namespace vantor {
namespace {

using icu::StringPiece;

bool isAscii(char c) {
    return static_cast<unsigned char>(c) < 0x80;
}

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return isAscii(c); });
}

// ICU counts in 32 bits; longer texts are handled piecewise by the callers or left as they are.
std::int32_t icuLength(std::string_view text) {
    return static_cast<std::int32_t>(std::min<std::size_t>(text.size(), INT32_MAX));
}

StringPiece piece(std::string_view text) {
    return {text.data(), icuLength(text)};
}

// The character that starts at `at`, and how many bytes it takes.
struct Decoded {
    UChar32 character;
    std::size_t length;
};

Decoded decodeAt(std::string_view text, std::size_t at) {
    const auto window = text.substr(at, 4);
    std::int32_t length = 0;
    UChar32 character = 0;
    U8_NEXT_OR_FFFD(window.data(), length, static_cast<std::int32_t>(window.size()), character);
    return {character, static_cast<std::size_t>(length)};
}

Decoded decodeBefore(std::string_view text, std::size_t end) {
    const auto start = end > 4 ? end - 4 : 0;
    const auto window = text.substr(start, end - start);
    auto at = static_cast<std::int32_t>(window.size());
    UChar32 character = 0;
    U8_PREV_OR_FFFD(window.data(), 0, at, character);
    return {character, window.size() - static_cast<std::size_t>(at)};
}

bool isWhiteSpace(UChar32 c) {
    if (c < 0x80)
        return c == ' ' || c == '\t';
    return u_charType(c) == U_SPACE_SEPARATOR;
}

bool isLineBreak(UChar32 c) {
    return (c >= 0x0A && c <= 0x0D) || c == 0x85 || c == 0x2028 || c == 0x2029;
}

template <typename Predicate>
std::string_view trimmedOf(std::string_view text, Predicate isTrimmed) {
    while (!text.empty()) {
        const auto front = decodeAt(text, 0);
        if (!isTrimmed(front.character))
            break;
        text.remove_prefix(front.length);
    }
    while (!text.empty()) {
        const auto back = decodeBefore(text, text.size());
        if (!isTrimmed(back.character))
            break;
        text.remove_suffix(back.length);
    }
    return text;
}

// The first line break at `from` or later.
struct LineBreak {
    std::size_t at;
    std::size_t length;
};

std::optional<LineBreak> findLineBreak(std::string_view text, std::size_t from) {
    for (std::size_t at = from; at < text.size(); ++at) {
        const auto byte = static_cast<unsigned char>(text[at]);
        if (byte >= 0x0A && byte <= 0x0D)
            return LineBreak{at, 1};
        // U+0085 is C2 85; U+2028 and U+2029 are E2 80 A8 and E2 80 A9.
        if (byte == 0xC2 && text.substr(at, 2) == "\xC2\x85")
            return LineBreak{at, 2};
        if (byte == 0xE2 && (text.substr(at, 3) == "\xE2\x80\xA8" || text.substr(at, 3) == "\xE2\x80\xA9"))
            return LineBreak{at, 3};
    }
    return std::nullopt;
}

UGraphemeClusterBreak clusterClass(UChar32 c) {
    return static_cast<UGraphemeClusterBreak>(u_getIntPropertyValue(c, UCHAR_GRAPHEME_CLUSTER_BREAK));
}

// Whether the ASCII character at `at` is a user-perceived character of its own. What could join it to a
// neighbour is known (UAX #29, rules GB9 to GB9b), and nearly every neighbour is ASCII, which never does.
bool standsAlone(std::string_view text, std::size_t at) {
    if (at + 1 < text.size() && !isAscii(text[at + 1])) {
        const auto next = clusterClass(decodeAt(text, at + 1).character);
        if (next == U_GCB_EXTEND || next == U_GCB_ZWJ || next == U_GCB_SPACING_MARK)
            return false;
    }
    if (at > 0 && !isAscii(text[at - 1]) && clusterClass(decodeBefore(text, at).character) == U_GCB_PREPEND)
        return false;
    return true;
}

// A break iterator over `text`; calls `onBoundary` with every boundary behind the start until it returns false.
template <typename OnBoundary>
void forEachCharacterEnd(std::string_view text, OnBoundary onBoundary) {
    UErrorCode status = U_ZERO_ERROR;
    thread_local const std::unique_ptr<icu::BreakIterator> iterator(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    if (!iterator)
        return;
    UText view = UTEXT_INITIALIZER;
    status = U_ZERO_ERROR;
    utext_openUTF8(&view, text.data(), icuLength(text), &status);
    iterator->setText(&view, status);
    if (U_SUCCESS(status)) {
        for (auto end = iterator->next(); end != icu::BreakIterator::DONE; end = iterator->next()) {
            if (!onBoundary(static_cast<std::size_t>(end)))
                break;
        }
    }
    utext_close(&view);
}

std::string normalized(std::string_view text) {
    UErrorCode status = U_ZERO_ERROR;
    const auto* nfc = icu::Normalizer2::getNFCInstance(status);
    if (U_FAILURE(status))
        return std::string(text);
    std::string out;
    icu::StringByteSink<std::string> sink(&out, icuLength(text));
    nfc->normalizeUTF8(0, piece(text), sink, nullptr, status);
    return U_SUCCESS(status) ? out : std::string(text);
}

template <typename Change>
std::string mapped(std::string_view text, Change change) {
    UErrorCode status = U_ZERO_ERROR;
    std::string out;
    icu::StringByteSink<std::string> sink(&out, icuLength(text));
    change(sink, status);
    return U_SUCCESS(status) ? out : std::string(text);
}

void lowerAscii(std::string& text) {
    for (char& c : text)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

const icu::Collator& collator() {
    thread_local const std::unique_ptr<icu::Collator> instance = [] {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<icu::Collator> made(icu::Collator::createInstance(icu::Locale("nl"), status));
        made->setStrength(icu::Collator::SECONDARY);
        return made;
    }();
    return *instance;
}

} // namespace

std::optional<std::size_t> firstInvalidUtf8(std::string_view bytes) {
    std::size_t at = 0;
    while (at < bytes.size()) {
        if (isAscii(bytes[at])) {
            ++at;
            continue;
        }
        const auto window = bytes.substr(at, 4);
        std::int32_t length = 0;
        UChar32 character = 0;
        U8_NEXT(window.data(), length, static_cast<std::int32_t>(window.size()), character);
        if (character < 0)
            return at;
        at += static_cast<std::size_t>(length);
    }
    return std::nullopt;
}

bool isValidUtf8(std::string_view bytes) {
    return !firstInvalidUtf8(bytes);
}

std::u32string characters(std::string_view text) {
    std::u32string out;
    out.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const auto decoded = decodeAt(text, at);
        out += static_cast<char32_t>(decoded.character);
        at += decoded.length;
    }
    return out;
}

std::string utf8(std::u32string_view characters) {
    std::string out;
    out.reserve(characters.size());
    for (const char32_t character : characters) {
        std::array<char, U8_MAX_LENGTH> buffer{};
        std::int32_t length = 0;
        UBool failed = false;
        U8_APPEND(buffer.data(), length, U8_MAX_LENGTH, static_cast<UChar32>(character), failed);
        out += failed ? std::string_view("\uFFFD")
                      : std::string_view(buffer.data(), static_cast<std::size_t>(length));
    }
    return out;
}

bool isControl(char32_t character) {
    const auto code = static_cast<UChar32>(character);
    return (U_GET_GC_MASK(code) & (U_GC_CC_MASK | U_GC_ZL_MASK | U_GC_ZP_MASK)) != 0 ||
           u_hasBinaryProperty(code, UCHAR_BIDI_CONTROL) != 0;
}

bool isRightToLeft(char32_t character) {
    const auto direction = u_charDirection(static_cast<UChar32>(character));
    return direction == U_RIGHT_TO_LEFT || direction == U_RIGHT_TO_LEFT_ARABIC ||
           direction == U_ARABIC_NUMBER;
}

std::string_view withoutByteOrderMark(std::string_view text) {
    static constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(kByteOrderMark))
        text.remove_prefix(kByteOrderMark.size());
    return text;
}

std::optional<std::string_view> textOfFile(std::string_view bytes) {
    if (!isValidUtf8(bytes))
        return std::nullopt;
    return withoutByteOrderMark(bytes);
}

std::string_view trimmed(std::string_view text) {
    return trimmedOf(text, isWhiteSpace);
}

std::string_view trimmedOfLineBreaks(std::string_view text) {
    return trimmedOf(text, [](UChar32 c) { return isWhiteSpace(c) || isLineBreak(c); });
}

std::optional<std::string_view> Lines::next() {
    if (!m_rest)
        return std::nullopt;
    const auto text = *m_rest;
    if (!m_isBehindReturn || !text.starts_with('\n'))
        ++m_number;
    const auto found = findLineBreak(text, 0);
    if (!found) {
        m_rest.reset();
        return text;
    }
    m_isBehindReturn = text[found->at] == '\r';
    m_rest = text.substr(found->at + found->length);
    return text.substr(0, found->at);
}

std::string onOneLine(std::string_view text) {
    std::string out;
    std::size_t from = 0;
    while (const auto found = findLineBreak(text, from)) {
        out.append(text, from, found->at - from);
        const bool secondOfPair = text[found->at] == '\n' && found->at > 0 && text[found->at - 1] == '\r';
        if (!secondOfPair)
            out += ' ';
        from = found->at + found->length;
    }
    out.append(text, from);
    return out;
}

std::size_t findCharacter(std::string_view text, char separator, std::size_t from) {
    for (auto at = text.find(separator, from); at != std::string_view::npos;
         at = text.find(separator, at + 1)) {
        if (standsAlone(text, at))
            return at;
    }
    return std::string_view::npos;
}

SplitPair splitOnce(std::string_view text, char separator) {
    while (findCharacter(text, separator) == 0)
        text.remove_prefix(1);
    if (text.empty())
        return {};
    const auto end = findCharacter(text, separator);
    if (end == std::string_view::npos || end + 1 == text.size())
        return {trimmed(text.substr(0, end)), std::nullopt};
    return {trimmed(text.substr(0, end)), trimmed(text.substr(end + 1))};
}

std::string joined(const std::vector<std::string>& texts, std::string_view separator) {
    std::string out;
    for (const auto& text : texts) {
        if (&text != &texts.front())
            out += separator;
        out += text;
    }
    return out;
}

std::size_t characterCount(std::string_view text) {
    std::size_t count = 0;
    forEachCharacterEnd(text, [&](std::size_t) { return ++count > 0; });
    return count;
}

std::string_view firstCharacters(std::string_view text, std::size_t mostBytes) {
    if (text.size() <= mostBytes)
        return text;
    std::size_t keep = 0;
    forEachCharacterEnd(text, [&](std::size_t end) {
        if (end <= mostBytes)
            keep = end;
        return end < mostBytes;
    });
    return text.substr(0, keep);
}

std::string shortenedTo(std::string_view text, std::size_t most) {
    // A character takes at least a byte, so most texts need no counting at all.
    if (text.size() <= most)
        return std::string(text);
    std::size_t count = 0;
    std::size_t keep = 0;
    forEachCharacterEnd(text, [&](std::size_t end) {
        ++count;
        if (count + 1 == most)
            keep = end;
        return count <= most;
    });
    if (count <= most)
        return std::string(text);
    return std::string(text.substr(0, keep)) + "…";
}

std::string lowerCased(std::string_view text) {
    if (isAscii(text)) {
        std::string out(text);
        lowerAscii(out);
        return out;
    }
    return mapped(text, [&](icu::ByteSink& sink, UErrorCode& status) {
        icu::CaseMap::utf8ToLower("", 0, piece(text), sink, nullptr, status);
    });
}

std::string upperCased(std::string_view text) {
    return mapped(text, [&](icu::ByteSink& sink, UErrorCode& status) {
        icu::CaseMap::utf8ToUpper("", 0, piece(text), sink, nullptr, status);
    });
}

std::string caseFolded(std::string_view text) {
    if (isAscii(text)) {
        std::string out(text);
        lowerAscii(out);
        return out;
    }
    return normalized(mapped(text, [&](icu::ByteSink& sink, UErrorCode& status) {
        icu::CaseMap::utf8Fold(0, piece(text), sink, nullptr, status);
    }));
}

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
    return caseFolded(a) == caseFolded(b);
}

int compareNames(std::string_view a, std::string_view b) {
    UErrorCode status = U_ZERO_ERROR;
    return collator().compareUTF8(piece(a), piece(b), status);
}

std::string collationKey(std::string_view text) {
    const auto wide = icu::UnicodeString::fromUTF8(piece(text));
    std::array<std::uint8_t, 256> small{};
    const auto length = collator().getSortKey(wide, small.data(), static_cast<std::int32_t>(small.size()));
    // The key ends in a zero byte, which says nothing about the order.
    if (static_cast<std::size_t>(length) <= small.size())
        return {reinterpret_cast<const char*>(small.data()), static_cast<std::size_t>(length) - 1};
    std::string key(static_cast<std::size_t>(length), '\0');
    collator().getSortKey(wide, reinterpret_cast<std::uint8_t*>(key.data()), length);
    key.pop_back();
    return key;
}

} // namespace vantor
