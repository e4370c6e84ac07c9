#include "tests/support/examples.h"
#include "view/qr_generator_draft.h"

#include <gtest/gtest.h>

namespace vantor {
namespace {

using testing::kMorning;

TEST(QRGeneratorDraft, StartsWithNoItemLines) {
    EXPECT_TRUE(QRGeneratorDraft().items.empty());
}

TEST(QRGeneratorDraft, HasTheTextOfAnEmptySetAtFirst) {
    EXPECT_EQ(QRGeneratorDraft().buildSetData(kMorning).toQRText(), "");
}

TEST(QRGeneratorDraft, LeavesOutItemsWithoutAName) {
    const QRGeneratorDraft draft{"1", "", "", "", {{"", "red"}, {"cap", ""}, {"sock", "blue"}}};
    EXPECT_EQ(draft.buildSetData(kMorning).toQRText(), "SET:1\nITEM:cap\nITEM:sock/blue");
}

TEST(QRGeneratorDraft, TakesTheFieldsAsTheyStand) {
    const QRGeneratorDraft draft{" 12 ", " Marvis", "Anna ", "\tStudio", {}};
    const auto set = draft.buildSetData(kMorning);
    EXPECT_EQ(set.setNumber, " 12 ");
    EXPECT_EQ(set.brand, " Marvis");
    EXPECT_EQ(set.model, "Anna ");
    EXPECT_EQ(set.location, "\tStudio");
}

TEST(QRGeneratorDraft, MakesAnUntaggedSetOfNowWithoutAnEmail) {
    const auto set = QRGeneratorDraft().buildSetData(kMorning);
    EXPECT_EQ(set.timestamp.secondsSinceReference, kMorning.secondsSinceReference);
    EXPECT_EQ(set.taggedCount, 0);
    EXPECT_EQ(set.email, "");
}

TEST(QRGeneratorDraft, MakesAnotherSetEachTime) {
    const QRGeneratorDraft draft{"1", "", "", "", {{"cap", ""}}};
    const auto first = draft.buildSetData(kMorning);
    const auto second = draft.buildSetData(kMorning);
    EXPECT_NE(first.id, second.id);
    EXPECT_NE(first.items[0].id, second.items[0].id);
}

} // namespace
} // namespace vantor
