#include "tests/support/examples.h"
#include "view/bulk_export_selection.h"

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

namespace vantor {
namespace {

using ::testing::ElementsAre;
using testing::numberedId;

SetList sets(unsigned count) {
    SetList all;
    for (unsigned i = 1; i <= count; ++i) {
        SetData set;
        set.id = numberedId(i);
        set.setNumber = std::to_string(i);
        all.push_back(std::move(set));
    }
    return all;
}

std::vector<std::string> selectedNumbers(const BulkExportSelection& selection) {
    std::vector<std::string> numbers;
    for (const auto& set : selection.selectedSets())
        numbers.push_back(set.setNumber);
    return numbers;
}

TEST(BulkExportSelection, OfNoSetsOffersToDeselectAndCannotExport) {
    BulkExportSelection selection({});
    EXPECT_EQ(selection.selectedCount(), 0U);
    EXPECT_TRUE(selection.allSelected());
    EXPECT_FALSE(selection.canExport());
    selection.select(numberedId(99), true);
    EXPECT_FALSE(selection.canExport()) << "a stranger";
}

TEST(BulkExportSelection, StartsWithEverySetOnLargeCardsAndWithOneMissingSelectsAllAndThenNone) {
    BulkExportSelection selection(sets(6));
    EXPECT_THAT(selectedNumbers(selection), ElementsAre("1", "2", "3", "4", "5", "6"));
    EXPECT_EQ(selection.density, BulkQRDensity::large);
    EXPECT_TRUE(selection.canExport());
    for (int i = 0; i < 2; ++i)
        selection.select(numberedId(4), false);
    EXPECT_FALSE(selection.isSelected(numberedId(4)));
    EXPECT_EQ(selection.selectedCount(), 5U);
    EXPECT_FALSE(selection.allSelected());
    selection.toggleAll();
    EXPECT_EQ(selection.selectedCount(), 6U);
    EXPECT_TRUE(selection.allSelected());
    selection.toggleAll();
    EXPECT_THAT(selectedNumbers(selection), ::testing::IsEmpty());
    EXPECT_FALSE(selection.canExport());
}

TEST(BulkExportSelection, ExportsInTheShootsOrderWhateverTheOrderOfSelectingAndComparesCountsOnly) {
    BulkExportSelection selection(sets(3));
    selection.toggleAll();
    for (const unsigned number : {3U, 1U, 2U, 1U})
        selection.select(numberedId(number), true);
    EXPECT_EQ(selection.selectedCount(), 3U) << "twice counts once";
    EXPECT_THAT(selectedNumbers(selection), ElementsAre("1", "2", "3"));
    selection.select(numberedId(1), false);
    selection.select(numberedId(99), true);
    EXPECT_TRUE(selection.allSelected());
    EXPECT_THAT(selectedNumbers(selection), ElementsAre("2", "3"));
}

} // namespace
} // namespace vantor
