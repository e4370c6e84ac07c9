#include "model/shoot.h"
#include "tests/support/examples.h"
#include "tests/support/table.h"

#include <gtest/gtest.h>

#include <array>
#include <set>
#include <string>

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

TEST(SlashedItem, IsSplitAtTheFirstSlashAndHasOneInFrontOfAColourOnly) {
    using Texts = std::array<std::string, 3>;
    for (const auto& [text, name, color] :
         testing::tableOf(Texts{"jeans", "jeans", ""}, Texts{"tee/white", "tee", "white"},
                          Texts{" tee / off white ", "tee", "off white"}, Texts{"a/b/c", "a", "b/c"},
                          Texts{"/blue", "blue", ""}, Texts{"//blue", "blue", ""}, Texts{"a//b", "a", "/b"},
                          Texts{"a/", "a", ""}, Texts{"a/\u0301b", "a/\u0301b", ""})) {
        SCOPED_TRACE(::testing::PrintToString(text));
        const auto item = parseSlashedItem(text).value();
        EXPECT_EQ(item.name, name);
        EXPECT_EQ(item.color, color);
        EXPECT_NE(item.id, Uuid());
        EXPECT_EQ(slashed(item), color.empty() ? name : name + "/" + color);
    }
    for (const auto* text : {"", " ", "/", "//", " \t\u00A0"})
        EXPECT_FALSE(parseSlashedItem(text)) << text;
}

} // namespace
} // namespace vantor
