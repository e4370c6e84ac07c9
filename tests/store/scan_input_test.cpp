#include "tests/store/shoot_manager_fixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vantor {
namespace {

using testing::differences;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ScanInput : public testing::ShootManagerFixture {};

TEST_F(ScanInput, ActivatesAKnownSetAndAddsNothing) {
    const auto a = newShoot("a");
    const auto known = newSet(a, "3", "X");
    std::optional<SetData> found;
    EXPECT_EQ(savesOf([&] { found = m_manager.handleScanInput("SET:3\nBRAND:X"); }), 1U);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->id, known);
    EXPECT_EQ(m_manager.activeSetId(), known);
    EXPECT_THAT(numbers(a), ElementsAre("3"));
    EXPECT_THAT(logged(a), ElementsAre(known));
}

TEST_F(ScanInput, LeavesAKnownSetAsItIsStored) {
    const auto a = newShoot("a");
    m_manager.addSet(a, testing::noorderlicht());
    const auto found =
        m_manager.handleScanInput("SET:12\nBRAND:Noorderlicht\nITEM:cap\nMODEL:Bo\nLOCATION:x\nEMAIL:y");
    EXPECT_EQ(differences(shoot(a).sets[0], testing::noorderlicht()), "");
    EXPECT_EQ(differences(found.value(), testing::noorderlicht()), "");
}

TEST_F(ScanInput, TakesTheFirstOfEqualSets) {
    const auto a = newShoot("a");
    newSet(a, "3", "X");
    const auto front = newSet(a, "3", "X");
    EXPECT_EQ(m_manager.handleScanInput("SET:3\nBRAND:X")->id, front);
}

TEST_F(ScanInput, AddsAnUnknownSetAtTheFrontAndActivatesIt) {
    const auto a = newShoot("a");
    newSet(a, "1");
    m_clock.set({77});
    std::optional<SetData> added;
    EXPECT_EQ(savesOf([&] { added = m_manager.handleScanInput(testing::noorderlicht().toQRText()); }), 1U);
    ASSERT_TRUE(added);
    EXPECT_EQ(differences(*added, testing::noorderlicht(), testing::Ignoring::Identity), "");
    EXPECT_EQ(differences(shoot(a).sets[0], *added), "");
    EXPECT_EQ(added->timestamp.secondsSinceReference, 77);
    EXPECT_THAT(numbers(a), ElementsAre("12", "1"));
    EXPECT_EQ(m_manager.activeSetId(), added->id);
    EXPECT_EQ(m_manager.activeShootId(), a);
    EXPECT_THAT(logged(a), ElementsAre(added->id));
}

TEST_F(ScanInput, ScanningTwiceLogsTwiceAndAddsOnce) {
    const auto a = newShoot("a");
    const auto first = m_manager.handleScanInput("SET:3\nBRAND:X")->id;
    EXPECT_EQ(m_manager.handleScanInput("SET:3\nBRAND:X")->id, first);
    EXPECT_THAT(numbers(a), ElementsAre("3"));
    EXPECT_THAT(logged(a), ElementsAre(first, first));
}

TEST_F(ScanInput, MindsTheCaseOfTheBrand) {
    const auto a = newShoot("a");
    newSet(a, "3", "X");
    m_manager.handleScanInput("SET:3\nBRAND:x");
    EXPECT_THAT(numbers(a), ElementsAre("3", "3"));
    EXPECT_EQ(shoot(a).sets[0].brand, "x");
}

TEST_F(ScanInput, TellsASetWithoutABrandFromOneWithABrand) {
    const auto a = newShoot("a");
    newSet(a, "3", "X");
    m_manager.handleScanInput("SET:3");
    EXPECT_THAT(numbers(a), ElementsAre("3", "3"));
    EXPECT_EQ(shoot(a).sets[0].brand, "");
}

TEST_F(ScanInput, DoesNotFindASetOfAnotherShoot) {
    const auto other = newShoot("other");
    newSet(other, "3", "X");
    const auto a = newShoot("a");
    m_manager.handleScanInput("SET:3\nBRAND:X");
    EXPECT_THAT(numbers(a), ElementsAre("3"));
    EXPECT_THAT(logged(other), IsEmpty());
    EXPECT_EQ(m_manager.activeShootId(), a);
}

TEST_F(ScanInput, ChangesNothingWithoutAnyShoot) {
    const auto set = m_manager.handleScanInput("SET:3\nBRAND:X");
    ASSERT_TRUE(set);
    EXPECT_EQ(set->setNumber, "3");
    EXPECT_FALSE(m_manager.activeSetId());
    EXPECT_FALSE(m_manager.activeShootId());
    EXPECT_EQ(saves(), 0U);
}

TEST_F(ScanInput, ActivatesOnlyTheIdWhenTheActiveShootIsGone) {
    const auto a = newShoot("a");
    const auto gone = Uuid::random();
    m_manager.setActiveShootId(gone);
    std::optional<SetData> set;
    EXPECT_EQ(savesOf([&] { set = m_manager.handleScanInput("SET:3\nBRAND:X"); }), 0U);
    ASSERT_TRUE(set);
    EXPECT_EQ(m_manager.activeSetId(), set->id);
    EXPECT_EQ(m_manager.activeShootId(), gone);
    EXPECT_EQ(m_manager.activeSet(), nullptr);
    EXPECT_THAT(numbers(a), IsEmpty());
    EXPECT_THAT(logged(a), IsEmpty());
}

TEST_F(ScanInput, IgnoresATextThatIsNoSet) {
    const auto a = newShoot("a");
    for (const auto* text : {"", "   ", "8712345678906", "ITEM:shirt", "https://example.com/set?number=1"}) {
        EXPECT_EQ(savesOf([&] { EXPECT_FALSE(m_manager.handleScanInput(text)) << text; }), 0U);
        EXPECT_FALSE(m_manager.activeSetId());
    }
    EXPECT_THAT(numbers(a), IsEmpty());
}

} // namespace
} // namespace vantor
