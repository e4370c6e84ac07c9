#include "model/shoot.h"
#include "tests/support/examples.h"
#include "tests/support/table.h"

#include <gtest/gtest.h>

namespace vantor {
namespace {

using testing::kMorning;

TEST(Shoot, IsMadeWithNameLocationAndClientAndNothingElse) {
    const auto shoot = Shoot::make("Ibiza Zomer 2026", "Ibiza", "Nike", kMorning);
    EXPECT_EQ(shoot.name, "Ibiza Zomer 2026");
    EXPECT_EQ(shoot.location, "Ibiza");
    EXPECT_EQ(shoot.client, "Nike");
    EXPECT_EQ(shoot.date.secondsSinceReference, kMorning.secondsSinceReference);
    EXPECT_TRUE(shoot.sets.empty());
    EXPECT_TRUE(shoot.activationLog.empty());
    EXPECT_FALSE(shoot.watchFolderPath);
    EXPECT_NE(shoot.id, Uuid());
    EXPECT_NE(shoot.id, Shoot::make("", "", "", kMorning).id);
}

TEST(SetData, IsMadeEmptyWithAFreshId) {
    const auto set = SetData::make(kMorning);
    EXPECT_EQ(set.setNumber + set.brand + set.model + set.location + set.email, "");
    EXPECT_TRUE(set.items.empty());
    EXPECT_EQ(set.taggedCount, 0);
    EXPECT_EQ(set.timestamp.secondsSinceReference, kMorning.secondsSinceReference);
    EXPECT_NE(set.id, Uuid());
    EXPECT_NE(set.id, SetData::make(kMorning).id);
}

TEST(SetItem, IsMadeWithAFreshId) {
    const auto item = SetItem::make("coated pants", "brown");
    EXPECT_EQ(item.name, "coated pants");
    EXPECT_EQ(item.color, "brown");
    EXPECT_NE(item.id, Uuid());
    EXPECT_NE(item.id, SetItem::make("coated pants", "brown").id);
}

TEST(SlashedItem, HasASlashOnlyInFrontOfAColour) {
    EXPECT_EQ(slashed({{}, "jeans", ""}), "jeans");
    EXPECT_EQ(slashed({{}, "tee", "white"}), "tee/white");
    EXPECT_EQ(slashed({{}, "", "red"}), "/red");
    EXPECT_EQ(slashed({{}, "", ""}), "");
}

TEST(ParseSlashedItem, SplitsAtTheFirstSlash) {
    struct Slashed {
        std::string text;
        std::string name;
        std::string color;
    };
    for (const auto& [text, name, color] : testing::tableOf(
             Slashed{"jeans", "jeans", ""}, Slashed{"tee/white", "tee", "white"},
             Slashed{" tee / off white ", "tee", "off white"}, Slashed{"a/b/c", "a", "b/c"},
             Slashed{"/blue", "blue", ""}, Slashed{"//blue", "blue", ""}, Slashed{"a//b", "a", "/b"},
             Slashed{"a/", "a", ""}, Slashed{"a/\u0301b", "a/\u0301b", ""})) {
        SCOPED_TRACE(::testing::PrintToString(text));
        const auto item = parseSlashedItem(text);
        ASSERT_TRUE(item);
        EXPECT_EQ(item->name, name);
        EXPECT_EQ(item->color, color);
        EXPECT_NE(item->id, Uuid());
    }
}

TEST(ParseSlashedItem, HasNothingToMakeOfSlashesAndBlanks) {
    for (const auto* text : {"", " ", "/", "//", " \t\u00A0"})
        EXPECT_FALSE(parseSlashedItem(text)) << text;
}

} // namespace
} // namespace vantor
