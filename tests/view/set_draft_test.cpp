#include "tests/support/differences.h"
#include "tests/support/examples.h"
#include "tests/support/lone_stores.h"
#include "view/set_draft.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <utility>

namespace vantor {
namespace {

using testing::differences;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::kMorning;
using ::testing::SizeIs;

struct Enabling {
    const char* name;
    SetDraft draft;
    bool canAdd;
};

void PrintTo(const Enabling& each, std::ostream* out) {
    *out << each.name;
}

class CanAdd : public ::testing::TestWithParam<Enabling> {};

TEST_P(CanAdd, NeedsABrandOrANamedItem) {
    EXPECT_EQ(GetParam().draft.canAdd(), GetParam().canAdd);
}

SetDraft withItems(ItemPairs items) {
    SetDraft draft;
    draft.items = std::move(items);
    return draft;
}

SetDraft withBrand(std::string brand) {
    SetDraft draft;
    draft.brand = std::move(brand);
    return draft;
}

INSTANTIATE_TEST_SUITE_P(
    SetDraft, CanAdd,
    ::testing::Values(Enabling{"Untouched", {}, false}, Enabling{"OnlyABrand", withBrand("Marvis"), true},
                      Enabling{"ABrandOfASpace", withBrand(" "), true},
                      Enabling{
                          "OnlyANumberModelPlaceAndEmail", {"1", "", "Anna", "Studio", "a@b", {}}, false},
                      Enabling{"OnlyAColour", withItems({{"", "red"}}), false},
                      Enabling{"ANamedItem", withItems({{"", "red"}, {"cap", ""}}), true},
                      Enabling{"AnItemNamedByASpace", withItems({{" ", ""}}), true}),
    [](const auto& tested) { return std::string(tested.param.name); });

class SetDraftTest : public ::testing::Test {
protected:
    void newShoot(std::size_t sets) {
        auto shoot = Shoot::make("Ibiza", "", "", kMorning);
        m_shoot = shoot.id;
        for (std::size_t i = 0; i < sets; ++i)
            shoot.sets.push_back(SetData::make(kMorning));
        m_manager.insertShoot(std::move(shoot));
        m_manager.setActiveShootId(m_shoot);
    }
    [[nodiscard]] const SetList& sets() const { return m_manager.activeShoot()->sets; }

    testing::LoneShoots m_manager;
    Uuid m_shoot;
};

TEST_F(SetDraftTest, StartsWithOneBlankItemLine) {
    EXPECT_THAT(SetDraft().items, ElementsAre(ItemPair{}));
}

TEST_F(SetDraftTest, OnlyABrandMakesASetWithoutItemsAndTheNextNumber) {
    newShoot(4);
    EXPECT_TRUE(withBrand("Marvis").add(m_manager, m_shoot, kMorning));
    ASSERT_THAT(sets(), SizeIs(5));
    EXPECT_EQ(sets().front().setNumber, "5");
    EXPECT_EQ(sets().front().brand, "Marvis");
    EXPECT_THAT(sets().front().items, IsEmpty());
}

TEST_F(SetDraftTest, NumbersTheFirstSetOne) {
    newShoot(0);
    EXPECT_TRUE(withBrand("Marvis").add(m_manager, m_shoot, kMorning));
    EXPECT_EQ(sets().front().setNumber, "1");
}

TEST_F(SetDraftTest, KeepsATypedNumberEvenIfItIsTaken) {
    newShoot(0);
    auto draft = withBrand("Marvis");
    draft.setNumber = " 1b ";
    EXPECT_TRUE(draft.add(m_manager, m_shoot, kMorning));
    EXPECT_TRUE(draft.add(m_manager, m_shoot, kMorning));
    ASSERT_THAT(sets(), SizeIs(2));
    EXPECT_EQ(sets()[0].setNumber, " 1b ");
    EXPECT_EQ(sets()[1].setNumber, " 1b ");
}

TEST_F(SetDraftTest, AddsAtTheFrontAndStoresWhatWasTyped) {
    newShoot(1);
    const SetDraft draft{" 7", "B ", " m", "l ", " e@x ", {{"", "red"}, {"cap ", " blue"}}};
    EXPECT_TRUE(draft.add(m_manager, m_shoot, kMorning));
    auto expected = SetData::make(kMorning);
    expected.setNumber = " 7";
    expected.brand = "B ";
    expected.model = " m";
    expected.location = "l ";
    expected.email = " e@x ";
    expected.items = {SetItem::make("cap ", " blue")};
    EXPECT_EQ(differences(sets().front(), expected, testing::Ignoring::Identity), "");
    EXPECT_EQ(sets().front().timestamp.secondsSinceReference, kMorning.secondsSinceReference);
    EXPECT_EQ(m_manager.activeSetId(), std::nullopt);
}

TEST_F(SetDraftTest, AddsToItsShootWhicheverIsActive) {
    newShoot(2);
    const auto meant = m_shoot;
    newShoot(0);
    EXPECT_TRUE(withBrand("Marvis").add(m_manager, meant, kMorning));
    EXPECT_THAT(sets(), IsEmpty());
    EXPECT_EQ(m_manager.shoot(meant)->sets.front().setNumber, "3");
}

TEST_F(SetDraftTest, StoresNothingInAShootThatIsGone) {
    newShoot(0);
    const auto gone = m_shoot;
    newShoot(0);
    m_manager.deleteShoot(gone);
    EXPECT_FALSE(withBrand("Marvis").add(m_manager, gone, kMorning));
    EXPECT_THAT(sets(), IsEmpty());
}

TEST_F(SetDraftTest, ShowsAStoredSetAsItIs) {
    const auto draft = SetDraft::of(testing::noorderlicht());
    EXPECT_EQ(draft.setNumber, "12");
    EXPECT_EQ(draft.brand, "Noorderlicht");
    EXPECT_EQ(draft.model, "Anna");
    EXPECT_EQ(draft.location, "Studio A");
    EXPECT_EQ(draft.email, "");
    EXPECT_THAT(draft.items,
                ElementsAre(ItemPair{"coated pants", "brown"}, ItemPair{"sweater", "blue navy"}));
}

TEST_F(SetDraftTest, OffersALineForASetWithoutItems) {
    EXPECT_THAT(SetDraft::of(SetData::make(kMorning)).items, ElementsAre(ItemPair{}));
}

TEST_F(SetDraftTest, SavingKeepsIdMomentAndCountAndReplacesTheRest) {
    newShoot(0);
    auto edited = testing::troublesomeSet();
    m_manager.addSet(m_shoot, edited);
    auto draft = SetDraft::of(edited);
    draft.brand = "New";
    draft.model.clear();
    draft.items = {{"cap", "red"}};
    EXPECT_TRUE(draft.save(m_manager, edited));
    auto expected = edited;
    expected.brand = "New";
    expected.model.clear();
    expected.items = {{sets().front().items.at(0).id, "cap", "red"}};
    EXPECT_EQ(differences(sets().front(), expected), "");
}

TEST_F(SetDraftTest, SavingAClearedNumberAssignsNone) {
    newShoot(3);
    auto draft = SetDraft::of(sets().front());
    draft.setNumber.clear();
    EXPECT_TRUE(draft.save(m_manager, sets().front()));
    EXPECT_EQ(sets().front().setNumber, "");
}

TEST_F(SetDraftTest, SavingGivesItemsNewIds) {
    newShoot(0);
    m_manager.addSet(m_shoot, testing::noorderlicht());
    const auto before = sets().front().items[0].id;
    EXPECT_TRUE(SetDraft::of(sets().front()).save(m_manager, SetData(sets().front())));
    EXPECT_NE(sets().front().items[0].id, before);
}

TEST_F(SetDraftTest, SavingASetThatIsGoneBringsNothingBack) {
    newShoot(1);
    const auto edited = sets().front();
    m_manager.deleteSet(edited.id);
    EXPECT_FALSE(SetDraft::of(edited).save(m_manager, edited));
    EXPECT_THAT(sets(), IsEmpty());
}

} // namespace
} // namespace vantor
