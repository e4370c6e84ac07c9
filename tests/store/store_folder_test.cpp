#include "platform/posix/posix_file_store.h"
#include "store/store_folder.h"
#include "tests/support/examples.h"
#include "tests/support/lone_stores.h"
#include "tests/support/manual_timer.h"
#include "tests/support/memory_file_store.h"
#include "tests/support/standing_clock.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

namespace vantor {
namespace {

using ::testing::IsEmpty;

namespace fs = std::filesystem;

const fs::path kFolder = "/home/anna/.local/share/Vantor";
const fs::path kShoots = kFolder / "shoots.json";

class StoreFolderTest : public ::testing::Test {
protected:
    [[nodiscard]] bool holds(const fs::path& path, const std::string& text) const {
        return m_files.files.at(path).find(text) != std::string::npos;
    }

    testing::MemoryFileStore m_files;
    testing::StandingClock m_clock{testing::kMorning};
    testing::ManualTimer m_timer;
    StoreFolder m_folder{m_files, kFolder, m_clock.clock(), [](const std::function<void()>&) {}, m_timer};
};

TEST_F(StoreFolderTest, ClearsBothFoldersOfUnfinishedSavesAndTriesEveryFiveSecondsToSaveWhatIsNot) {
    EXPECT_THAT(m_files.cleared, ::testing::ElementsAre(kFolder, kFolder / "versions"));
    EXPECT_THAT(m_files.reads, IsEmpty());
    int told = 0;
    const auto connection = m_folder.savingChanged().connect([&] { ++told; });
    m_files.failsToReplace = true;
    {
        testing::LoneShoots manager(&m_folder.shoots(), m_clock.clock());
        for (const auto* const name : {"Texel", "Ibiza"})
            manager.addShoot(Shoot::make(name, "", "", testing::kMorning));
        m_clock.set({m_clock.now().secondsSinceReference + 1});
        testing::LoneCatalog(&m_folder.catalog()).addBrand("Noorderlicht");
    }
    EXPECT_EQ(told, 3);
    EXPECT_EQ(m_folder.unsaved()->since.secondsSinceReference, testing::kMorning.secondsSinceReference)
        << "the store that waits longest";
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
    EXPECT_FALSE(m_folder.unsaved());
    EXPECT_EQ(told, 7) << "each store twice more";

    m_files.failsToReplace = true;
    testing::LoneCatalog(&m_folder.catalog()).addBrand("Marvis");
    EXPECT_EQ(m_timer.starts, 2);
    m_files.failsToReplace = false;
    m_folder.saveAgain();
    EXPECT_FALSE(m_timer.interval) << "nothing is left to try";
    EXPECT_TRUE(holds(kFolder / "catalog.json", "Marvis"));
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
        Document document(&folder.shoots(), &folder.catalog(), Timestamp::now, &folder.points());
        ShootManager(document).addShoot(Shoot::make("Texel", "", "", testing::kMorning));
        document.saveCatalog();
        std::ofstream(data / "shoots.json") << "others'";
        ShootManager(document).deleteShoot(document.library().shoots.front().id);
    }
    std::size_t seen = 0;
    for (const auto& entry : fs::recursive_directory_iterator(place.path())) {
        const auto expected = entry.is_directory() ? fs::perms::owner_all : fs::perms(0600);
        EXPECT_EQ(entry.status().permissions(), expected) << entry.path();
        ++seen;
    }
    EXPECT_EQ(seen, 9U) << "three folders, two stores and their checksums, a point, what was set aside";
}

} // namespace
} // namespace vantor
