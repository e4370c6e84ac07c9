#include "platform/posix/posix_file_store.h"
#include "store/product_catalog.h"
#include "store/shoot_manager.h"
#include "store/store_folder.h"
#include "tests/support/examples.h"
#include "tests/support/manual_timer.h"
#include "tests/support/memory_file_store.h"
#include "tests/support/standing_clock.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
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
                [this](std::function<void()> work) { m_waiting.push_back(std::move(work)); }, m_timer};
    }
    void add(ShootManager& manager, const std::string& name) {
        manager.insertShoot(Shoot::make(name, "", "", m_clock.now()));
        manager.save();
    }
    // A whole run of the program.
    void addShoot(const std::string& name) {
        StoreFolder folder = storeFolder();
        ShootManager manager(&folder.shoots(), m_clock.clock());
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
    testing::ManualTimer m_timer;
    std::vector<std::function<void()>> m_waiting;
};

TEST_F(StoreFolderTest, ClearsBothFoldersOfUnfinishedSavesBeforeAnythingIsRead) {
    StoreFolder folder = storeFolder();
    EXPECT_THAT(m_files.cleared, ElementsAre(kFolder, kBackups));
    EXPECT_THAT(m_files.reads, IsEmpty());
}

TEST_F(StoreFolderTest, StoresLiveInTheirFiles) {
    StoreFolder folder = storeFolder();
    ShootManager(&folder.shoots()).save();
    ProductCatalog(&folder.catalog()).save();
    EXPECT_THAT(m_files.replacements, ElementsAre(kShoots, kFolder / "catalog.json"));
}

TEST_F(StoreFolderTest, TheFirstSaveOfANewStoreIsBackedUpInTheBackground) {
    StoreFolder folder = storeFolder();
    ShootManager manager(&folder.shoots(), m_clock.clock());
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
    ShootManager manager(&folder.shoots(), m_clock.clock());
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
    ShootManager manager(&folder.shoots(), m_clock.clock());
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
    ShootManager manager(&folder.shoots(), m_clock.clock());
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
    ProductCatalog catalog(&folder.catalog());
    catalog.addBrand("Noorderlicht");
    letGo();
    EXPECT_THAT(backups(), ElementsAre("catalog-2026-03-14.json"));
}

TEST_F(StoreFolderTest, TriesEveryFiveSecondsToSaveWhatIsNot) {
    StoreFolder folder = storeFolder();
    m_files.failsToReplace = true;
    {
        ShootManager manager(&folder.shoots(), m_clock.clock());
        add(manager, "Texel");
        add(manager, "Ibiza");
        ProductCatalog(&folder.catalog()).addBrand("Noorderlicht");
    }
    EXPECT_EQ(m_timer.starts, 1) << "a change does not put the next try off";
    EXPECT_TRUE(m_timer.repeating);
    EXPECT_EQ(m_timer.interval, std::chrono::seconds(5));
    m_timer.fire();
    EXPECT_TRUE(m_timer.interval);
    EXPECT_THAT(m_files.files, IsEmpty());
    m_files.failsToReplace = false;
    m_timer.fire();
    EXPECT_FALSE(m_timer.interval);
    EXPECT_TRUE(holds(kShoots, "Ibiza"));
    EXPECT_TRUE(holds(kFolder / "catalog.json", "Noorderlicht"));
    EXPECT_FALSE(folder.shoots().unsaved() || folder.catalog().unsaved());

    m_files.failsToReplace = true;
    ProductCatalog(&folder.catalog()).addBrand("Marvis");
    EXPECT_EQ(m_timer.starts, 2);
    m_files.failsToReplace = false;
    folder.saveAgain();
    EXPECT_FALSE(m_timer.interval) << "nothing is left to try";
    EXPECT_TRUE(holds(kFolder / "catalog.json", "Marvis"));
}

TEST_F(StoreFolderTest, ACopyIsMadeOnlyWhereThreeTimesItsSizeStaysFree) {
    StoreFolder folder = storeFolder();
    ShootManager manager(&folder.shoots(), m_clock.clock());
    manager.save();
    const auto size = m_files.files.at(kShoots).size();
    m_waiting.clear();
    nextDay();
    m_files.capacity = size + 4 * size - 1;
    manager.save();
    EXPECT_THAT(m_waiting, IsEmpty());
    m_files.capacity = size + 4 * size;
    manager.save();
    m_files.capacity = size + 4 * size - 1;
    letGo();
    EXPECT_THAT(backups(), IsEmpty()) << "the room went meanwhile";
    nextDay();
    m_files.capacity = size + 4 * size;
    manager.save();
    letGo();
    EXPECT_THAT(backups(), ElementsAre("shoots-2026-03-16.json"));
}

TEST_F(StoreFolderTest, CopiesGoOldestFirstOnlyForASaveThatWantsRoom) {
    StoreFolder folder = storeFolder();
    ShootManager manager(&folder.shoots(), m_clock.clock());
    ProductCatalog(&folder.catalog()).save();
    manager.save();
    m_waiting.clear();
    const std::string copy(1000, ' ');
    for (const auto* const name :
         {"shoots-2026-03-01.json", "shoots-2026-03-03.json", "shoots-2026-03-05.json",
          "shoots-2026-03-06.json", "shoots-2026-03-07.json", "catalog-2026-03-01.json",
          "catalog-2026-03-02.json", "catalog-2026-03-03.json", "catalog-2026-03-04.json",
          "catalog-2026-03-05.json", "mine-2026-01-01.json", "mine-2026-01-02.json", "mine-2026-01-03.json",
          "mine-2026-01-04.json", "shoots-from-annas.json"})
        m_files.files[kBackups / name] = copy;
    const auto all = backups();
    m_files.failsToReplace = true;
    add(manager, "Texel");
    EXPECT_EQ(backups(), all) << "it was not for want of room";

    // Room that is short of so many copies.
    const auto save = [&](const std::string& shoot, std::size_t copies) {
        m_files.capacity.reset();
        m_files.failsToReplace = false;
        const auto free = m_files.files.at(kShoots).size() + 500 - copies * copy.size();
        std::uint64_t taken = 0;
        for (const auto& [path, bytes] : m_files.files)
            taken += bytes.size();
        m_files.capacity = taken + free;
        add(manager, shoot);
        return !folder.shoots().unsaved() && holds(kShoots, shoot);
    };
    EXPECT_TRUE(save("Ibiza", 0));
    EXPECT_EQ(backups(), all);
    EXPECT_TRUE(save("Parijs", 3));
    EXPECT_THAT(backups(),
                ElementsAre("catalog-2026-03-03.json", "catalog-2026-03-04.json", "catalog-2026-03-05.json",
                            "mine-2026-01-01.json", "mine-2026-01-02.json", "mine-2026-01-03.json",
                            "mine-2026-01-04.json", "shoots-2026-03-03.json", "shoots-2026-03-05.json",
                            "shoots-2026-03-06.json", "shoots-2026-03-07.json", "shoots-from-annas.json"));
    EXPECT_FALSE(save("Rome", 2));
    EXPECT_EQ(backups().size(), 11U) << "the newest three of each stay";
    EXPECT_EQ(folder.shoots().unsaved()->why.reason, FileFailure::Reason::NoSpace);
}

// The folders of a computer that several people use may be open to all of them.
TEST(StoreFolderOnDisk, IsForItsOwnerOnly) {
    const testing::TemporaryFolder place;
    const auto data = place / "share" / "Vantor";
    const PosixFileStore files;
    testing::ManualTimer timer;
    {
        StoreFolder folder(
            files, data, Timestamp::now, [](const std::function<void()>& work) { work(); }, timer);
        ShootManager shoots(&folder.shoots());
        ProductCatalog(&folder.catalog()).save();
        shoots.save();
        std::ofstream(data / "shoots.json") << "others'";
        shoots.save();
    }
    std::size_t seen = 0;
    for (const auto& entry : fs::recursive_directory_iterator(place.path())) {
        const auto expected = entry.is_directory() ? fs::perms::owner_all : fs::perms(0600);
        EXPECT_EQ(entry.status().permissions(), expected) << entry.path();
        ++seen;
    }
    EXPECT_EQ(seen, 8U) << "three folders, two stores with a copy each, and what was set aside";
}

} // namespace
} // namespace vantor
