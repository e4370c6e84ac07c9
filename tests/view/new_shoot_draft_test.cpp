#include "tests/support/examples.h"
#include "tests/support/lone_stores.h"
#include "view/new_shoot_draft.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vantor {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::kMorning;

std::vector<Shoot> shootsOf(const std::vector<std::string>& clients) {
    std::vector<Shoot> shoots;
    for (const auto& client : clients)
        shoots.push_back(Shoot::make("", "", client, kMorning));
    return shoots;
}

TEST(NewShootDraft, NeedsAName) {
    EXPECT_FALSE((NewShootDraft{"", "Ibiza", "Marvis"}.canCreate()));
}

TEST(NewShootDraft, TakesANameOfSpaces) {
    testing::LoneShoots manager;
    const NewShootDraft draft{"  ", " Ibiza ", ""};
    EXPECT_TRUE(draft.canCreate());
    draft.create(manager, kMorning);
    EXPECT_EQ(manager.shoots()[0].name, "  ");
    EXPECT_EQ(manager.shoots()[0].location, " Ibiza ");
}

TEST(NewShootDraft, PutsTheShootInFrontAndMakesItActive) {
    testing::LoneShoots manager;
    NewShootDraft{"first", "", ""}.create(manager, kMorning);
    NewShootDraft{"second", "", "Marvis"}.create(manager, kMorning);
    ASSERT_EQ(manager.shoots().size(), 2U);
    EXPECT_EQ(manager.shoots()[0].name, "second");
    EXPECT_EQ(manager.activeShootId(), manager.shoots()[0].id);
    EXPECT_NE(manager.shoots()[0].id, manager.shoots()[1].id);
}

TEST(NewShootDraft, MakesAnEmptyShootOfNow) {
    testing::LoneShoots manager;
    NewShootDraft{"a", "", ""}.create(manager, kMorning);
    const auto& shoot = manager.shoots()[0];
    EXPECT_EQ(shoot.date.secondsSinceReference, kMorning.secondsSinceReference);
    EXPECT_EQ(shoot.client, "");
    EXPECT_THAT(shoot.sets, IsEmpty());
    EXPECT_THAT(shoot.activationLog, IsEmpty());
    EXPECT_EQ(shoot.watchFolderPath, std::nullopt);
}

TEST(ClientsOf, NamesEachOnceInPlainOrder) {
    EXPECT_THAT(clientsOf(shootsOf({"b", "", "a", "B", "b", "É"})), ElementsAre("B", "a", "b", "É"));
}

TEST(KnownClients, JoinsThoseOfTheCatalogueAndOfShoots) {
    testing::LoneCatalog catalog;
    catalog.setClients({"nike", "Marvis"});
    EXPECT_THAT(knownClients(catalog, shootsOf({"Adidas", "Marvis", "Zeeman"})),
                ElementsAre("Adidas", "Marvis", "Zeeman", "nike"));
}

TEST(KnownClients, KeepsSpellingsThatDifferInCaseApart) {
    testing::LoneCatalog catalog;
    catalog.setClients({"anna"});
    EXPECT_THAT(knownClients(catalog, shootsOf({"Anna"})), ElementsAre("Anna", "anna"));
}

TEST(AllClients, ListsAClientThatOnlyAShootNames) {
    EXPECT_THAT(allClients(testing::LoneCatalog(), {"Nike"}), ElementsAre("Nike"));
}

TEST(AllClients, SortsIgnoringCaseAndKeepsBothSpellings) {
    testing::LoneCatalog catalog;
    catalog.setClients({"zeeman", "anna", "Élan"});
    EXPECT_THAT(allClients(catalog, {"Anna", "Bo", "anna"}),
                ::testing::AnyOf(ElementsAre("anna", "Anna", "Bo", "Élan", "zeeman"),
                                 ElementsAre("Anna", "anna", "Bo", "Élan", "zeeman")));
}

} // namespace
} // namespace vantor
