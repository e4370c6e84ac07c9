#include "view/shown_set.h"

#include <gtest/gtest.h>

namespace vantor {
namespace {

SetData make(const std::string& number, const std::string& brand, std::vector<SetItem> items = {}) {
    auto set = SetData::make(Timestamp());
    set.setNumber = number;
    set.brand = brand;
    set.items = std::move(items);
    return set;
}

TEST(ShownSet, OfPlainTextsIsAsItIsToldEverywhereAndShowsControlCharacters) {
    const auto set = make("12", "H&M <b>", {SetItem::make("trui", "blauw"), SetItem::make("pet", "")});
    EXPECT_EQ(shownHeadline(set), set.headline());
    EXPECT_EQ(shownDescription(set), set.description());
    EXPECT_EQ(shownHeadline(make("", "")), "");
    EXPECT_EQ(shownHeadline(make("", "Marvis")), "Marvis");
    EXPECT_EQ(shownDescription(make("", "")), "");
    EXPECT_EQ(shownHeadline(make("1\n2", "a\tb")), "Set 1<U+000A>2 — a<U+0009>b");
    EXPECT_EQ(shownDescription(make("", "", {SetItem::make("a\x1b", "\r")})), "a<U+001B> <U+000D>");
}

TEST(ShownSet, ClosesOffEachTextByItselfAndLetsNoneCloseWhatAnotherOneOpened) {
    const auto set =
        make("1\u202E", "Marvis", {SetItem::make("\u05D0", "rood"), SetItem::make("pet", "\u05D1")});
    EXPECT_EQ(shownHeadline(set), "Set \u20681\u202E\u2069 — Marvis");
    EXPECT_EQ(shownDescription(set), "\u2068\u05D0\u2069 rood, pet \u2068\u05D1\u2069");
    EXPECT_EQ(shownHeadline(make("\u2067a", "b\u2069c")), "Set \u2068\u2067a\u2069\u2069 — \u2068bc\u2069");
}

} // namespace
} // namespace vantor
