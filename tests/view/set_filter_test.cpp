#include "tests/support/examples.h"
#include "view/set_filter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace vantor {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct Search {
    const char* name;
    std::string query;
    bool found;
};

void PrintTo(const Search& each, std::ostream* out) {
    *out << each.name;
}

class SearchOfOneSet : public ::testing::TestWithParam<Search> {};

// Number 12b, brand Søster, model Anna, items "Navy coat" (red) and "straße" (blue), and more that is not searched.
SetData searched() {
    SetData set;
    set.setNumber = "12b";
    set.brand = "Søster";
    set.model = "Anna";
    set.items = {SetItem::make("Navy coat", "red"), SetItem::make("straße", "blue")};
    set.location = "Studio";
    set.email = "zoe@example.com";
    set.taggedCount = 987;
    return set;
}

TEST_P(SearchOfOneSet, Finds) {
    EXPECT_EQ(filteredSets({searched()}, GetParam().query).size(), GetParam().found ? 1U : 0U);
}

INSTANTIATE_TEST_SUITE_P(
    SetFilter, SearchOfOneSet,
    ::testing::Values(Search{"EverythingWithoutAQuery", "", true}, Search{"EverythingForSpaces", "   ", true},
                      Search{"EverythingForATab", "\t", true}, Search{"AnItemInAnotherCase", "  navy ", true},
                      Search{"AnItemWithATabBehind", "navy\t", true}, Search{"TheBrand", "SØSTER", true},
                      Search{"APartOfTheBrand", "øst", true}, Search{"TheModel", "ann", true},
                      Search{"TheNumber", "12B", true}, Search{"ALaterItem", "straß", true},
                      Search{"InnerSpaces", "navy coat", true}, Search{"NoColour", "red", false},
                      Search{"NoColourOfALaterItem", "blue", false}, Search{"NoLocation", "Studio", false},
                      Search{"NoEmail", "zoe", false}, Search{"NoCount", "987", false},
                      Search{"NothingAcrossFields", "12b Søster", false},
                      Search{"NothingAcrossNameAndColour", "coat red", false},
                      Search{"NoOtherAccent", "soster", false}, Search{"NoLineBreakAround", "navy\n", false},
                      Search{"NothingElse", "xyz", false}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST(SetFilter, KeepsTheShootsOrder) {
    SetList sets(4);
    sets[0].brand = "navy";
    sets[1].brand = "red";
    sets[2].items = {SetItem::make("x", "navy")};
    sets[3].setNumber = "NAVY";
    EXPECT_THAT(filteredSets(sets, "navy"), ElementsAre(0, 3));
    EXPECT_THAT(filteredSets(sets, ""), ElementsAre(0, 1, 2, 3));
}

TEST(SetFilter, FindsNothingAmongNothing) {
    EXPECT_THAT(filteredSets({}, ""), IsEmpty());
    EXPECT_THAT(filteredSets({}, "a"), IsEmpty());
}

TEST(SetFilter, FindsLettersHoweverTheirAccentsAreComposed) {
    SetList sets(1);
    sets[0].brand = "Zoe\u0301";
    EXPECT_THAT(filteredSets(sets, "ZO\u00C9"), ElementsAre(0));
}

} // namespace
} // namespace vantor
