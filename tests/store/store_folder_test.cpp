#include "store/product_catalog.h"
#include "store/shoot_manager.h"
#include "store/store_folder.h"
#include "tests/support/examples.h"
#include "tests/support/memory_file_store.h"
#include "tests/support/standing_clock.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace vantor {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace fs = std::filesystem;

const fs::path kFolder = "/home/anna/.local/share/Vantor";
const fs::path kBackups = kFolder / "backups";
const fs::path kShoots = kFolder / "shoots.json";
const fs::path kToday = kBackups / "shoots-2026-03-14.json";
constexpr double kDay = 86400;

class StoreFolderTest : public ::testing::Test {
protected:
    // Background work waits until it is let go.
    void letGo() {
        for (auto& work : std::exchange(m_waiting, {}))
            work();
    }
    [[nodiscard]] StoreFolder storeFolder() {
        return {m_files, kFolder, m_clock.clock(),
                [this](std::function<void()> work) { m_waiting.push_back(std::move(work)); }};
    }
    void add(ShootManager& manager, const std::string& name) {
        manager.insertShoot(Shoot::make(name, "", "", m_clock.now()));
        manager.save();
    }
    // A whole run of the program.
    void addShoot(const std::string& name) {
        StoreFolder folder = storeFolder();
        ShootManager manager(folder.shoots(), m_clock.clock());
        manager.load();
        add(manager, name);
        letGo();
    }
    void nextDay() { m_clock.set({m_clock.now().secondsSinceReference + kDay}); }
    [[nodiscard]] std::vector<std::string> backups() const {
        auto names = m_files.list(kBackups);
        std::ranges::sort(names);
        return names;
    }
    [[nodiscard]] bool holds(const fs::path& path, const std::string& text) const {
        return m_files.files.at(path).find(text) != std::string::npos;
    }

    testing::MemoryFileStore m_files;
    testing::StandingClock m_clock{testing::kMorning};
    std::vector<std::function<void()>> m_waiting;
};

TEST_F(StoreFolderTest, ClearsBothFoldersOfUnfinishedSavesBeforeAnythingIsRead) {
    StoreFolder folder = storeFolder();
    EXPECT_THAT(m_files.cleared, ElementsAre(kFolder, kBackups));
    EXPECT_THAT(m_files.reads, IsEmpty());
}

TEST_F(StoreFolderTest, StoresLiveInTheirFiles) {
    StoreFolder folder = storeFolder();
    ShootManager(folder.shoots()).save();
    ProductCatalog(folder.catalog()).save();
    EXPECT_THAT(m_files.replacements, ElementsAre(kShoots, kFolder / "catalog.json"));
}

TEST_F(StoreFolderTest, TheFirstSaveOfANewStoreIsBackedUpInTheBackground) {
    StoreFolder folder = storeFolder();
    ShootManager manager(folder.shoots(), m_clock.clock());
    add(manager, "Texel");
    EXPECT_THAT(backups(), IsEmpty());
    letGo();
    EXPECT_THAT(backups(), ElementsAre("shoots-2026-03-14.json"));
    EXPECT_EQ(m_files.files.at(kToday), m_files.files.at(kShoots));
}

TEST_F(StoreFolderTest, WhatWasReadAtTheDaysFirstStartIsTheDaysCopy) {
    addShoot("Texel");
    nextDay();
    addShoot("Ibiza");
    EXPECT_THAT(backups(), ElementsAre("shoots-2026-03-14.json", "shoots-2026-03-15.json"));
    EXPECT_TRUE(holds(kShoots, "Ibiza"));
    EXPECT_TRUE(holds(kBackups / "shoots-2026-03-15.json", "Texel"));
    EXPECT_FALSE(holds(kBackups / "shoots-2026-03-15.json", "Ibiza"));
}

TEST_F(StoreFolderTest, ADayHasOneCopyHoweverOftenTheProgramIsStarted) {
    addShoot("Texel");
    const auto copy = m_files.files.at(kToday);
    addShoot("Ibiza");
    addShoot("Parijs");
    EXPECT_THAT(backups(), ElementsAre("shoots-2026-03-14.json"));
    EXPECT_EQ(m_files.files.at(kToday), copy);
}

TEST_F(StoreFolderTest, AProgramThatRunsOvernightBacksUpItsFirstSaveOfTheNewDay) {
    StoreFolder folder = storeFolder();
    ShootManager manager(folder.shoots(), m_clock.clock());
    add(manager, "Texel");
    add(manager, "Ibiza");
    letGo();
    nextDay();
    add(manager, "Parijs");
    letGo();
    EXPECT_THAT(backups(), ElementsAre("shoots-2026-03-14.json", "shoots-2026-03-15.json"));
    EXPECT_TRUE(holds(kBackups / "shoots-2026-03-15.json", "Parijs"));
}

TEST_F(StoreFolderTest, TheLastSevenCopiesOfEachStoreAreKept) {
    const auto foreign = kBackups / "shoots-from-anna.json";
    m_files.files[foreign] = "mine";
    m_files.files[kBackups / "catalog-2026-03-01.json"] = "a catalogue";
    for (int day = 0; day < 9; ++day) {
        addShoot("Shoot");
        nextDay();
    }
    EXPECT_THAT(backups(),
                ElementsAre("catalog-2026-03-01.json", "shoots-2026-03-16.json", "shoots-2026-03-17.json",
                            "shoots-2026-03-18.json", "shoots-2026-03-19.json", "shoots-2026-03-20.json",
                            "shoots-2026-03-21.json", "shoots-2026-03-22.json", "shoots-from-anna.json"));
}

TEST_F(StoreFolderTest, WhatCannotBeReadAsAStoreIsNoGoodCopy) {
    m_files.files[kShoots] = "garbage";
    StoreFolder folder = storeFolder();
    ShootManager manager(folder.shoots(), m_clock.clock());
    manager.load();
    letGo();
    EXPECT_THAT(backups(), IsEmpty());
}

TEST_F(StoreFolderTest, NoOldCopyGoesForANewOneThatCouldNotBeWritten) {
    for (int day = 0; day < 7; ++day) {
        addShoot("Shoot");
        nextDay();
    }
    const auto before = backups();
    m_files.failsToReplace = true;
    addShoot("Shoot");
    EXPECT_EQ(backups(), before);
}

TEST_F(StoreFolderTest, WhatCouldNotBeSavedIsNotBackedUp) {
    m_files.failsToReplace = true;
    StoreFolder folder = storeFolder();
    ShootManager manager(folder.shoots(), m_clock.clock());
    add(manager, "Texel");
    EXPECT_THAT(m_waiting, IsEmpty());
}

TEST_F(StoreFolderTest, ACopyMadeWhileTheClockIsWrongIsKeptToo) {
    for (int day = 0; day < 7; ++day) {
        addShoot("Shoot");
        nextDay();
    }
    m_clock.set({0});
    addShoot("Ibiza");
    EXPECT_TRUE(m_files.files.contains(kBackups / "shoots-2001-01-01.json"));
    EXPECT_EQ(backups().size(), 7U);
}

TEST_F(StoreFolderTest, TheCatalogueHasCopiesToo) {
    StoreFolder folder = storeFolder();
    ProductCatalog catalog(folder.catalog());
    catalog.addBrand("Noorderlicht");
    letGo();
    EXPECT_THAT(backups(), ElementsAre("catalog-2026-03-14.json"));
}

} // namespace
} // namespace vantor
