#include "view/item_pairs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace vantor {
namespace {

using ::testing::ElementsAre;

using NameAndColor = std::pair<std::string, std::string>;

std::vector<NameAndColor> textsOf(const std::vector<SetItem>& items) {
    std::vector<NameAndColor> texts;
    for (const auto& item : items)
        texts.emplace_back(item.name, item.color);
    return texts;
}

TEST(ItemsOf, DropsPairsWithoutANameAndKeepsTheRestAsTyped) {
    EXPECT_THAT(textsOf(itemsOf({{"", "red"}, {" b ", " "}, {"", ""}, {"cap", ""}, {" b ", " "}, {" ", ""}})),
                ElementsAre(NameAndColor(" b ", " "), NameAndColor("cap", ""), NameAndColor(" b ", " "),
                            NameAndColor(" ", "")));
}

TEST(ItemsOf, GivesEveryItemAnIdOfItsOwn) {
    const auto once = itemsOf({{"a", ""}, {"a", ""}});
    const auto again = itemsOf({{"a", ""}});
    EXPECT_NE(once[0].id, once[1].id);
    EXPECT_NE(once[0].id, again[0].id);
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
