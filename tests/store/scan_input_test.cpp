#include "tests/store/shoot_manager_fixture.h"

#include <gmock/gmock.h>

namespace vantor {
namespace {

using testing::differences;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ScanInput : public testing::ShootManagerFixture {};

TEST_F(ScanInput, ActivatesAKnownSetAndAddsNothing) {
    const auto a = newShoot("a");
    newSet(a, "3", "X");
    const auto front = newSet(a, "3", "X");
    std::optional<SetData> found;
    EXPECT_EQ(savesOf([&] { found = m_manager.handleScanInput("SET:3\nBRAND:X"); }), 1U);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->id, front) << "the first of equal ones";
    EXPECT_EQ(m_manager.activeSetId(), front);
    EXPECT_THAT(numbers(a), ElementsAre("3", "3"));
    EXPECT_THAT(logged(a), ElementsAre(front));
}

TEST_F(ScanInput, AddsAnUnknownSetAtTheFrontAndActivatesItAndLeavesItAsItIsStoredFromThenOn) {
    const auto a = newShoot("a");
    newSet(a, "1");
    m_clock.set({77});
    std::optional<SetData> added;
    EXPECT_EQ(savesOf([&] { added = m_manager.handleScanInput(testing::noorderlicht().toQRText()); }), 1U);
    ASSERT_TRUE(added);
    EXPECT_EQ(differences(*added, testing::noorderlicht(), testing::Ignoring::Identity), "");
    EXPECT_EQ(differences(shoot(a).sets[0], *added), "");
    EXPECT_EQ(added->timestamp.secondsSinceReference, 77);
    EXPECT_EQ(m_manager.activeSetId(), added->id);
    EXPECT_EQ(m_manager.activeShootId(), a);
    const auto found =
        m_manager.handleScanInput("SET:12\nBRAND:Noorderlicht\nITEM:cap\nMODEL:Bo\nLOCATION:x\nEMAIL:y");
    EXPECT_EQ(differences(found.value(), *added), "");
    EXPECT_EQ(differences(shoot(a).sets[0], *added), "");
    EXPECT_THAT(numbers(a), ElementsAre("12", "1")) << "added once";
    EXPECT_THAT(logged(a), ElementsAre(added->id, added->id)) << "logged twice";
}

TEST_F(ScanInput, FindsNeitherAnotherSpellingOfTheBrandNorNoneNorASetOfAnotherShoot) {
    const auto other = newShoot("other");
    newSet(other, "3", "x");
    const auto a = newShoot("a");
    newSet(a, "3", "X");
    for (const auto* const card : {"SET:3\nBRAND:x", "SET:3"})
        m_manager.handleScanInput(card);
    EXPECT_THAT(numbers(a), ElementsAre("3", "3", "3"));
    EXPECT_EQ(shoot(a).sets[1].brand, "x");
    EXPECT_EQ(shoot(a).sets[0].brand, "");
    EXPECT_THAT(logged(other), IsEmpty());
    EXPECT_EQ(m_manager.activeShootId(), a);
}

TEST_F(ScanInput, ChangesNothingWithoutAnyShootAndActivatesOnlyTheIdWhenTheActiveOneIsGone) {
    auto set = m_manager.handleScanInput("SET:3\nBRAND:X");
    ASSERT_TRUE(set);
    EXPECT_EQ(set->setNumber, "3");
    EXPECT_FALSE(m_manager.activeSetId());
    EXPECT_FALSE(m_manager.activeShootId());
    EXPECT_EQ(saves(), 0U);

    const auto a = newShoot("a");
    const auto gone = Uuid::random();
    m_manager.setActiveShootId(gone);
    EXPECT_EQ(savesOf([&] { set = m_manager.handleScanInput("SET:3\nBRAND:X"); }), 0U);
    EXPECT_EQ(m_manager.activeSetId(), set.value().id);
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
