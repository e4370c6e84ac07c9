#include "tests/support/examples.h"
#include "tests/support/lone_stores.h"
#include "view/new_shoot_draft.h"

#include <gmock/gmock.h>

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

TEST(NewShootDraft, NeedsANameIfOnlyOfSpacesAndMakesAnEmptyShootOfNowInFrontAndActive) {
    EXPECT_FALSE((NewShootDraft{"", "Ibiza", "Marvis"}.canCreate()));
    EXPECT_TRUE((NewShootDraft{"  ", "", ""}.canCreate()));
    testing::LoneShoots manager;
    NewShootDraft{"first", "", ""}.create(manager, kMorning);
    NewShootDraft{"  ", " Ibiza ", "Marvis"}.create(manager, kMorning);
    ASSERT_EQ(manager.shoots().size(), 2U);
    const auto& shoot = manager.shoots()[0];
    EXPECT_EQ(shoot.name, "  ");
    EXPECT_EQ(shoot.location, " Ibiza ");
    EXPECT_EQ(shoot.client, "Marvis");
    EXPECT_EQ(shoot.date.secondsSinceReference, kMorning.secondsSinceReference);
    EXPECT_THAT(shoot.sets, IsEmpty());
    EXPECT_THAT(shoot.activationLog, IsEmpty());
    EXPECT_EQ(shoot.watchFolderPath, std::nullopt);
    EXPECT_EQ(manager.activeShootId(), shoot.id);
    EXPECT_NE(shoot.id, manager.shoots()[1].id);
}

TEST(KnownClients, AreThoseOfTheCatalogueAndOfShootsOnceEachInPlainOrder) {
    EXPECT_THAT(clientsOf(shootsOf({"b", "", "a", "B", "b", "É"})), ElementsAre("B", "a", "b", "É"));
    testing::LoneCatalog catalog;
    catalog.setClients({"nike", "Marvis", "anna"});
    EXPECT_THAT(knownClients(catalog, shootsOf({"Adidas", "Marvis", "Anna"})),
                ElementsAre("Adidas", "Anna", "Marvis", "anna", "nike"));
}

TEST(AllClients, SortsIgnoringCaseAndKeepsBothSpellings) {
    testing::LoneCatalog catalog;
    EXPECT_THAT(allClients(catalog, {"Nike"}), ElementsAre("Nike"));
    catalog.setClients({"zeeman", "anna", "Élan"});
    EXPECT_THAT(allClients(catalog, {"Anna", "Bo", "anna"}),
                ::testing::AnyOf(ElementsAre("anna", "Anna", "Bo", "Élan", "zeeman"),
                                 ElementsAre("Anna", "anna", "Bo", "Élan", "zeeman")));
}

} // namespace
} // namespace vantor
