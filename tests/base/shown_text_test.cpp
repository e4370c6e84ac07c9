#include "base/shown_text.h"
#include "tests/support/table.h"

#include <gtest/gtest.h>

#include <string>

namespace vantor {
namespace {

std::string isolated(const std::string& text) {
    return "\u2068" + text + "\u2069";
}

TEST(ShownText, IsFitForALine) {
    struct Case {
        const char* name;
        std::string text;
        std::string shown;
    };
    for (const auto& [name, text, shown] : testing::tableOf(
             Case{"Nothing", "", ""}, Case{"PlainText", "Set 12 — Søster", "Set 12 — Søster"},
             Case{"Markup", "<b>x</b> &amp; &Knop", "<b>x</b> &amp; &Knop"},
             Case{"Emoji", "李娜 \U0001F469\u200D\U0001F3A8", "李娜 \U0001F469\u200D\U0001F3A8"},
             Case{"Combining", "Zoe\u0301", "Zoe\u0301"}, Case{"Tab", "a\tb", "a<U+0009>b"},
             Case{"LineFeed", "a\nb", "a<U+000A>b"}, Case{"CarriageReturn", "a\r\nb", "a<U+000D><U+000A>b"},
             Case{"Nul", std::string("a\0b", 3), "a<U+0000>b"}, Case{"Escape", "\x1B[31m", "<U+001B>[31m"},
             Case{"Delete", "a\x7F", "a<U+007F>"}, Case{"C1Control", "a\u0085b\u009F", "a<U+0085>b<U+009F>"},
             Case{"LineSeparators", "a\u2028b\u2029c", "a<U+2028>b<U+2029>c"},
             Case{"NoBreakSpaceStays", "a\u00A0b", "a\u00A0b"},
             Case{"Hebrew", "\u05D0\u05D1", isolated("\u05D0\u05D1")},
             Case{"ArabicAmongLatin", "a \u0627 b", isolated("a \u0627 b")},
             Case{"ArabicDigits", "\u0661\u0662", isolated("\u0661\u0662")},
             Case{"Override", "a\u202Eb", isolated("a\u202Eb")},
             Case{"ClosedEmbedding", "\u202Ax\u202C", isolated("\u202Ax\u202C")},
             Case{"OpenIsolate", "\u2067x", isolated("\u2067x\u2069")},
             Case{"TwoOpenIsolates", "\u2066\u2068x", isolated("\u2066\u2068x\u2069\u2069")},
             Case{"ClosedIsolate", "\u2067x\u2069y", isolated("\u2067x\u2069y")},
             Case{"StrayPopGoes", "a\u2069b", isolated("ab")},
             Case{"StrayPopAmongOthers", "\u2067a\u2069\u2069\u202Eb", isolated("\u2067a\u2069\u202Eb")},
             Case{"InvalidBytes", "a\xFF", "a\uFFFD"})) {
        SCOPED_TRACE(name);
        EXPECT_EQ(shownText(text), shown);
    }
}

TEST(ShownLines, KeepLineFeedsAndTreatEachLineByItself) {
    EXPECT_EQ(shownLines("SET:\u05D0\nBRAND:a\tb\n"), isolated("SET:\u05D0") + "\nBRAND:a<U+0009>b\n");
    EXPECT_EQ(shownLines("a\rb\u2028c"), "a<U+000D>b<U+2028>c");
    EXPECT_EQ(shownLines(""), "");
    EXPECT_EQ(shownLines("\n"), "\n");
}

} // namespace
} // namespace vantor
