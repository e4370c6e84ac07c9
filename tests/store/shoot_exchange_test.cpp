#include "formats/shoot_file.h"
#include "tests/store/shoot_manager_fixture.h"
#include "tests/support/generators.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

namespace vantor {
namespace {

using testing::differences;
using ::testing::ElementsAre;

// Shoot files and CSV, in and out of the store.
class ShootExchange : public testing::ShootManagerFixture {
protected:
    Uuid ibiza() {
        m_manager.insertShoot(testing::ibiza());
        return testing::ibiza().id;
    }
};

TEST_F(ShootExchange, ExportedShootComesBackAsANewOneOfToday) {
    const auto original = ibiza();
    newShoot("b");
    m_manager.activateSet(testing::noorderlicht().id);
    const auto before = shoot(original);
    std::optional<std::string> bytes;
    EXPECT_EQ(savesOf([&] { bytes = m_manager.exportJSON(original); }), 0U);
    ASSERT_TRUE(bytes);
    m_clock.set({123.5});
    std::optional<Shoot> added;
    EXPECT_EQ(savesOf([&] { added = m_manager.importShoot(*bytes); }), 1U);
    ASSERT_TRUE(added);
    ASSERT_EQ(m_manager.shoots().size(), 3U);
    EXPECT_EQ(m_manager.activeShootId(), added->id);
    EXPECT_EQ(differences(m_manager.shoots()[0], *added), "");
    EXPECT_NE(added->id, original);

    auto expected = testing::ibiza();
    expected.id = added->id;
    expected.date = {123.5};
    expected.watchFolderPath.reset();
    expected.activationLog.clear();
    ASSERT_EQ(added->sets.size(), expected.sets.size());
    for (std::size_t i = 0; i < expected.sets.size(); ++i) {
        EXPECT_NE(added->sets[i].id, expected.sets[i].id);
        expected.sets[i].id = added->sets[i].id;
    }
    EXPECT_EQ(differences(*added, expected), "") << "item ids, times and counts are kept";
    EXPECT_EQ(differences(shoot(original), before), "");
    EXPECT_EQ(m_manager.activeSetId(), testing::noorderlicht().id);

    const auto again = m_manager.importShoot(*bytes);
    EXPECT_EQ(m_manager.activeShootId(), again->id);
    EXPECT_NE(again->id, added->id) << "another one each time";
    EXPECT_NE(again->sets[0].id, added->sets[0].id);
    EXPECT_NE(again->sets[0].id, again->sets[1].id);
    EXPECT_EQ(m_manager.shoots().size(), 4U);
    EXPECT_FALSE(m_manager.exportJSON(Uuid::random()));
}

TEST_F(ShootExchange, FailedImportLeavesTheStoreAndItsFileUntouched) {
    const auto a = newShoot("a");
    newSet(a, "1");
    const auto before = m_manager.shoots();
    const auto file = saved();
    const auto savesBefore = saves();
    const auto good = writeShootFile(testing::ibiza());
    const auto heard = m_manager.willChange().connect([](Aspect) { ADD_FAILURE() << "announced"; });
    for (const auto& bad :
         {std::string(), std::string("x"), "[" + good + "]", good.substr(0, good.size() - 1), good + good,
          file, file.substr(1, file.size() - 2), std::string("{}"), std::string("null"),
          std::string(1'000'000, '['), std::string("PK\x03\x04\0\0", 6)}) {
        EXPECT_FALSE(m_manager.importShoot(bad)) << bad.substr(0, 60);
    }
    EXPECT_EQ(differences(m_manager.shoots(), before), "");
    EXPECT_EQ(m_manager.activeShootId(), a);
    EXPECT_EQ(saved(), file);
    EXPECT_EQ(saves(), savesBefore);
}

TEST_F(ShootExchange, CsvLinesComeInReverseInFrontOfEarlierSets) {
    const auto a = newShoot("a");
    newSet(a, "A");
    EXPECT_EQ(savesOf([&] { EXPECT_EQ(m_manager.importCSV("Set;Merk\n1;x\n2;y\n3;z\n", a), 3); }), 1U);
    EXPECT_THAT(numbers(a), ElementsAre("3", "2", "1", "A"));
    EXPECT_NE(saved().find("\"setNumber\":\"3\""), std::string::npos);
}

TEST_F(ShootExchange, EveryCsvLineIsAddedAgainWhenImportedAgain) {
    const auto a = newShoot("a");
    m_clock.set({99});
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(m_manager.importCSV("Set;Merk;Items\n1;Marvis;coated pants/brown, sweater/blue navy", a),
                  1);
    ASSERT_EQ(shoot(a).sets.size(), 2U);
    EXPECT_NE(shoot(a).sets[0].id, shoot(a).sets[1].id);
    EXPECT_EQ(shoot(a).sets[0].description(), "coated pants brown, sweater blue navy");
    EXPECT_EQ(shoot(a).sets[0].timestamp.secondsSinceReference, 99);
}

TEST_F(ShootExchange, CsvWithoutAnyUsableLineOrForAnUnknownShootAddsNothingAndOfAHeaderAloneSavesNothing) {
    const auto a = newShoot("a");
    for (const auto shootId : {a, Uuid::random()}) {
        for (const auto* text : {"", "Set;Merk", "Set;Merk\n\n \t\n", "\uFEFFSet;Merk\r\n"})
            EXPECT_EQ(savesOf([&] { EXPECT_EQ(m_manager.importCSV(text, shootId), 0); }), 0U) << text;
        EXPECT_EQ(savesOf([&] { EXPECT_EQ(m_manager.importCSV("x;y\n1;2\n3;4", shootId), 0); }), 1U);
    }
    EXPECT_EQ(savesOf([&] { EXPECT_EQ(m_manager.importCSV("Set;Merk\n1;x\n2;y", Uuid::random()), 2); }), 1U);
    EXPECT_THAT(numbers(a), ::testing::IsEmpty());
}

TEST_F(ShootExchange, CsvThatIsExportedComesBackInReverse) {
    const auto a = newShoot("a");
    m_manager.importCSV("Set;Merk;Email\n1;\"x;y\";a@example.com\n2;z;", a);
    const auto text = m_manager.exportCSV(a);
    EXPECT_EQ(m_manager.exportCSV(Uuid::random()), "");
    EXPECT_EQ(text, "Set;Merk;Items;Model;Locatie;Email;Getagd\n2;z;;;;;0\n1;\"x;y\";;;;a@example.com;0");
    const auto b = newShoot("b");
    EXPECT_EQ(m_manager.importCSV(text, b), 2);
    EXPECT_THAT(numbers(b), ElementsAre("1", "2"));
    EXPECT_EQ(shoot(b).sets[0].brand, "x;y");
    EXPECT_EQ(shoot(b).sets[0].email, "a@example.com");
}

RC_GTEST_PROP(ShootExchangeProperty, NoShootFileLeavesTheStoreHalfChanged, ()) {
    static const auto kGood = writeShootFile(testing::ibiza());
    const auto bytes = *rc::gen::oneOf(testing::bytes(), testing::damaged(kGood));
    testing::LoneShoots manager;
    manager.insertShoot(testing::ibiza());
    const bool imported = manager.importShoot(bytes).has_value();
    RC_ASSERT(manager.shoots().size() == (imported ? 2U : 1U));
    RC_ASSERT(manager.activeShootId().has_value() == imported);
    RC_ASSERT(differences(manager.shoots().back(), testing::ibiza()) == "");
}

RC_GTEST_PROP(ShootExchangeProperty, NoCsvOrScanIsACrash, ()) {
    const auto text = *rc::gen::oneOf(testing::bytes(), testing::text());
    testing::LoneShoots manager;
    manager.insertShoot(testing::ibiza());
    manager.setActiveShootId(testing::ibiza().id);
    const auto count = manager.importCSV("Set;Merk\n" + text, testing::ibiza().id);
    RC_ASSERT(manager.shoots()[0].sets.size() == 2U + static_cast<std::size_t>(count));
    const bool scanned = manager.handleScanInput(text).has_value();
    RC_ASSERT(manager.activeSetId().has_value() == scanned);
}

} // namespace
} // namespace vantor
