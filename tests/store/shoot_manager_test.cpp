#include "model/shoot_json.h"
#include "store/shoot_manager.h"
#include "tests/store/shoot_manager_fixture.h"
#include "tests/support/lone_stores.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <optional>

namespace vantor {
namespace {

using testing::differences;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using Change = Aspect;

class ShootManagerTest : public testing::ShootManagerFixture {
protected:
    // What is announced while `act` runs.
    std::vector<Change> announcedBy(const std::function<void()>& act) {
        std::vector<Change> all;
        const auto listening = m_manager.willChange().connect([&](Change change) { all.push_back(change); });
        act();
        return all;
    }
};

TEST_F(ShootManagerTest, BeginsEmptyAndReadsNothing) {
    EXPECT_THAT(m_manager.shoots(), IsEmpty());
    EXPECT_FALSE(m_manager.activeShootId());
    EXPECT_FALSE(m_manager.activeSetId());
    EXPECT_EQ(m_manager.activeShoot(), nullptr);
    EXPECT_EQ(m_manager.activeSet(), nullptr);
    EXPECT_THAT(m_files.reads, IsEmpty());
}

TEST_F(ShootManagerTest, AddingToAnUnknownShootChangesNothingAndWritesNoFile) {
    newShoot("a");
    EXPECT_EQ(savesOf([&] { EXPECT_THAT(announcedBy([&] { newSet(Uuid::random(), "1"); }), IsEmpty()); }),
              0U);
    EXPECT_THAT(m_manager.shoots().front().sets, IsEmpty());
}

TEST_F(ShootManagerTest, NewestSetComesFirst) {
    const auto a = newShoot("a");
    EXPECT_EQ(savesOf([&] { newSet(a, "A"); }), 1U);
    EXPECT_EQ(savesOf([&] { newSet(a, "B"); }), 1U);
    EXPECT_THAT(numbers(a), ElementsAre("B", "A"));
    EXPECT_FALSE(m_manager.activeSetId()) << "adding does not activate";
}

TEST_F(ShootManagerTest, AddsToTheShootThatIsNamedWhicheverIsActive) {
    const auto a = newShoot("a");
    const auto b = newShoot("b");
    newSet(a, "1");
    EXPECT_THAT(numbers(a), ElementsAre("1"));
    EXPECT_THAT(numbers(b), IsEmpty());
    EXPECT_EQ(m_manager.activeShootId(), b);
}

TEST_F(ShootManagerTest, AddedShootComesFirstAndIsActiveAndSaved) {
    newShoot("a");
    EXPECT_EQ(savesOf([&] { newShoot("b"); }), 1U);
    EXPECT_EQ(m_manager.shoots()[0].name, "b");
    EXPECT_EQ(m_manager.shoots()[1].name, "a");
    EXPECT_EQ(m_manager.activeShootId(), m_manager.shoots()[0].id);
}

TEST_F(ShootManagerTest, UpdateReplacesTheWholeSetWhereverItIs) {
    const auto a = newShoot("a");
    const auto b = newShoot("b");
    newSet(a, "1");
    const auto wanted = newSet(a, "2");
    newSet(a, "3");
    newSet(b, "4");
    auto updated = testing::troublesomeSet();
    EXPECT_EQ(savesOf([&] { m_manager.updateSet(wanted, updated); }), 1U);
    EXPECT_THAT(numbers(a), ElementsAre("3", "12b", "1"));
    EXPECT_EQ(differences(shoot(a).sets[1], updated), "") << "all nine fields, the id too";
    EXPECT_THAT(numbers(b), ElementsAre("4"));
}

TEST_F(ShootManagerTest, UpdateReplacesTheFirstOfEqualIdsOnly) {
    const auto a = newShoot("a");
    const auto twin = newSet(a, "1");
    auto same = shoot(a).sets[0];
    same.setNumber = "2";
    const auto b = newShoot("b");
    m_manager.addSet(b, same);
    same.setNumber = "3";
    m_manager.updateSet(twin, same);
    EXPECT_THAT(numbers(b), ElementsAre("3"));
    EXPECT_THAT(numbers(a), ElementsAre("1"));
}

TEST_F(ShootManagerTest, UpdateOfAnUnknownSetDoesNothing) {
    const auto a = newShoot("a");
    newSet(a, "1");
    EXPECT_EQ(savesOf([&] {
                  EXPECT_THAT(announcedBy([&] { m_manager.updateSet(Uuid::random(), {}); }), IsEmpty());
              }),
              0U);
    EXPECT_THAT(numbers(a), ElementsAre("1"));
}

TEST_F(ShootManagerTest, DeletesASetFromEveryShootAndKeepsTheLog) {
    const auto a = newShoot("a");
    newSet(a, "1");
    const auto gone = newSet(a, "2");
    newSet(a, "3");
    m_manager.activateSet(gone);
    auto same = shoot(a).sets[1];
    const auto b = newShoot("b");
    m_manager.addSet(b, same);
    EXPECT_EQ(savesOf([&] { m_manager.deleteSet(gone); }), 1U);
    EXPECT_THAT(numbers(a), ElementsAre("3", "1"));
    EXPECT_THAT(numbers(b), IsEmpty());
    EXPECT_THAT(logged(a), ElementsAre(gone));
}

TEST_F(ShootManagerTest, DeletingSavesEvenWhenNothingWasRemoved) {
    EXPECT_EQ(savesOf([&] { m_manager.deleteSet(Uuid::random()); }), 1U);
    EXPECT_EQ(savesOf([&] { m_manager.deleteShoot(Uuid::random()); }), 1U);
}

TEST_F(ShootManagerTest, DeletingTheActiveSetClearsItAndDeletingAnotherLeavesIt) {
    const auto a = newShoot("a");
    const auto one = newSet(a, "1");
    const auto two = newSet(a, "2");
    m_manager.activateSet(one);
    m_manager.deleteSet(two);
    EXPECT_EQ(m_manager.activeSetId(), one);
    m_manager.deleteSet(one);
    EXPECT_FALSE(m_manager.activeSetId());
}

TEST_F(ShootManagerTest, DeletingTheOnlyShootLeavesNoneActive) {
    const auto a = newShoot("a");
    EXPECT_EQ(savesOf([&] { m_manager.deleteShoot(a); }), 1U);
    EXPECT_THAT(m_manager.shoots(), IsEmpty());
    EXPECT_FALSE(m_manager.activeShootId());
}

TEST_F(ShootManagerTest, DeletingTheActiveShootActivatesTheOneInFront) {
    newShoot("a");
    const auto b = newShoot("b");
    const auto c = newShoot("c");
    m_manager.setActiveShootId(b);
    m_manager.deleteShoot(b);
    EXPECT_EQ(m_manager.activeShootId(), c);
    EXPECT_EQ(m_manager.shoots().size(), 2U);
}

TEST_F(ShootManagerTest, DeletingAnotherShootLeavesTheActiveOne) {
    const auto a = newShoot("a");
    const auto b = newShoot("b");
    m_manager.deleteShoot(a);
    EXPECT_EQ(m_manager.activeShootId(), b);
}

TEST_F(ShootManagerTest, DeletingAShootLeavesTheIdOfItsActiveSet) {
    newShoot("b");
    const auto a = newShoot("a");
    const auto one = newSet(a, "1");
    m_manager.activateSet(one);
    m_manager.deleteShoot(a);
    EXPECT_EQ(m_manager.activeSetId(), one);
    EXPECT_EQ(m_manager.activeSet(), nullptr);
}

TEST_F(ShootManagerTest, ActivatingAnIdThatNoShootHoldsMakesItActiveWithoutLogOrFile) {
    const auto a = newShoot("a");
    const auto nobody = Uuid::random();
    EXPECT_EQ(savesOf([&] { m_manager.activateSet(nobody); }), 0U);
    EXPECT_EQ(m_manager.activeSetId(), nobody);
    EXPECT_EQ(m_manager.activeShootId(), a);
    EXPECT_THAT(logged(a), IsEmpty());
    EXPECT_EQ(m_manager.activeSet(), nullptr);
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
    EXPECT_THAT(logged(a), ElementsAre(one));
    EXPECT_EQ(shoot(a).activationLog[0].activatedAt.secondsSinceReference, 42.5);
    EXPECT_THAT(logged(b), IsEmpty());
}

TEST_F(ShootManagerTest, ActivatingTheSameSetTwiceIsLoggedTwice) {
    const auto a = newShoot("a");
    const auto one = newSet(a, "1");
    m_manager.activateSet(one);
    m_clock.set({testing::kMorning.secondsSinceReference + 1});
    m_manager.activateSet(one);
    EXPECT_THAT(logged(a), ElementsAre(one, one));
    EXPECT_LT(shoot(a).activationLog[0].activatedAt.secondsSinceReference,
              shoot(a).activationLog[1].activatedAt.secondsSinceReference);
    EXPECT_EQ(shoot(a).sets[0].taggedCount, 0);
}

TEST_F(ShootManagerTest, ActiveSetIsNeverOneOfAnotherShoot) {
    const auto a = newShoot("a");
    const auto one = newSet(a, "1");
    m_manager.activateSet(one);
    newShoot("b");
    EXPECT_EQ(m_manager.activeSetId(), one);
    EXPECT_EQ(m_manager.activeSet(), nullptr);
    m_manager.setActiveShootId(std::nullopt);
    EXPECT_EQ(m_manager.activeShoot(), nullptr);
    EXPECT_EQ(m_manager.activeSet(), nullptr);
}

TEST_F(ShootManagerTest, MissingFileGivesAnEmptyStoreAndIsNotSetAside) {
    m_manager.load();
    EXPECT_THAT(m_manager.shoots(), IsEmpty());
    EXPECT_FALSE(m_manager.activeShootId());
    EXPECT_EQ(saves(), 0U);
    m_manager.save();
    EXPECT_EQ(saved(), "[]");
    EXPECT_THAT(m_files.renames, IsEmpty());
}

TEST_F(ShootManagerTest, CorruptFileGivesAnEmptyStoreAndIsSetAsideByTheNextChange) {
    m_files.files[m_path] = "[{\"client\":";
    m_manager.load();
    EXPECT_THAT(m_manager.shoots(), IsEmpty());
    EXPECT_EQ(saves(), 0U);
    const auto a = newShoot("a");
    newSet(a, "1");
    newSet(a, "2");
    EXPECT_EQ(m_files.files.at(aside()), "[{\"client\":");
    EXPECT_EQ(m_files.renames.size(), 1U);
    testing::LoneShoots other(&m_file);
    other.load();
    EXPECT_EQ(differences(other.shoots(), m_manager.shoots()), "");
}

TEST_F(ShootManagerTest, UnreadableFileLeavesTheStoreAsItWas) {
    m_files.files[m_path] = data("shoots.json");
    m_manager.load();
    const auto before = m_manager.shoots();
    m_manager.setActiveShootId(testing::numberedId(2));
    for (const std::string& bad :
         {std::string(), std::string("{}"), std::string("[{}]"), std::string(100, '\0'),
          data("shoots.json") + "]", data("catalog.json"), std::string(1'000'000, '[')}) {
        m_files.files[m_path] = bad;
        EXPECT_THAT(announcedBy([&] { m_manager.load(); }), IsEmpty());
        EXPECT_EQ(differences(m_manager.shoots(), before), "");
        EXPECT_EQ(m_manager.activeShootId(), testing::numberedId(2));
    }
}

TEST_F(ShootManagerTest, FileCutOffAnywhereIsNeverHalfRead) {
    const auto whole = data("shoots.json");
    for (std::size_t length = 0; length < whole.size(); ++length) {
        m_files.files[m_path] = whole.substr(0, length);
        m_manager.load();
        ASSERT_THAT(m_manager.shoots(), IsEmpty()) << length;
    }
}

TEST_F(ShootManagerTest, FirstShootIsActiveAfterLoadingWhicheverWasBefore) {
    newShoot("a");
    const auto b = newShoot("b");
    const auto a = m_manager.shoots()[1].id;
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
}

TEST_F(ShootManagerTest, LoadingAnEmptyListLeavesNoShootActive) {
    newShoot("a");
    m_files.files[m_path] = " [ ] ";
    m_manager.load();
    EXPECT_THAT(m_manager.shoots(), IsEmpty());
    EXPECT_FALSE(m_manager.activeShootId());
}

TEST_F(ShootManagerTest, FileIsWrittenAsEver) {
    const auto shoots = testing::storedShoots();
    m_manager.insertShoot(shoots[1]);
    m_manager.insertShoot(shoots[0]);
    m_manager.save();
    EXPECT_EQ(saved(), data("shoots.json"));
}

TEST_F(ShootManagerTest, FileIsReadAsEver) {
    for (const auto* name : {"shoots.json", "shoots_other_writer.json"}) {
        m_files.files[m_path] = data(name);
        m_manager.load();
        EXPECT_EQ(differences(m_manager.shoots(), testing::storedShoots()), "") << name;
    }
    m_manager.save();
    EXPECT_EQ(saved(), data("shoots.json"));
}

TEST_F(ShootManagerTest, FileOfAnEarlierVersionIsRead) {
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
    EXPECT_EQ(differences(m_manager.shoots(), expected), "");
}

TEST_F(ShootManagerTest, SavingFailuresLeaveTheStoreAsItIs) {
    m_files.failsToReplace = true;
    const auto a = newShoot("a");
    newSet(a, "1");
    EXPECT_THAT(numbers(a), ElementsAre("1"));
    EXPECT_THAT(m_files.files, IsEmpty());
    m_files.failsToReplace = false;
    newSet(a, "2");
    EXPECT_NE(saved().find("\"setNumber\":\"1\""), std::string::npos);
}

TEST_F(ShootManagerTest, StoreWithoutAFileWorksAndWritesNothing) {
    testing::LoneShoots manager;
    manager.load();
    auto made = Shoot::make("a", "", "", {});
    const auto a = made.id;
    manager.insertShoot(std::move(made));
    manager.setActiveShootId(a);
    EXPECT_EQ(manager.importCSV("Set;Merk\n1;Nike", a), 1);
    EXPECT_TRUE(manager.handleScanInput("SET:2"));
    EXPECT_TRUE(manager.importShoot(*manager.exportJSON(a)));
    manager.save();
    manager.load();
    EXPECT_EQ(manager.shoots().size(), 2U);
    EXPECT_EQ(manager.shoots()[1].sets.size(), 2U);
    EXPECT_EQ(saves(), 0U);
}

TEST_F(ShootManagerTest, AnnouncesEveryChangeBeforeItTakesEffect) {
    const auto a = newShoot("a");
    const auto one = newSet(a, "1");
    struct State {
        std::vector<Shoot> shoots;
        std::optional<Uuid> activeShoot;
        std::optional<Uuid> activeSet;
        std::size_t saves;
    };
    const auto now = [&] {
        return State{m_manager.shoots(), m_manager.activeShootId(), m_manager.activeSetId(), saves()};
    };
    State before;
    bool heard = false;
    // Each kind of change is announced while what it is about still is as before the operation.
    const auto listening = m_manager.willChange().connect([&](Change change) {
        heard = true;
        EXPECT_EQ(saves(), before.saves);
        if (change == Change::Shoots)
            EXPECT_EQ(differences(m_manager.shoots(), before.shoots), "");
        else if (change == Change::ActiveShootId)
            EXPECT_EQ(m_manager.activeShootId(), before.activeShoot);
        else
            EXPECT_EQ(m_manager.activeSetId(), before.activeSet);
    });
    const auto file = data("shoots.json");
    const std::vector<std::pair<std::string, std::function<void()>>> operations{
        {"insertShoot", [&] { m_manager.insertShoot(Shoot::make("b", "", "", {})); }},
        {"setActiveShootId", [&] { m_manager.setActiveShootId(m_manager.shoots()[0].id); }},
        {"activateSet", [&] { m_manager.activateSet(one); }},
        {"addSet", [&] { newSet(a, "2"); }},
        {"updateSet", [&] { m_manager.updateSet(one, shoot(a).sets[0]); }},
        {"deleteSet", [&] { m_manager.deleteSet(one); }},
        {"importShoot", [&] { m_manager.importShoot(*m_manager.exportJSON(a)); }},
        {"deleteShoot", [&] { m_manager.deleteShoot(*m_manager.activeShootId()); }},
        {"load", [&] { m_manager.load(); }},
    };
    for (const auto& [name, operation] : operations) {
        SCOPED_TRACE(name);
        before = now();
        heard = false;
        operation();
        EXPECT_TRUE(heard);
    }
}

TEST_F(ShootManagerTest, TellsWhatIsAboutToChange) {
    const auto a = newShoot("a");
    const auto one = newSet(a, "1");
    using C = Change;
    EXPECT_THAT(announcedBy([&] { newSet(a, "2"); }), ElementsAre(C::Shoots));
    EXPECT_THAT(announcedBy([&] { m_manager.activateSet(one); }),
                ElementsAre(C::ActiveSetId, C::ActiveShootId, C::Shoots));
    EXPECT_THAT(announcedBy([&] { m_manager.deleteSet(one); }), ElementsAre(C::Shoots, C::ActiveSetId));
    EXPECT_THAT(announcedBy([&] { m_manager.deleteShoot(a); }), ElementsAre(C::Shoots, C::ActiveShootId));
    EXPECT_THAT(announcedBy([&] { m_manager.load(); }), ElementsAre(C::Shoots, C::ActiveShootId));
    EXPECT_THAT(announcedBy([&] { m_manager.save(); }), IsEmpty());
}

TEST_F(ShootManagerTest, WritesItsWholeStateAfterEveryChange) {
    const auto check = [&] {
        const auto read = readShoots(saved(), DateForm::SecondsSinceReference);
        ASSERT_TRUE(read);
        EXPECT_EQ(differences(*read, m_manager.shoots()), "");
    };
    const auto a = newShoot("a");
    const auto one = newSet(a, "1");
    check();
    m_manager.updateSet(one, testing::troublesomeSet());
    check();
    m_manager.activateSet(testing::troublesomeSet().id);
    check();
    m_manager.deleteSet(testing::troublesomeSet().id);
    check();
    m_manager.deleteShoot(a);
    check();
}

} // namespace
} // namespace vantor
