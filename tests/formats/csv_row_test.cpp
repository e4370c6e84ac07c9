#include "formats/csv_row.h"
#include "tests/support/generators.h"
#include "tests/support/table.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

namespace vantor {
namespace {

using ::testing::ElementsAre;
using testing::TextCase;

using Cells = std::vector<std::string>;

TEST(ParseCsvRow, GivesTheCells) {
    struct Row {
        std::string behaviour;
        std::string line;
        Cells cells;
    };
    for (const auto& [behaviour, line, cells] : testing::tableOf(
             Row{"OneEmptyForAnEmptyLine", "", {""}},
             Row{"AsDocumented",
                 "1;Marvis;coated pants/brown, sweater/blue navy;Anna;Studio A",
                 {"1", "Marvis", "coated pants/brown, sweater/blue navy", "Anna", "Studio A"}},
             Row{"EmptyOnesToo", "a;;b;", {"a", "", "b", ""}}, Row{"Trimmed", " a ; b ", {"a", "b"}},
             Row{"SemicolonInsideQuotes", "\"x;y\";z", {"x;y", "z"}},
             Row{"WithoutDoubledQuotes", "\"a\"\"b\"", {"ab"}},
             Row{"QuotesWithinACell", "x\"y;z\"w", {"xy;zw"}},
             Row{"QuoteThatIsNeverClosed", "\"a;b", {"a;b"}}, Row{"TwoEmptyAroundASemicolon", ";", {"", ""}},
             Row{"EmptyForAQuote", "\"", {""}}, Row{"EmptyForTwoQuotes", "\"\"", {""}},
             Row{"SemicolonAlone", "\";\"", {";"}},
             Row{"CommasAndTabsAsTheyStand", "a,b\tc;d", {"a,b\tc", "d"}},
             Row{"TrimmedOfAnyBlanks", "\t\u00A0a\u3000;\u2003", {"a", ""}},
             Row{"TrimmedInsideQuotes", "\" a \";b", {"a", "b"}},
             Row{"SemicolonWithAnAccent", "a;\u0301b;c", {"a;\u0301b", "c"}},
             Row{"SemicolonBehindAPrefix", "a\u0600;b;c", {"a\u0600;b", "c"}},
             Row{"SemicolonWithAJoiner", "a;\u200Db", {"a;\u200Db"}},
             Row{"QuoteWithAnAccent", "\"\u0301a;b\"", {"\"\u0301a", "b"}},
             Row{"QuoteBehindAPrefix", "\u0600\"a;b", {"\u0600\"a", "b"}},
             Row{"QuoteWithAJoiner", "\"a;b\"\u200D;c", {"a;b\"\u200D;c"}}, Row{"Accents", "é;ë", {"é", "ë"}},
             Row{"Emoji", "\U0001F469\u200D\U0001F3A8;b", {"\U0001F469\u200D\U0001F3A8", "b"}},
             Row{"NoUtf8", "\xFF;\xC3", {"\xFF", "\xC3"}},
             Row{"Zeros", std::string("a\0;\0b", 5), {std::string("a\0", 2), std::string("\0b", 2)}}))
        EXPECT_EQ(parseCSVRow(line), cells) << behaviour;
}

TEST(ParseCsvRow, TakesALineOfNothingButSeparators) {
    EXPECT_EQ(parseCSVRow(std::string(1'000'000, ';')).size(), 1'000'001U);
    EXPECT_EQ(parseCSVRow(std::string(1'000'000, '"')).size(), 1U);
}

TEST(QuotedCell, IsQuotedOnlyWhereItNeedsToBe) {
    for (const auto& [behaviour, cell, written] : testing::tableOf(
             TextCase{"Empty", "", ""}, TextCase{"Word", "Nike", "Nike"},
             TextCase{"BlanksAndCommas", " a, b\t", " a, b\t"}, TextCase{"Semicolon", "a;b", "\"a;b\""},
             TextCase{"Quote", "a\"b", "\"a\"\"b\""}, TextCase{"QuoteAlone", "\"", "\"\"\"\""},
             TextCase{"LineFeed", "a\nb", "\"a\nb\""}, TextCase{"CarriageReturn", "a\rb", "a\rb"},
             TextCase{"LineSeparator", "a\u2028b", "a\u2028b"},
             TextCase{"SemicolonWithAnAccent", "a;\u0301b", "a;\u0301b"},
             TextCase{"QuoteWithAnAccent", "a\"\u0301b", "a\"\u0301b"},
             TextCase{"QuoteBehindOneWithAnAccent", "a\"\u0301\"b", "\"a\"\u0301\"\"b\""}))
        EXPECT_EQ(quotedCell(cell), written) << behaviour;
}

TEST(SplitAtCommas, DropsEmptyPiecesAndTrimsTheOthers) {
    EXPECT_THAT(splitAtCommas("red,, blue ,"), ElementsAre("red", "blue"));
    EXPECT_THAT(splitAtCommas(""), ElementsAre());
    EXPECT_THAT(splitAtCommas(" , ,\t,"), ElementsAre());
    EXPECT_THAT(splitAtCommas("a;b"), ElementsAre("a;b"));
    EXPECT_THAT(splitAtCommas("a,\u0301b,c"), ElementsAre("a,\u0301b", "c"));
}

RC_GTEST_PROP(CsvRowProperty, NoBytesAreACrash, ()) {
    const auto line = *rc::gen::oneOf(testing::bytes(), testing::text());
    RC_ASSERT(!parseCSVRow(line).empty());
    static_cast<void>(splitAtCommas(line));
    RC_ASSERT(quotedCell(line).size() >= line.size());
}

} // namespace
} // namespace vantor
