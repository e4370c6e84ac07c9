#include "model/shoot_json.h"
#include "tests/store/shoot_manager_fixture.h"

#include <gmock/gmock.h>

#include <functional>
#include <optional>
#include <tuple>

namespace vantor {
namespace {

using testing::differences;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ShootManagerTest : public testing::ShootManagerFixture {};

TEST_F(ShootManagerTest, BeginsEmptyAddsInFrontAndReplacesWholeSetsWhereverTheyAre) {
    EXPECT_THAT(m_manager.shoots(), IsEmpty());
    EXPECT_FALSE(m_manager.activeShootId());
    EXPECT_FALSE(m_manager.activeSetId());
    EXPECT_EQ(m_manager.activeShoot(), nullptr);
    EXPECT_EQ(m_manager.activeSet(), nullptr);
    EXPECT_THAT(m_files.reads, IsEmpty());

    const auto a = newShoot("a");
    EXPECT_EQ(savesOf([&] { newShoot("b"); }), 1U);
    const auto b = m_manager.shoots()[0].id;
    EXPECT_EQ(m_manager.shoots()[0].name, "b");
    EXPECT_EQ(m_manager.shoots()[1].name, "a");
    EXPECT_EQ(m_manager.activeShootId(), b);

    newSet(a, "1");
    const auto wanted = newSet(a, "2");
    EXPECT_EQ(savesOf([&] { newSet(a, "3"); }), 1U);
    EXPECT_THAT(numbers(a), ElementsAre("3", "2", "1"));
    EXPECT_THAT(numbers(b), IsEmpty());
    EXPECT_EQ(m_manager.activeShootId(), b);
    EXPECT_FALSE(m_manager.activeSetId()) << "adding does not activate";

    newSet(b, "4");
    const auto updated = testing::troublesomeSet();
    EXPECT_EQ(savesOf([&] { m_manager.updateSet(wanted, updated); }), 1U);
    EXPECT_THAT(numbers(a), ElementsAre("3", "12b", "1"));
    EXPECT_EQ(differences(shoot(a).sets[1], updated), "") << "all nine fields, the id too";
    EXPECT_THAT(numbers(b), ElementsAre("4"));
}

TEST_F(ShootManagerTest, OfEqualIdsTheFirstIsUpdatedAndAllAreDeleted) {
    const auto a = newShoot("a");
    newSet(a, "1");
    const auto twin = newSet(a, "2");
    m_manager.activateSet(twin);
    auto same = shoot(a).sets[0];
    const auto b = newShoot("b");
    m_manager.addSet(b, same);
    same.setNumber = "3";
    m_manager.updateSet(twin, same);
    EXPECT_THAT(numbers(b), ElementsAre("3"));
    EXPECT_THAT(numbers(a), ElementsAre("2", "1"));
    EXPECT_EQ(savesOf([&] { m_manager.deleteSet(twin); }), 1U);
    EXPECT_THAT(numbers(b), IsEmpty());
    EXPECT_THAT(numbers(a), ElementsAre("1"));
    EXPECT_THAT(logged(a), ElementsAre(twin)) << "what was logged stays";
}

TEST_F(ShootManagerTest, WhatIsUnknownChangesNothingAndOnlyDeletingItSaves) {
    const auto a = newShoot("a");
    newSet(a, "1");
    const auto before = m_manager.shoots();
    const auto nobody = Uuid::random();
    EXPECT_EQ(savesOf([&] { newSet(nobody, "2"); }), 0U);
    EXPECT_EQ(savesOf([&] { m_manager.updateSet(nobody, {}); }), 0U);
    EXPECT_EQ(savesOf([&] { m_manager.deleteSet(nobody); }), 1U);
    EXPECT_EQ(savesOf([&] { m_manager.deleteShoot(nobody); }), 1U);
    EXPECT_EQ(savesOf([&] { m_manager.activateSet(nobody); }), 0U);
    EXPECT_EQ(differences(m_manager.shoots(), before), "");
    EXPECT_EQ(m_manager.activeShootId(), a);
    EXPECT_EQ(m_manager.activeSetId(), nobody) << "the id is active all the same";
    EXPECT_EQ(m_manager.activeSet(), nullptr);
}

TEST_F(ShootManagerTest, DeletingTheActiveSetClearsItAndTheActiveShootActivatesTheOneInFront) {
    const auto a = newShoot("a");
    const auto b = newShoot("b");
    const auto c = newShoot("c");
    const auto one = newSet(b, "1");
    const auto two = newSet(b, "2");
    m_manager.activateSet(two);
    m_manager.deleteSet(two);
    EXPECT_FALSE(m_manager.activeSetId());
    m_manager.activateSet(one);
    m_manager.deleteSet(newSet(b, "3"));
    EXPECT_EQ(m_manager.activeSetId(), one) << "another one was deleted";
    m_manager.deleteShoot(a);
    EXPECT_EQ(m_manager.activeShootId(), b) << "another one was deleted";
    m_manager.deleteShoot(b);
    EXPECT_EQ(m_manager.activeShootId(), c);
    EXPECT_EQ(m_manager.activeSetId(), one);
    EXPECT_EQ(m_manager.activeSet(), nullptr);
    EXPECT_EQ(savesOf([&] { m_manager.deleteShoot(c); }), 1U);
    EXPECT_THAT(m_manager.shoots(), IsEmpty());
    EXPECT_FALSE(m_manager.activeShootId());
}

TEST_F(ShootManagerTest, ActivatingASetOfAnotherShootSwitchesToThatShoot) {
    const auto a = newShoot("a");
    const auto one = newSet(a, "1");
    const auto b = newShoot("b");
    m_clock.set({42.5});
    EXPECT_EQ(savesOf([&] { m_manager.activateSet(one); }), 1U);
    EXPECT_EQ(m_manager.activeShootId(), a);
    EXPECT_EQ(m_manager.activeSetId(), one);
    ASSERT_NE(m_manager.activeSet(), nullptr);
    EXPECT_EQ(m_manager.activeSet()->setNumber, "1");
    EXPECT_THAT(logged(b), IsEmpty());
    m_clock.set({43});
    m_manager.activateSet(one);
    ASSERT_THAT(logged(a), ElementsAre(one, one)) << "logged each time";
    EXPECT_EQ(shoot(a).activationLog[0].activatedAt.secondsSinceReference, 42.5);
    EXPECT_EQ(shoot(a).activationLog[1].activatedAt.secondsSinceReference, 43);
    EXPECT_EQ(shoot(a).sets[0].taggedCount, 0);
    for (const auto active : {std::optional(b), std::optional<Uuid>()}) {
        m_manager.setActiveShootId(active);
        EXPECT_EQ(m_manager.activeSetId(), one);
        EXPECT_EQ(m_manager.activeSet(), nullptr) << "never one of another shoot";
    }
    EXPECT_EQ(m_manager.activeShoot(), nullptr);
}

TEST_F(ShootManagerTest, UnreadableFileLeavesTheStoreAsItWasAndIsSetAsideByTheNextChange) {
    m_files.files[m_path] = data("shoots.json");
    m_manager.load();
    const auto before = m_manager.shoots();
    m_manager.setActiveShootId(testing::numberedId(2));
    const auto heard = m_manager.willChange().connect([](Aspect) { ADD_FAILURE() << "announced"; });
    for (const std::string& bad : {std::string(), std::string("{}"), std::string("[{}]"),
                                   std::string(100, '\0'), data("shoots.json") + "]", data("catalog.json"),
                                   std::string(1'000'000, '['), std::string("[{\"client\":")}) {
        m_files.files[m_path] = bad;
        m_manager.load();
        EXPECT_EQ(differences(m_manager.shoots(), before), "");
        EXPECT_EQ(m_manager.activeShootId(), testing::numberedId(2));
    }
    EXPECT_EQ(saves(), 0U);
    m_manager.save();
    m_manager.save();
    EXPECT_EQ(m_files.files.at(aside()), "[{\"client\":");
    EXPECT_EQ(m_files.renames.size(), 1U);
}

TEST_F(ShootManagerTest, FirstShootIsActiveAfterLoadingWhicheverWasBefore) {
    const auto a = newShoot("a");
    const auto b = newShoot("b");
    const auto one = newSet(a, "1");
    m_manager.activateSet(one);
    ASSERT_EQ(m_manager.activeShootId(), a);
    testing::LoneShoots next(&m_file);
    next.load();
    EXPECT_EQ(next.activeShootId(), b);
    EXPECT_FALSE(next.activeSetId());
    m_manager.load();
    EXPECT_EQ(m_manager.activeShootId(), b);
    EXPECT_EQ(m_manager.activeSetId(), one) << "loading does not touch the active set";
    m_files.files[m_path] = " [ ] ";
    m_manager.load();
    EXPECT_THAT(m_manager.shoots(), IsEmpty());
    EXPECT_FALSE(m_manager.activeShootId());

    m_files.files[m_path] = data("shoots_legacy.json");
    m_manager.load();
    auto expected = testing::storedShoots();
    for (auto& each : expected) {
        each.watchFolderPath.reset();
        each.activationLog.clear();
        for (auto& set : each.sets) {
            set.taggedCount = 0;
            set.email.clear();
        }
    }
    EXPECT_EQ(differences(m_manager.shoots(), expected), "") << "the file of an earlier version";
}

TEST_F(ShootManagerTest, StoresWithoutAFileKeepWhatTheyHoldWhenLoaded) {
    testing::LoneShoots manager;
    manager.load();
    manager.insertShoot(testing::ibiza());
    manager.save();
    manager.load();
    EXPECT_EQ(manager.shoots().size(), 1U);
    testing::LoneCatalog catalog;
    catalog.addClient("Nike");
    catalog.save();
    catalog.load();
    EXPECT_THAT(catalog.clients(), ElementsAre("Nike"));
}

TEST_F(ShootManagerTest, AnnouncesEveryChangeBeforeItTakesEffectAndThenSavesItsWholeState) {
    const auto a = newShoot("a");
    const auto one = newSet(a, "1");
    std::vector<Shoot> shoots;
    std::optional<Uuid> activeShoot;
    std::optional<Uuid> activeSet;
    std::size_t savesBefore = 0;
    std::vector<Aspect> announced;
    const auto listening = m_manager.willChange().connect([&](Aspect aspect) {
        announced.push_back(aspect);
        EXPECT_EQ(saves(), savesBefore);
        if (aspect == Aspect::Shoots)
            EXPECT_EQ(differences(m_manager.shoots(), shoots), "");
        else if (aspect == Aspect::ActiveShootId)
            EXPECT_EQ(m_manager.activeShootId(), activeShoot);
        else
            EXPECT_EQ(m_manager.activeSetId(), activeSet);
    });
    using A = Aspect;
    const std::vector<std::tuple<const char*, std::function<void()>, std::vector<Aspect>>> operations{
        {"insertShoot", [&] { m_manager.insertShoot(Shoot::make("b", "", "", {})); }, {A::Shoots}},
        {"addSet", [&] { newSet(a, "2"); }, {A::Shoots}},
        {"activateSet", [&] { m_manager.activateSet(one); }, {A::ActiveSetId, A::ActiveShootId, A::Shoots}},
        {"updateSet", [&] { m_manager.updateSet(one, testing::troublesomeSet()); }, {A::Shoots}},
        {"activateSet again",
         [&] { m_manager.activateSet(testing::troublesomeSet().id); },
         {A::ActiveSetId, A::ActiveShootId, A::Shoots}},
        {"deleteSet",
         [&] { m_manager.deleteSet(testing::troublesomeSet().id); },
         {A::Shoots, A::ActiveSetId}},
        {"importShoot",
         [&] { m_manager.importShoot(*m_manager.exportJSON(a)); },
         {A::Shoots, A::ActiveShootId}},
        {"setActiveShootId", [&] { m_manager.setActiveShootId(a); }, {A::ActiveShootId}},
        {"deleteShoot", [&] { m_manager.deleteShoot(a); }, {A::Shoots, A::ActiveShootId}},
        {"load", [&] { m_manager.load(); }, {A::Shoots, A::ActiveShootId}},
        {"save", [&] { m_manager.save(); }, {}},
        {"addSet to no shoot", [&] { newSet(Uuid::random(), "2"); }, {}},
        {"updateSet of none", [&] { m_manager.updateSet(Uuid::random(), {}); }, {}},
    };
    for (const auto& [name, act, expected] : operations) {
        SCOPED_TRACE(name);
        shoots = m_manager.shoots();
        activeShoot = m_manager.activeShootId();
        activeSet = m_manager.activeSetId();
        savesBefore = saves();
        announced.clear();
        act();
        EXPECT_EQ(announced, expected);
        const auto read = readShoots(saved(), DateForm::SecondsSinceReference);
        ASSERT_TRUE(read);
        EXPECT_EQ(differences(*read, m_manager.shoots()), "");
    }
}

} // namespace
} // namespace vantor
