#include "base/shown_text.h"
#include "tests/support/table.h"

#include <gtest/gtest.h>

#include <string>

namespace vantor {
namespace {

using testing::TextCase;

std::string isolated(const std::string& text) {
    return "\u2068" + text + "\u2069";
}

TEST(ShownText, IsFitForALine) {
    for (const auto& [name, text, shown] : testing::tableOf(
             TextCase{"Nothing", "", ""}, TextCase{"PlainText", "Set 12 — Søster", "Set 12 — Søster"},
             TextCase{"Markup", "<b>x</b> &amp; &Knop", "<b>x</b> &amp; &Knop"},
             TextCase{"Emoji", "李娜 \U0001F469\u200D\U0001F3A8", "李娜 \U0001F469\u200D\U0001F3A8"},
             TextCase{"Combining", "Zoe\u0301", "Zoe\u0301"}, TextCase{"Tab", "a\tb", "a<U+0009>b"},
             TextCase{"LineFeed", "a\nb", "a<U+000A>b"},
             TextCase{"CarriageReturn", "a\r\nb", "a<U+000D><U+000A>b"},
             TextCase{"Nul", std::string("a\0b", 3), "a<U+0000>b"},
             TextCase{"Escape", "\x1B[31m", "<U+001B>[31m"}, TextCase{"Delete", "a\x7F", "a<U+007F>"},
             TextCase{"C1Control", "a\u0085b\u009F", "a<U+0085>b<U+009F>"},
             TextCase{"LineSeparators", "a\u2028b\u2029c", "a<U+2028>b<U+2029>c"},
             TextCase{"NoBreakSpaceStays", "a\u00A0b", "a\u00A0b"},
             TextCase{"Hebrew", "\u05D0\u05D1", isolated("\u05D0\u05D1")},
             TextCase{"ArabicAmongLatin", "a \u0627 b", isolated("a \u0627 b")},
             TextCase{"ArabicDigits", "\u0661\u0662", isolated("\u0661\u0662")},
             TextCase{"Override", "a\u202Eb", isolated("a\u202Eb")},
             TextCase{"ClosedEmbedding", "\u202Ax\u202C", isolated("\u202Ax\u202C")},
             TextCase{"OpenIsolate", "\u2067x", isolated("\u2067x\u2069")},
             TextCase{"TwoOpenIsolates", "\u2066\u2068x", isolated("\u2066\u2068x\u2069\u2069")},
             TextCase{"ClosedIsolate", "\u2067x\u2069y", isolated("\u2067x\u2069y")},
             TextCase{"StrayPopGoes", "a\u2069b", isolated("ab")},
             TextCase{"StrayPopAmongOthers", "\u2067a\u2069\u2069\u202Eb", isolated("\u2067a\u2069\u202Eb")},
             TextCase{"InvalidBytes", "a\xFF", "a\uFFFD"}))
        EXPECT_EQ(shownText(text), shown) << name;
}

TEST(ShownLines, KeepLineFeedsAndTreatEachLineByItself) {
    EXPECT_EQ(shownLines("SET:\u05D0\nBRAND:a\tb\n"), isolated("SET:\u05D0") + "\nBRAND:a<U+0009>b\n");
    EXPECT_EQ(shownLines("a\rb\u2028c"), "a<U+000D>b<U+2028>c");
    EXPECT_EQ(shownLines(""), "");
    EXPECT_EQ(shownLines("\n"), "\n");
}

} // namespace
} // namespace vantor
