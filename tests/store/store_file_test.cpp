#include "store/store_file.h"
#include "tests/support/examples.h"
#include "tests/support/memory_file_store.h"
#include "tests/support/standing_clock.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vantor {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

const std::filesystem::path kPath = "/home/anna/.local/share/Vantor/shoots.json";
const std::filesystem::path kAside = "/home/anna/.local/share/Vantor/shoots.json.unreadable-20260314T093000Z";

class StoreFileTest : public ::testing::Test {
protected:
    testing::MemoryFileStore m_files;
    testing::StandingClock m_clock{testing::kMorning};
    StoreFile m_file{m_files, kPath, m_clock.clock()};
};

TEST_F(StoreFileTest, MissingFileHasNoBytesAndIsMadeWithItsFolderByTheFirstSave) {
    EXPECT_FALSE(m_file.load());
    EXPECT_THAT(m_files.createdFolders, IsEmpty());
    m_file.save("new");
    EXPECT_THAT(m_files.createdFolders, ElementsAre(kPath.parent_path()));
    EXPECT_THAT(m_files.files, ElementsAre(Pair(kPath, "new")));
    EXPECT_THAT(m_files.renames, IsEmpty());
}

TEST_F(StoreFileTest, ReadableFileIsReplaced) {
    m_files.files[kPath] = "old";
    EXPECT_EQ(m_file.load(), "old");
    m_file.save("new");
    EXPECT_THAT(m_files.files, ElementsAre(Pair(kPath, "new")));
}

TEST_F(StoreFileTest, FileThatMadeNoSenseIsSetAsideByTheFirstSaveAndOnlyByThat) {
    m_files.files[kPath] = "garbage";
    EXPECT_EQ(m_file.load(), "garbage");
    m_file.markUnreadable();
    EXPECT_THAT(m_files.renames, IsEmpty()) << "nothing is touched before the first save";
    m_file.save("new");
    EXPECT_THAT(m_files.files, ElementsAre(Pair(kPath, "new"), Pair(kAside, "garbage")));
    m_clock.set({0});
    m_file.save("newer");
    EXPECT_THAT(m_files.files, ElementsAre(Pair(kPath, "newer"), Pair(kAside, "garbage")));
    EXPECT_THAT(m_files.renames, ElementsAre(Pair(kPath, kAside)));
}

TEST_F(StoreFileTest, FileThatCannotBeReadIsSetAside) {
    m_files.files[kPath] = "secret";
    m_files.unreadable = {kPath};
    EXPECT_FALSE(m_file.load());
    m_file.save("new");
    EXPECT_THAT(m_files.files, ElementsAre(Pair(kPath, "new"), Pair(kAside, "secret")));
}

TEST_F(StoreFileTest, FileThatCannotBeSetAsideIsNotOverwritten) {
    m_files.files[kPath] = "garbage";
    EXPECT_TRUE(m_file.load());
    m_file.markUnreadable();
    m_files.failsToRename = true;
    m_file.save("new");
    EXPECT_THAT(m_files.files, ElementsAre(Pair(kPath, "garbage")));
    EXPECT_THAT(m_files.replacements, IsEmpty());
    m_files.failsToRename = false;
    m_file.save("newer");
    EXPECT_THAT(m_files.files, ElementsAre(Pair(kPath, "newer"), Pair(kAside, "garbage")));
}

TEST_F(StoreFileTest, UnreadableFileThatIsGoneByNowIsNoHindrance) {
    m_files.files[kPath] = "garbage";
    EXPECT_TRUE(m_file.load());
    m_file.markUnreadable();
    m_files.files.clear();
    m_file.save("new");
    EXPECT_THAT(m_files.files, ElementsAre(Pair(kPath, "new")));
}

TEST_F(StoreFileTest, FileSetAsideEarlierInTheSameSecondIsKept) {
    m_files.files[kAside] = "earlier garbage";
    m_files.files[kPath] = "garbage";
    EXPECT_TRUE(m_file.load());
    m_file.markUnreadable();
    m_file.save("new");
    EXPECT_EQ(m_files.files.at(kAside), "earlier garbage");
    EXPECT_EQ(m_files.files.at(kPath), "new");
    EXPECT_EQ(m_files.files.size(), 3U);
    ASSERT_EQ(m_files.renames.size(), 1U);
    EXPECT_TRUE(m_files.renames[0].second.string().starts_with(kAside.string())) << m_files.renames[0].second;
}

TEST_F(StoreFileTest, LoadingAgainForgetsThatTheFileWasUnreadable) {
    m_files.files[kPath] = "garbage";
    EXPECT_TRUE(m_file.load());
    m_file.markUnreadable();
    EXPECT_TRUE(m_file.load());
    m_file.save("new");
    EXPECT_THAT(m_files.files, ElementsAre(Pair(kPath, "new")));
}

TEST_F(StoreFileTest, FailuresAreSilent) {
    m_files.files[kPath] = "old";
    m_files.failsToCreateFolders = true;
    m_file.save("new");
    EXPECT_EQ(m_files.files.at(kPath), "new") << "a folder that cannot be made may be there";
    m_files.failsToReplace = true;
    m_file.save("newer");
    EXPECT_EQ(m_files.files.at(kPath), "new");
}

} // namespace
} // namespace vantor
