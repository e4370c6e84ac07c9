#include "base/text.h"
#include "tests/support/generators.h"
#include "tests/support/table.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>
#include <unicode/locid.h>

#include <algorithm>
#include <array>
#include <thread>

namespace vantor {
namespace {

using ::testing::ElementsAre;

constexpr std::array<char32_t, 18> kWhiteSpace{0x09,   0x20,   0xA0,   0x1680, 0x2000, 0x2001,
                                               0x2002, 0x2003, 0x2004, 0x2005, 0x2006, 0x2007,
                                               0x2008, 0x2009, 0x200A, 0x202F, 0x205F, 0x3000};
constexpr std::array<char32_t, 7> kLineBreaks{0x0A, 0x0B, 0x0C, 0x0D, 0x85, 0x2028, 0x2029};

template <typename List>
bool holds(const List& list, char32_t c) {
    return std::find(list.begin(), list.end(), c) != list.end();
}

template <typename Visit>
void forEveryCharacter(Visit visit) {
    for (char32_t c = 0; c < 0x110000; ++c) {
        if (c < 0xD800 || c > 0xDFFF)
            visit(c, testing::utf8(c));
    }
}

std::vector<std::string> linesOf(std::string_view text) {
    std::vector<std::string> all;
    Lines lines(text);
    while (const auto line = lines.next())
        all.emplace_back(*line);
    return all;
}

TEST(WhiteSpace, IsSpaceSeparatorsAndTabAndLinesEndAtLineBreaksAndNothingElse) {
    forEveryCharacter([](char32_t c, const std::string& text) {
        const auto around = text + "a" + text;
        const bool isBlank = holds(kWhiteSpace, c);
        const bool isBreak = holds(kLineBreaks, c);
        if (trimmed(around) != (isBlank ? "a" : around) ||
            trimmedOfLineBreaks(around) != (isBlank || isBreak ? "a" : around) ||
            linesOf("a" + text + "b").size() != (isBreak ? 2U : 1U))
            ADD_FAILURE() << "U+" << std::hex << static_cast<unsigned>(c);
    });
}

TEST(Trimmed, LeavesWhiteSpaceInside) {
    EXPECT_EQ(trimmed("\u00A0\t a \u2003b\u3000 "), "a \u2003b");
    EXPECT_EQ(trimmed(" \t\u00A0"), "");
    EXPECT_EQ(trimmed(""), "");
    EXPECT_EQ(trimmed(" \na\n "), "\na\n");
    EXPECT_EQ(trimmedOfLineBreaks(" \r\n a \n\u2028"), "a");
}

TEST(LinesTest, KeepEmptyOnes) {
    EXPECT_THAT(linesOf(""), ElementsAre(""));
    EXPECT_THAT(linesOf("a\n"), ElementsAre("a", ""));
    EXPECT_THAT(linesOf("\n\na"), ElementsAre("", "", "a"));
    EXPECT_THAT(linesOf("a\r\nb"), ElementsAre("a", "", "b"));
}

TEST(OnOneLine, TurnsEveryLineBreakIntoASpace) {
    EXPECT_EQ(onOneLine("a\nb\rc\vd\fe\u0085f\u2028g\u2029h"), "a b c d e f g h");
    EXPECT_EQ(onOneLine("a\r\nb\r\r\n\nc\td"), "a b   c\td");
    EXPECT_EQ(onOneLine("\n"), " ");
    EXPECT_EQ(onOneLine(""), "");
}

TEST(TextOfFile, IsWithoutItsByteOrderMarkAndAbsentWhenTheBytesAreNotUtf8) {
    for (const auto& [bytes, text] :
         {std::pair{"\uFEFFa\uFEFF", "a\uFEFF"}, {"\uFEFF\uFEFFa", "\uFEFFa"}, {"é", "é"}, {"", ""}}) {
        EXPECT_EQ(withoutByteOrderMark(bytes), text);
        EXPECT_EQ(textOfFile(bytes), text);
    }
    EXPECT_EQ(withoutByteOrderMark("\xEF\xBB"), "\xEF\xBB");
    EXPECT_FALSE(textOfFile("caf\xE9"));
    EXPECT_FALSE(textOfFile("\xFF\xFE"
                            "a"));
}

TEST(ValidUtf8, RefusesWhatIsNotTheShortestFormOfACharacter) {
    for (const auto* good : {"", "a", "é", "\u2028", "\U0001F469", "\uFFFF", "\U0010FFFF"})
        EXPECT_TRUE(isValidUtf8(good)) << good;
    EXPECT_TRUE(isValidUtf8(std::string_view("\0", 1)));
    for (const auto* bad :
         {"\x80", "\xC2", "\xC0\x80", "\xC1\xBF", "\xE0\x80\x80", "\xE2\x82", "\xED\xA0\x80",
          "\xF0\x80\x80\x80", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF", "a\xE9z"})
        EXPECT_FALSE(isValidUtf8(bad));
}

TEST(Characters, AreThoseOfTheTextAndMakeItUpAgain) {
    forEveryCharacter([](char32_t c, const std::string& text) {
        ASSERT_EQ(characters(text), std::u32string(1, c));
        ASSERT_EQ(utf8(std::u32string(1, c)), text);
    });
    EXPECT_EQ(utf8(characters("")), "");
    // Those that there are not show as replacements.
    EXPECT_EQ(characters("a\xFFz"), U"a\uFFFDz");
    EXPECT_EQ(characters("\xE2\x82"), U"\uFFFD");
    for (const char32_t none : {0xD800U, 0xDFFFU, 0x110000U, 0xFFFFFFFFU})
        EXPECT_EQ(utf8(std::u32string{U'a', none, U'z'}), "a\uFFFDz");
}

TEST(RightToLeft, AreTheLettersOfSuchScriptsAndTheirNumbers) {
    for (const char32_t c : {U'\u05D0', U'\u0627', U'\u0661', U'\u07CA', U'\u200F', U'\U0001E900'})
        EXPECT_TRUE(isRightToLeft(c)) << static_cast<unsigned>(c);
    for (const char32_t c :
         {U'a', U'1', U' ', U'(', U'\u00E9', U'\u06F1', U'\u200E', U'\u202E', U'\U0001F469'})
        EXPECT_FALSE(isRightToLeft(c)) << static_cast<unsigned>(c);
}

constexpr auto kNowhere = std::string_view::npos;

TEST(FindCharacter, FindsOnlyWhatStandsAlone) {
    struct Found {
        std::string text;
        std::size_t at;
    };
    for (const auto& [text, at] : testing::tableOf(
             Found{"", kNowhere}, Found{"a", kNowhere}, Found{";", 0}, Found{"a;b;", 1}, Found{"é;", 2},
             Found{"a;\u0301b", kNowhere}, Found{"a;\u0301b;c", 5}, Found{"a;\u200Db", kNowhere},
             Found{"a;\uFE0Fb", kNowhere}, Found{"a;\u0903b", kNowhere}, Found{"\u0600;b", kNowhere},
             Found{"\u0600;;", 3}, Found{"\u0301;", 2}, Found{"\u200D;", 3}, Found{"\uFEFF;", 3},
             Found{"\U0001F469;\U0001F469", 4}, Found{"\n;", 1}, Found{";\n", 0}, Found{";\u20E3", kNowhere},
             Found{"\xFF;\xFF", 1}, Found{";\xCC", 0})) {
        SCOPED_TRACE(::testing::PrintToString(text));
        EXPECT_EQ(findCharacter(text, ';'), at);
    }
    // From where it is told to start.
    EXPECT_EQ(findCharacter(";a;", ';', 1), 2U);
    EXPECT_EQ(findCharacter("\u0600;", ';', 2), kNowhere) << "what stands in front of the start still counts";
    EXPECT_EQ(findCharacter(";", ';', 1), kNowhere);
}

// Holds the quick test for a character of its own against the library's own splitting into characters.
RC_GTEST_PROP(TextProperty, SeparatorStandsAloneExactlyWhenItIsACharacterOfItsOwn, ()) {
    const auto before = *testing::text();
    const auto after = *testing::text();
    const auto text = before + ";" + after;
    const bool found = findCharacter(text, ';', before.size()) == before.size();
    const bool alone = characterCount(before) + 1 + characterCount(after) == characterCount(text);
    RC_ASSERT(found == alone);
}

TEST(SplitOnce, DropsEmptyPiecesAndTrimsTheOthers) {
    struct Split {
        std::string text;
        std::optional<std::string> first;
        std::optional<std::string> second;
    };
    for (const auto& [text, first, second] : testing::tableOf(
             Split{"", {}, {}}, Split{":", {}, {}}, Split{"::::", {}, {}}, Split{"a", "a", {}},
             Split{"a:", "a", {}}, Split{":a", "a", {}}, Split{"a:b", "a", "b"}, Split{"::SET:5", "SET", "5"},
             Split{"SET:a:b", "SET", "a:b"}, Split{" a : b ", "a", "b"}, Split{"a::b", "a", ":b"},
             Split{" : b", "", "b"}, Split{"a: ", "a", ""}, Split{"a:\u0301b", "a:\u0301b", {}},
             Split{"a:\u0301b:c", "a:\u0301b", "c"})) {
        SCOPED_TRACE(::testing::PrintToString(text));
        const auto parts = splitOnce(text, ':');
        EXPECT_EQ(parts.first, first);
        EXPECT_EQ(parts.second, second);
    }
}

TEST(Joined, PutsTheSeparatorBetween) {
    EXPECT_EQ(joined({}, ", "), "");
    EXPECT_EQ(joined({"a"}, ", "), "a");
    EXPECT_EQ(joined({"", "b", ""}, ", "), ", b, ");
}

TEST(CharacterCount, CountsWhatAUserSees) {
    EXPECT_EQ(characterCount(""), 0U);
    EXPECT_EQ(characterCount("abc"), 3U);
    EXPECT_EQ(characterCount("e\u0301"), 1U);
    EXPECT_EQ(characterCount("\r\n"), 1U);
    EXPECT_EQ(characterCount("\U0001F469\u200D\U0001F3A8"), 1U);
    EXPECT_EQ(characterCount("\U0001F1F3\U0001F1F1\U0001F1E7\U0001F1EA"), 2U);
}

TEST(ShortenedTo, KeepsWholeCharactersAndSaysThatSomethingIsMissing) {
    EXPECT_EQ(shortenedTo("abc", 3), "abc");
    EXPECT_EQ(shortenedTo("abcd", 3), "ab…");
    EXPECT_EQ(shortenedTo("abcd", 1), "…");
    EXPECT_EQ(shortenedTo("", 1), "");
    EXPECT_EQ(shortenedTo("e\u0301e\u0301e\u0301", 3), "e\u0301e\u0301e\u0301");
    EXPECT_EQ(shortenedTo("e\u0301e\u0301e\u0301e\u0301", 3), "e\u0301e\u0301…");
}

// Has ICU take another locale for the machine's own for a while.
class DefaultLocale {
public:
    explicit DefaultLocale(const char* name) { set(icu::Locale(name)); }
    DefaultLocale(const DefaultLocale&) = delete;
    DefaultLocale& operator=(const DefaultLocale&) = delete;
    ~DefaultLocale() { set(m_before); }

private:
    static void set(const icu::Locale& locale) {
        UErrorCode status = U_ZERO_ERROR;
        icu::Locale::setDefault(locale, status);
        EXPECT_TRUE(U_SUCCESS(status)) << locale.getName();
    }

    icu::Locale m_before = icu::Locale::getDefault();
};

TEST(Case, FollowsUnicodeWhateverTheLocale) {
    for (const auto* name : {"tr_TR", "lt_LT", "nl_NL", "en_US_POSIX"}) {
        const DefaultLocale locale(name);
        EXPECT_EQ(lowerCased("ITEM É"), "item é");
        EXPECT_EQ(upperCased("item é ß"), "ITEM É SS");
        EXPECT_TRUE(equalsIgnoringCase("TITEL É", "titel é"));
    }
}

TEST(EqualsIgnoringCase, MindsAccentsButNotTheirSpelling) {
    EXPECT_TRUE(equalsIgnoringCase("Nike", "nIKE"));
    EXPECT_TRUE(equalsIgnoringCase("Straße", "STRASSE"));
    EXPECT_TRUE(equalsIgnoringCase("é", "E\u0301"));
    EXPECT_TRUE(equalsIgnoringCase("", ""));
    EXPECT_FALSE(equalsIgnoringCase("é", "e"));
    EXPECT_FALSE(equalsIgnoringCase("Nike", "Nike "));
    EXPECT_FALSE(equalsIgnoringCase("ij", "ĳ"));
}

TEST(CompareNames, IgnoresCaseAndMindsAccentsHoweverLongTheyAre) {
    EXPECT_EQ(compareNames("nike", "NIKE"), 0);
    EXPECT_LT(compareNames("A", "b"), 0);
    EXPECT_LT(compareNames("b", "C"), 0);
    EXPECT_LT(compareNames("e", "é"), 0);
    EXPECT_LT(compareNames("é", "f"), 0);
    EXPECT_EQ(compareNames("é", "E\u0301"), 0);
    EXPECT_LT(compareNames("", "a"), 0);
    EXPECT_LT(compareNames("1", "a"), 0);
    const std::string longName(5000, 'a');
    EXPECT_LT(collationKey(longName + "a"), collationKey(longName + "b"));
    EXPECT_EQ(collationKey(longName + "a"), collationKey(longName + "A"));
}

TEST(CompareNames, IsDutchWhateverTheLocale) {
    // In Swedish ä stands behind z, in Lithuanian y beside i, in Danish å behind all.
    const std::vector<std::string> dutch{"appel", "ärm", "ijs", "ink", "yoga", "zon", "Zürich"};
    for (const auto* name : {"sv_SE", "lt_LT", "da_DK", "et_EE"}) {
        const DefaultLocale locale(name);
        auto names = dutch;
        // A thread of its own has made no collator yet.
        std::thread([&] {
            std::ranges::reverse(names);
            std::ranges::sort(names, {}, collationKey);
        }).join();
        EXPECT_EQ(names, dutch) << name;
    }
}

RC_GTEST_PROP(TextProperty, CollationKeysOrderAsNamesCompare, ()) {
    const auto a = *testing::text();
    const auto b = *testing::text();
    RC_ASSERT((collationKey(a) <=> collationKey(b)) == (compareNames(a, b) <=> 0));
}

RC_GTEST_PROP(TextProperty, CaseMakesNoDifferenceToTheFoldedForm, ()) {
    const auto text = *rc::gen::map(rc::gen::container<std::string>(rc::gen::inRange<char>(' ', '~')),
                                    [](const std::string& ascii) { return ascii + "éßŒ"; });
    RC_ASSERT(equalsIgnoringCase(text, upperCased(text)));
    RC_ASSERT(equalsIgnoringCase(text, lowerCased(text)));
}

RC_GTEST_PROP(TextProperty, LinesPutTogetherAgainAreTheText, ()) {
    const auto text = *testing::text();
    std::size_t total = 0;
    for (const auto& line : linesOf(text)) {
        total += line.size();
        for (const auto c : kLineBreaks)
            RC_ASSERT(line.find(testing::utf8(c)) == std::string::npos);
    }
    RC_ASSERT(total <= text.size());
    RC_ASSERT(linesOf(onOneLine(text)).size() == 1U);
}

RC_GTEST_PROP(TextProperty, NoBytesAreACrash, ()) {
    const auto text = *rc::gen::oneOf(testing::bytes(), testing::text());
    RC_ASSERT(trimmed(trimmed(text)) == trimmed(text));
    RC_ASSERT(trimmedOfLineBreaks(text).size() <= trimmed(text).size());
    RC_ASSERT(shortenedTo(text, 3).size() <= std::max(text.size(), text.size() + 3));
    RC_ASSERT(characterCount(text) <= text.size());
    RC_ASSERT(equalsIgnoringCase(text, text));
    RC_ASSERT(compareNames(text, text) == 0);
    RC_ASSERT(collationKey(text) == collationKey(text));
    RC_ASSERT(textOfFile(text).has_value() == isValidUtf8(text));
    static_cast<void>(lowerCased(text));
    static_cast<void>(upperCased(text));
    static_cast<void>(linesOf(text));
    static_cast<void>(splitOnce(text, ':'));
    static_cast<void>(onOneLine(text));
}

} // namespace
} // namespace vantor
