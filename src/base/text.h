// Text helpers: the one place that says what white space, a line break, a letter's case and a character are.
//
// - All texts are UTF-8. Bytes that are not are never a crash: they count as U+FFFD, character by character.
// - White space is the Unicode class Zs and tab. Line breaks are U+000A to U+000D, U+0085, U+2028 and U+2029.
// - A separator counts only where it is a user-perceived character of its own (UAX #29): a semicolon that
//   carries a combining mark is another character.
// - Views returned point into the argument. Case and collation never depend on the machine's locale.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantor {

// Where the first byte stands that begins no valid character; absent when all is valid UTF-8.
[[nodiscard]] std::optional<std::size_t> firstInvalidUtf8(std::string_view bytes);
[[nodiscard]] bool isValidUtf8(std::string_view bytes);

// The code points of a text, and back.
[[nodiscard]] std::u32string characters(std::string_view text);
[[nodiscard]] std::string utf8(std::u32string_view characters);

// Letters that are written from right to left, and the numbers and marks that go with them (bidirectional classes
// R, AL and AN).
[[nodiscard]] bool isRightToLeft(char32_t character);

// Characters that show nothing but act on what stands around them: controls, line and paragraph separators, and those
// that set a direction (Unicode's Bidi_Control).
[[nodiscard]] bool isControl(char32_t character);

// A byte-order mark at the start of a text file is not part of its text.
[[nodiscard]] std::string_view withoutByteOrderMark(std::string_view text);

// The text of a file: its bytes without a byte-order mark. Absent when they are not valid UTF-8.
[[nodiscard]] std::optional<std::string_view> textOfFile(std::string_view bytes);

// Without white space at either end; line breaks stay.
[[nodiscard]] std::string_view trimmed(std::string_view text);

// Without white space and line breaks at either end.
[[nodiscard]] std::string_view trimmedOfLineBreaks(std::string_view text);

// Takes the next line off the front of `rest`; absent when there is none. A line break ends a line, so CR LF
// yields an empty line between the two, and a text that ends in a line break has an empty last line.
class Lines {
public:
    explicit Lines(std::string_view text) : m_rest(text) {}
    [[nodiscard]] std::optional<std::string_view> next();
    // Of the line that next() took last, as editors count them: from 1, and CR LF ends one line.
    [[nodiscard]] std::size_t number() const { return m_number; }

private:
    std::optional<std::string_view> m_rest;
    std::size_t m_number = 0;
    bool m_isBehindReturn = false;
};

// Every line break becomes one space; CR LF is one line break.
[[nodiscard]] std::string onOneLine(std::string_view text);

// Where `separator`, an ASCII character other than a control, next stands as a character of its own, at
// `from` or later; npos when it does not.
[[nodiscard]] std::size_t findCharacter(std::string_view text, char separator, std::size_t from = 0);

// The pieces of a text that is split once, empty pieces dropped and both trimmed: leading separators are
// skipped, the next one ends the first piece, everything behind it is the second.
struct SplitPair {
    std::optional<std::string_view> first;
    std::optional<std::string_view> second;
};
[[nodiscard]] SplitPair splitOnce(std::string_view text, char separator);

// The texts, with `separator` between each two.
[[nodiscard]] std::string joined(const std::vector<std::string>& texts, std::string_view separator);

// Counts user-perceived characters.
[[nodiscard]] std::size_t characterCount(std::string_view text);

// As many whole user-perceived characters of the text as `mostBytes` hold.
[[nodiscard]] std::string_view firstCharacters(std::string_view text, std::size_t mostBytes);

// A text of more than `most` characters (at least 1) becomes its first `most` − 1 and "…".
[[nodiscard]] std::string shortenedTo(std::string_view text, std::size_t most);

[[nodiscard]] std::string lowerCased(std::string_view text);
[[nodiscard]] std::string upperCased(std::string_view text);

// Two texts are equal ignoring case exactly when their folded forms are the same bytes; a text contains
// another ignoring case when its folded form contains the other's. Accents count; composed and decomposed
// spellings of one letter do not differ.
[[nodiscard]] std::string caseFolded(std::string_view text);
[[nodiscard]] bool equalsIgnoringCase(std::string_view a, std::string_view b);

// Dutch collation, ignoring case (CLDR root order at secondary strength).
// Negative, zero or positive as `a` stands before, beside or behind `b`.
[[nodiscard]] int compareNames(std::string_view a, std::string_view b);

// Bytes whose plain order is that of compareNames(): worth making when a text is compared more than a few times.
[[nodiscard]] std::string collationKey(std::string_view text);

} // namespace vantor
