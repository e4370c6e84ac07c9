#include "model/shoot.h"
#include "tests/support/examples.h"
#include "tests/support/table.h"

#include <gtest/gtest.h>

#include <set>

namespace vantor {
namespace {

using testing::kMorning;

TEST(Records, AreMadeOfWhatIsGivenWithAFreshId) {
    const auto shoot = Shoot::make("Ibiza Zomer 2026", "Ibiza", "Nike", kMorning);
    Shoot madeShoot;
    madeShoot.id = shoot.id;
    madeShoot.name = "Ibiza Zomer 2026";
    madeShoot.location = "Ibiza";
    madeShoot.client = "Nike";
    madeShoot.date = kMorning;
    EXPECT_EQ(shoot, madeShoot);
    const auto set = SetData::make(kMorning);
    SetData madeSet;
    madeSet.id = set.id;
    madeSet.timestamp = kMorning;
    EXPECT_EQ(set, madeSet);
    const auto item = SetItem::make("coated pants", "brown");
    EXPECT_EQ(item, (SetItem{item.id, "coated pants", "brown"}));
    const std::set<Uuid> ids{shoot.id, Shoot::make("", "", "", kMorning).id,
                             set.id,   SetData::make(kMorning).id,
                             item.id,  SetItem::make("", "").id,
                             Uuid()};
    EXPECT_EQ(ids.size(), 7U);
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
