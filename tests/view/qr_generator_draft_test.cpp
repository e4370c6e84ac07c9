#include "tests/support/differences.h"
#include "tests/support/examples.h"
#include "view/qr_generator_draft.h"

#include <gtest/gtest.h>

namespace vantor {
namespace {

using testing::kMorning;

TEST(QRGeneratorDraft, StartsEmptyAndMakesAnotherUntaggedSetOfNowEachTimeOfTheFieldsAsTheyStand) {
    EXPECT_TRUE(QRGeneratorDraft().items.empty());
    EXPECT_EQ(QRGeneratorDraft().buildSetData(kMorning).toQRText(), "");
    const QRGeneratorDraft draft{
        " 12 ", " Marvis", "Anna ", "\tStudio", {{"", "red"}, {"cap", ""}, {"sock", "blue"}}};
    const auto set = draft.buildSetData(kMorning);
    SetData expected;
    expected.setNumber = " 12 ";
    expected.brand = " Marvis";
    expected.model = "Anna ";
    expected.location = "\tStudio";
    expected.items = {SetItem::make("cap", ""), SetItem::make("sock", "blue")};
    EXPECT_EQ(testing::differences(set, expected, testing::Ignoring::Identity), "");
    EXPECT_EQ(set.timestamp.secondsSinceReference, kMorning.secondsSinceReference);
    const auto again = draft.buildSetData(kMorning);
    EXPECT_NE(again.id, set.id);
    EXPECT_NE(again.items[0].id, set.items[0].id);
}

} // namespace
} // namespace vantor
