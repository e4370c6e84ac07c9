#include "store/store_file.h"
#include "tests/support/examples.h"
#include "tests/support/memory_file_store.h"
#include "tests/support/standing_clock.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace vantor {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

const std::filesystem::path kPath = "/home/anna/.local/share/Vantor/shoots.json";
const std::filesystem::path kAside = "/home/anna/.local/share/Vantor/shoots.json.unreadable-20260314T093000Z";
const std::filesystem::path kChecksum = "/home/anna/.local/share/Vantor/shoots.json.checksum";

class StoreFileTest : public ::testing::Test {
protected:
    testing::MemoryFileStore m_files;
    testing::StandingClock m_clock{testing::kMorning};
    StoreFile m_file{m_files, kPath, m_clock.clock()};

    // What the store gets to see of the file; "(nothing)" when it is not asked.
    std::string load(bool makesSense = true) {
        std::string seen = "(nothing)";
        m_file.load([&](std::string_view bytes) {
            seen = bytes;
            return makesSense;
        });
        return seen;
    }
    // All files but the checksum.
    [[nodiscard]] std::map<std::filesystem::path, std::string> stored() const {
        auto files = m_files.files;
        files.erase(kChecksum);
        return files;
    }
    // Sets a file aside whose content is `garbage`.
    void setAside(const std::string& garbage) {
        m_files.files[kPath] = garbage;
        load(false);
        m_file.save("new");
    }
};

TEST_F(StoreFileTest, MissingFileHasNoBytesAndIsMadeWithItsFolderByTheFirstSave) {
    EXPECT_EQ(load(), "(nothing)");
    EXPECT_THAT(m_files.createdFolders, IsEmpty());
    m_file.save("new");
    EXPECT_THAT(m_files.createdFolders, ElementsAre(kPath.parent_path()));
    EXPECT_THAT(stored(), ElementsAre(Pair(kPath, "new")));
    EXPECT_THAT(m_files.renames, IsEmpty());
}

TEST_F(StoreFileTest, SetsAsideWhatItNeitherReadNorWrote) {
    const auto read = [this] { load(); };
    const auto misread = [this] { load(false); };
    const auto saved = [this] { m_file.save("mine"); };
    const auto unsynced = [this] {
        m_files.failsToSync = true;
        m_file.save("mine");
        m_files.failsToSync = false;
    };
    const auto gone = [this] { m_files.files.clear(); };
    const auto replaced = [this] { m_files.files[kPath] = "others'"; };
    // What is done before, and set aside by the next save.
    using Act = std::function<void()>;
    const std::vector<std::tuple<const char*, std::vector<Act>, std::string>> cases{
        {"never asked for", {}, "old"},
        {"read well", {read}, ""},
        {"read well, in a folder that could not be made",
         {read, [this] { m_files.failsToCreateFolders = true; }},
         ""},
        {"read well, and gone", {read, gone}, ""},
        {"made no sense, and gone", {misread, gone}, ""},
        {"made no sense, and does now", {misread, read}, ""},
        {"could not be read", {[this] { m_files.unreadable = {kPath}; }, read}, "old"},
        {"replaced by others", {read, replaced}, "others'"},
        {"saved, and replaced by others", {read, saved, replaced}, "others'"},
        {"saved as far as one can tell, and replaced by others", {read, unsynced, replaced}, "others'"},
    };
    for (const auto& [what, before, aside] : cases) {
        SCOPED_TRACE(what);
        m_files.files = {{kPath, "old"}};
        m_files.unreadable.clear();
        m_files.failsToCreateFolders = false;
        for (const auto& each : before)
            each();
        m_files.renames.clear();
        m_file.save("new");
        EXPECT_EQ(m_files.files.at(kPath), "new");
        EXPECT_EQ(m_files.renames.size(), aside.empty() ? 0U : 1U);
        if (!aside.empty()) {
            EXPECT_THAT(stored(), ElementsAre(Pair(kPath, "new"), Pair(kAside, aside)));
        }
    }
}

TEST_F(StoreFileTest, FileThatMadeNoSenseIsSetAsideByTheFirstSaveThatCanAndNotOverwrittenBefore) {
    m_files.files[kPath] = "garbage";
    EXPECT_EQ(load(false), "garbage");
    EXPECT_THAT(m_files.renames, IsEmpty()) << "nothing is touched before the first save";
    m_files.failsToRename = true;
    m_file.save("new");
    EXPECT_THAT(stored(), ElementsAre(Pair(kPath, "garbage")));
    EXPECT_THAT(m_files.replacements, IsEmpty());
    m_files.failsToRename = false;
    m_file.save("newer");
    EXPECT_THAT(stored(), ElementsAre(Pair(kPath, "newer"), Pair(kAside, "garbage")));
    m_clock.set({0});
    m_file.save("newest");
    EXPECT_THAT(stored(), ElementsAre(Pair(kPath, "newest"), Pair(kAside, "garbage")));
    EXPECT_THAT(m_files.renames, ElementsAre(Pair(kPath, kAside)));
}

TEST_F(StoreFileTest, KnowsSinceWhenAndWhyItIsNotSaved) {
    using Reason = FileFailure::Reason;
    EXPECT_FALSE(m_file.unsaved());
    m_files.failsToReplace = true;
    m_file.save("new");
    const auto first = m_clock.now();
    m_clock.set({first.secondsSinceReference + 60});
    m_files.failsToReplace = false;
    m_files.capacity = 0;
    m_file.save("newer");
    ASSERT_TRUE(m_file.unsaved());
    EXPECT_EQ(m_file.unsaved()->since.secondsSinceReference, first.secondsSinceReference);
    EXPECT_EQ(m_file.unsaved()->why, FileFailure{Reason::NoSpace});
    m_files.failsToCreateFolders = true;
    m_file.saveAgain();
    EXPECT_EQ(m_file.unsaved()->why, FileFailure{Reason::NotPermitted}) << "it has no folder";
    m_files.capacity.reset();
    m_files.failsToCreateFolders = false;
    m_file.saveAgain();
    EXPECT_FALSE(m_file.unsaved());
    EXPECT_THAT(stored(), ElementsAre(Pair(kPath, "newer")));
    m_files.failsToSync = true;
    m_file.save("newest");
    ASSERT_TRUE(m_file.unsaved());
    EXPECT_EQ(m_file.unsaved()->since.secondsSinceReference, m_clock.now().secondsSinceReference);
    EXPECT_EQ(m_file.unsaved()->why, FileFailure{Reason::NotDurable});
}

TEST_F(StoreFileTest, WhatIsNotSavedYetIsLoadedInsteadOfTheFile) {
    m_files.files[kPath] = "old";
    load();
    m_files.failsToReplace = true;
    m_file.save("new");
    EXPECT_EQ(load(), "new");
    m_files.failsToReplace = false;
    m_file.saveAgain();
    EXPECT_THAT(stored(), ElementsAre(Pair(kPath, "new")));
    const auto saves = m_files.replacements.size();
    m_file.saveAgain();
    EXPECT_EQ(m_files.replacements.size(), saves) << "all is saved";
}

TEST_F(StoreFileTest, OnlyTheLastFiveFilesSetAsideAreKeptAndNoneGoesForOneThatCouldNotBe) {
    m_files.files[kPath.parent_path() / "catalog.json.unreadable-20250314T093000Z"] = "another store's";
    for (int day = 0; day < 8; ++day) {
        m_clock.set({testing::kMorning.secondsSinceReference + day * 86400});
        m_files.failsToRename = day == 7;
        setAside("garbage " + std::to_string(day));
    }
    std::vector<std::string> kept;
    for (const auto& [path, bytes] : stored())
        kept.push_back(bytes);
    EXPECT_THAT(kept, ElementsAre("another store's", "garbage 7", "garbage 2", "garbage 3", "garbage 4",
                                  "garbage 5", "garbage 6"));
}

TEST_F(StoreFileTest, WhatStartsManyTimesInOneSecondLosesTheOldestFilesSetAside) {
    for (int start = 0; start < 7; ++start) {
        setAside("garbage " + std::to_string(start));
        EXPECT_EQ(stored().size(), static_cast<std::size_t>(std::min(start + 2, 6)))
            << "none takes the place of another";
    }
    EXPECT_THAT(stored(), Contains(Pair(::testing::_, "garbage 6")));
    EXPECT_THAT(stored(), ::testing::Not(Contains(Pair(::testing::_, "garbage 0"))));
}

TEST_F(StoreFileTest, KnowsWhatSomethingElseHasChangedAndBlamesNobodyForItsOwnSaves) {
    using Loaded = StoreFile::Loaded;
    const auto put = [this](const char* bytes) { return [this, bytes] { m_files.files[kPath] = bytes; }; };
    const auto saveLarge = [&] {
        m_files.leave(100);
        m_file.save(std::string(1000, 'x'));
        m_file.saveAgain();
    };
    const std::vector<std::tuple<const char*, std::function<void()>, Loaded>> cases{
        {"nothing", [] {}, Loaded::Read},
        {"changed by others", put("others'"), Loaded::ReadChanged},
        {"one of long ago put back", put("one"), Loaded::ReadChanged},
        {"cut short before the file was replaced", put("two"), Loaded::Read},
        {"damaged", put("garbage"), Loaded::Unreadable},
        {"gone", [&] { m_files.files.erase(kPath); }, Loaded::Missing},
        {"no checksum",
         [&] {
             m_files.files = {{kPath, "others'"}};
         },
         Loaded::Read},
        {"no room for the checksum",
         [&] {
             m_files.leave(10);
             m_file.save("four");
         },
         Loaded::Read},
        {"no room but for the checksum, however often it is tried", saveLarge, Loaded::Read},
        {"the same, of a file that had no checksum",
         [&] {
             m_files.files = {{kPath, "old"}};
             load();
             saveLarge();
         },
         Loaded::Read},
    };
    for (const auto& [what, harm, loaded] : cases) {
        m_files.capacity.reset();
        for (const auto* const content : {"one", "two", "three"})
            m_file.save(content);
        harm();
        StoreFile next(m_files, kPath);
        EXPECT_EQ(next.loaded(), Loaded::NotYet);
        next.load([](std::string_view bytes) { return bytes != "garbage"; });
        EXPECT_EQ(next.loaded(), loaded) << what;
        m_files.files.clear();
    }
}

} // namespace
} // namespace vantor
