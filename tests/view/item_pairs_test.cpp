#include "view/item_pairs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace vantor {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using NameAndColor = std::pair<std::string, std::string>;

std::vector<NameAndColor> textsOf(const std::vector<SetItem>& items) {
    std::vector<NameAndColor> texts;
    for (const auto& item : items)
        texts.emplace_back(item.name, item.color);
    return texts;
}

TEST(ItemsOf, DropsAPairThatHasOnlyAColour) {
    EXPECT_THAT(textsOf(itemsOf({{"", "red"}, {"cap", "blue"}})), ElementsAre(NameAndColor("cap", "blue")));
}

TEST(ItemsOf, KeepsAPairThatHasOnlyAName) {
    EXPECT_THAT(textsOf(itemsOf({{"cap", ""}})), ElementsAre(NameAndColor("cap", "")));
}

TEST(ItemsOf, KeepsOrderRepeatsAndBlanksAsTyped) {
    EXPECT_THAT(textsOf(itemsOf({{" b ", " "}, {"a", "x"}, {" b ", " "}, {" ", ""}})),
                ElementsAre(NameAndColor(" b ", " "), NameAndColor("a", "x"), NameAndColor(" b ", " "),
                            NameAndColor(" ", "")));
}

TEST(ItemsOf, GivesEveryItemAnIdOfItsOwn) {
    const auto once = itemsOf({{"a", ""}, {"a", ""}});
    const auto again = itemsOf({{"a", ""}});
    EXPECT_NE(once[0].id, once[1].id);
    EXPECT_NE(once[0].id, again[0].id);
}

TEST(PairsOf, OffersOneBlankLineForASetWithoutItems) {
    EXPECT_THAT(pairsOf({}), ElementsAre(ItemPair{}));
}

TEST(PairsOf, KeepsItemsThatHaveNoNameForTheUserToSee) {
    EXPECT_THAT(pairsOf({SetItem::make("", "red"), SetItem::make("cap", "")}),
                ElementsAre(ItemPair{"", "red"}, ItemPair{"cap", ""}));
}

TEST(AddCatalogItem, FillsTheUntouchedLine) {
    ItemPairs pairs{ItemPair{}};
    addCatalogItem(pairs, "cap", "red");
    EXPECT_THAT(pairs, ElementsAre(ItemPair{"cap", "red"}));
}

TEST(AddCatalogItem, AppendsASecondPick) {
    ItemPairs pairs{ItemPair{}};
    addCatalogItem(pairs, "cap", "red");
    addCatalogItem(pairs, "cap", "red");
    EXPECT_THAT(pairs, ElementsAre(ItemPair{"cap", "red"}, ItemPair{"cap", "red"}));
}

TEST(AddCatalogItem, LeavesALineThatHoldsOnlyAColour) {
    ItemPairs pairs{{"", "red"}};
    addCatalogItem(pairs, "cap", "");
    EXPECT_THAT(pairs, ElementsAre(ItemPair{"", "red"}, ItemPair{"cap", ""}));
}

TEST(AddCatalogItem, LeavesALineOfASpace) {
    ItemPairs pairs{{" ", ""}};
    addCatalogItem(pairs, "cap", "");
    EXPECT_EQ(pairs.size(), 2U);
}

TEST(AddCatalogItem, LeavesTwoBlankLinesAsTheyAre) {
    ItemPairs pairs{ItemPair{}, ItemPair{}};
    addCatalogItem(pairs, "cap", "");
    EXPECT_THAT(pairs, ElementsAre(ItemPair{}, ItemPair{}, ItemPair{"cap", ""}));
}

TEST(AddCatalogItem, BeginsAnEmptyList) {
    ItemPairs pairs;
    addCatalogItem(pairs, "cap", "");
    EXPECT_THAT(pairs, ElementsAre(ItemPair{"cap", ""}));
}

TEST(AnyNamed, CountsNamesOnly) {
    EXPECT_FALSE(anyNamed({}));
    EXPECT_FALSE(anyNamed({{"", "red"}, {"", ""}}));
    EXPECT_TRUE(anyNamed({{"", ""}, {" ", ""}}));
}

} // namespace
} // namespace vantor
