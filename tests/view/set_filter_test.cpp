#include "view/set_filter.h"

#include <gmock/gmock.h>

namespace vantor {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(SetFilter, FindsASetByItsNumberBrandModelAndNamesOfItems) {
    SetData set;
    set.setNumber = "12b";
    set.brand = "Søster";
    set.model = "Anna";
    set.items = {SetItem::make("Navy coat", "red"), SetItem::make("straße", "blue")};
    set.location = "Studio";
    set.email = "zoe@example.com";
    set.taggedCount = 987;
    for (const auto* const query :
         {"", "   ", "\t", "  navy ", "navy\t", "SØSTER", "øst", "ann", "12B", "straß", "navy coat"})
        EXPECT_THAT(filteredSets({set}, query), ElementsAre(0)) << query;
    for (const auto* const query :
         {"red", "blue", "Studio", "zoe", "987", "12b Søster", "coat red", "soster", "navy\n", "xyz"})
        EXPECT_THAT(filteredSets({set}, query), IsEmpty()) << query;
}

TEST(SetFilter, KeepsTheShootsOrder) {
    SetList sets(4);
    sets[0].brand = "navy";
    sets[1].brand = "red";
    sets[2].items = {SetItem::make("x", "navy")};
    sets[3].setNumber = "NAVY";
    EXPECT_THAT(filteredSets(sets, "navy"), ElementsAre(0, 3));
    EXPECT_THAT(filteredSets(sets, ""), ElementsAre(0, 1, 2, 3));
    EXPECT_THAT(filteredSets({}, ""), IsEmpty());
    sets[1].brand = "Zoe\u0301";
    EXPECT_THAT(filteredSets(sets, "ZO\u00C9"), ElementsAre(1)) << "however accents are composed";
}

} // namespace
} // namespace vantor
