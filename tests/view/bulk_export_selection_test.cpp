#include "tests/support/examples.h"
#include "view/bulk_export_selection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace vantor {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
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

TEST(BulkExportSelection, StartsWithEverySetOnLargeCards) {
    const BulkExportSelection selection(sets(3));
    EXPECT_THAT(selectedNumbers(selection), ElementsAre("1", "2", "3"));
    EXPECT_EQ(selection.density, BulkQRDensity::large);
    EXPECT_TRUE(selection.canExport());
}

TEST(BulkExportSelection, OfNoSetsOffersToDeselectAndCannotExport) {
    const BulkExportSelection selection({});
    EXPECT_EQ(selection.selectedCount(), 0U);
    EXPECT_TRUE(selection.allSelected());
    EXPECT_FALSE(selection.canExport());
}

TEST(BulkExportSelection, WithOneMissingSelectsAllAndThenNone) {
    BulkExportSelection selection(sets(6));
    selection.select(numberedId(4), false);
    EXPECT_EQ(selection.selectedCount(), 5U);
    EXPECT_FALSE(selection.allSelected());
    selection.toggleAll();
    EXPECT_EQ(selection.selectedCount(), 6U);
    EXPECT_TRUE(selection.allSelected());
    selection.toggleAll();
    EXPECT_THAT(selectedNumbers(selection), IsEmpty());
    EXPECT_FALSE(selection.canExport());
}

TEST(BulkExportSelection, ExportsInTheShootsOrderWhateverTheOrderOfSelecting) {
    BulkExportSelection selection(sets(3));
    selection.toggleAll();
    selection.select(numberedId(3), true);
    selection.select(numberedId(1), true);
    selection.select(numberedId(2), true);
    EXPECT_THAT(selectedNumbers(selection), ElementsAre("1", "2", "3"));
}

TEST(BulkExportSelection, SelectingTwiceCountsOnce) {
    BulkExportSelection selection(sets(2));
    selection.select(numberedId(1), true);
    EXPECT_EQ(selection.selectedCount(), 2U);
    selection.select(numberedId(1), false);
    selection.select(numberedId(1), false);
    EXPECT_EQ(selection.selectedCount(), 1U);
    EXPECT_FALSE(selection.isSelected(numberedId(1)));
}

TEST(BulkExportSelection, ComparesCountsOnly) {
    BulkExportSelection selection(sets(2));
    selection.select(numberedId(1), false);
    selection.select(numberedId(99), true);
    EXPECT_TRUE(selection.allSelected());
    EXPECT_THAT(selectedNumbers(selection), ElementsAre("2"));
}

TEST(BulkExportSelection, CannotExportWhenOnlyStrangersAreSelected) {
    BulkExportSelection selection({});
    selection.select(numberedId(99), true);
    EXPECT_FALSE(selection.canExport());
}

} // namespace
} // namespace vantor
