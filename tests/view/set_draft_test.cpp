#include "tests/support/differences.h"
#include "tests/support/examples.h"
#include "tests/support/lone_stores.h"
#include "view/set_draft.h"

#include <gmock/gmock.h>

#include <string>
#include <utility>

namespace vantor {
namespace {

using testing::differences;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::kMorning;
using ::testing::SizeIs;

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

TEST_F(SetDraftTest, CanBeAddedWithABrandOrANamedItem) {
    for (const auto& draft :
         {withBrand("Marvis"), withBrand(" "), withItems({{"", "red"}, {"cap", ""}}), withItems({{" ", ""}})})
        EXPECT_TRUE(draft.canAdd()) << draft.brand << draft.items[0].name;
    for (const auto& draft :
         {SetDraft(), SetDraft{"1", "", "Anna", "Studio", "a@b", {}}, withItems({{"", "red"}})})
        EXPECT_FALSE(draft.canAdd()) << draft.setNumber;
}

TEST_F(SetDraftTest, OnlyABrandMakesASetWithoutItemsAndTheNextNumber) {
    for (const std::size_t before : {0U, 4U}) {
        newShoot(before);
        EXPECT_TRUE(withBrand("Marvis").add(m_manager, m_shoot, kMorning));
        ASSERT_THAT(sets(), SizeIs(before + 1));
        EXPECT_EQ(sets().front().setNumber, std::to_string(before + 1));
        EXPECT_EQ(sets().front().brand, "Marvis");
        EXPECT_THAT(sets().front().items, IsEmpty());
    }
}

TEST_F(SetDraftTest, AddsAtTheFrontAndStoresWhatWasTyped) {
    newShoot(1);
    const SetDraft draft{" 7", "B ", " m", "l ", " e@x ", {{"", "red"}, {"cap ", " blue"}}};
    EXPECT_TRUE(draft.add(m_manager, m_shoot, kMorning));
    EXPECT_TRUE(draft.add(m_manager, m_shoot, kMorning)) << "a number that is taken";
    ASSERT_THAT(sets(), SizeIs(3));
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

TEST_F(SetDraftTest, AddsToItsShootWhicheverIsActiveUnlessItIsGone) {
    newShoot(2);
    const auto meant = m_shoot;
    newShoot(0);
    EXPECT_TRUE(withBrand("Marvis").add(m_manager, meant, kMorning));
    EXPECT_EQ(m_manager.shoot(meant)->sets.front().setNumber, "3");
    m_manager.deleteShoot(meant);
    EXPECT_FALSE(withBrand("Marvis").add(m_manager, meant, kMorning));
    EXPECT_THAT(sets(), IsEmpty());
}

TEST_F(SetDraftTest, ShowsAStoredSetAsItIsWithALineForItems) {
    const auto draft = SetDraft::of(testing::noorderlicht());
    EXPECT_EQ(draft.setNumber, "12");
    EXPECT_EQ(draft.brand, "Noorderlicht");
    EXPECT_EQ(draft.model, "Anna");
    EXPECT_EQ(draft.location, "Studio A");
    EXPECT_EQ(draft.email, "");
    EXPECT_THAT(draft.items,
                ElementsAre(ItemPair{"coated pants", "brown"}, ItemPair{"sweater", "blue navy"}));
    for (const auto& untouched : {SetDraft(), SetDraft::of(SetData::make(kMorning))})
        EXPECT_THAT(untouched.items, ElementsAre(ItemPair{}));
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
    const auto before = sets().front().items[0].id;
    EXPECT_TRUE(SetDraft::of(sets().front()).save(m_manager, SetData(sets().front())));
    EXPECT_NE(sets().front().items[0].id, before) << "another item, though it reads the same";
    draft.setNumber.clear();
    EXPECT_TRUE(draft.save(m_manager, sets().front()));
    EXPECT_EQ(sets().front().setNumber, "") << "none is assigned";
    m_manager.deleteSet(edited.id);
    EXPECT_FALSE(draft.save(m_manager, edited));
    EXPECT_THAT(sets(), IsEmpty()) << "what is gone does not come back";
}

} // namespace
} // namespace vantor
