#include "view/item_pairs.h"

#include <gmock/gmock.h>

namespace vantor {
namespace {

using ::testing::ElementsAre;

TEST(ItemsOf, DropsPairsWithoutANameAndKeepsTheRestAsTypedEachWithAnIdOfItsOwn) {
    const ItemPairs typed{{"", "red"}, {" b ", " "}, {"", ""}, {"cap", ""}, {" b ", " "}, {" ", ""}};
    const auto items = itemsOf(typed);
    EXPECT_THAT(pairsOf(items), ElementsAre(typed[1], typed[3], typed[4], typed[5]));
    EXPECT_NE(items[0].id, items[2].id);
    EXPECT_NE(items[0].id, itemsOf(typed)[0].id);
}

TEST(PairsOf, AreTheItemsAsTheyStandOrOneBlankLine) {
    EXPECT_THAT(pairsOf({}), ElementsAre(ItemPair{}));
    EXPECT_THAT(pairsOf({SetItem::make("", "red"), SetItem::make("cap", "")}),
                ElementsAre(ItemPair{"", "red"}, ItemPair{"cap", ""}));
}

TEST(AddCatalogItem, FillsTheOneUntouchedLineOrAppends) {
    const ItemPair cap{"cap", "red"};
    struct Case {
        const char* what;
        ItemPairs before;
        ItemPairs after;
    };
    for (const auto& [what, before, after] :
         {Case{"untouched", {{}}, {cap}}, Case{"empty", {}, {cap}}, Case{"the same again", {cap}, {cap, cap}},
          Case{"only a colour", {{"", "red"}}, {{"", "red"}, cap}},
          Case{"a space", {{" ", ""}}, {{" ", ""}, cap}}, Case{"two blank lines", {{}, {}}, {{}, {}, cap}}}) {
        auto pairs = before;
        addCatalogItem(pairs, cap.name, cap.color);
        EXPECT_EQ(pairs, after) << what;
    }
}

TEST(AnyNamed, CountsNamesOnly) {
    EXPECT_FALSE(anyNamed({}));
    EXPECT_FALSE(anyNamed({{"", "red"}, {"", ""}}));
    EXPECT_TRUE(anyNamed({{"", ""}, {" ", ""}}));
}

} // namespace
} // namespace vantor
