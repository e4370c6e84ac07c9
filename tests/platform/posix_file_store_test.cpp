#include "platform/posix/posix_file_store.h"
#include "tests/support/read_file.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <fstream>
#include <set>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace vantor {
namespace {

namespace fs = std::filesystem;
using testing::readFile;
using testing::TemporaryFolder;
using ReadFailure = FileStore::ReadFailure;
using Access = FileStore::Access;
using Reason = FileFailure::Reason;
using Names = std::set<std::string>;

void makeFile(const fs::path& path, std::string_view bytes, mode_t mode = 0644) {
    std::ofstream(path, std::ios::binary) << bytes;
    ASSERT_EQ(::chmod(path.c_str(), mode), 0);
}

mode_t modeOf(const fs::path& path) {
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    return status.st_mode & 07777;
}

// What a user without special rights may do, also where the tests run with all rights.
class AsOrdinaryUser {
public:
    AsOrdinaryUser() : m_before(::geteuid()) {
        static constexpr uid_t kNobody = 65534;
        if (m_before == 0) {
            EXPECT_EQ(::seteuid(kNobody), 0);
        }
    }
    AsOrdinaryUser(const AsOrdinaryUser&) = delete;
    AsOrdinaryUser& operator=(const AsOrdinaryUser&) = delete;
    ~AsOrdinaryUser() { EXPECT_EQ(::seteuid(m_before), 0); }

private:
    uid_t m_before;
};

// Lets no file grow beyond so many bytes, as if the disk were full there.
class FullDisk {
public:
    explicit FullDisk(rlim_t room) : m_handler(std::signal(SIGXFSZ, SIG_IGN)) {
        EXPECT_EQ(::getrlimit(RLIMIT_FSIZE, &m_before), 0);
        const rlimit limit{room, m_before.rlim_max};
        EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk() {
        EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &m_before), 0);
        std::signal(SIGXFSZ, m_handler);
    }

private:
    rlimit m_before{};
    void (*m_handler)(int);
};

class PosixFileStoreTest : public ::testing::Test {
protected:
    TemporaryFolder folder;
    PosixFileStore posix;
    const FileStore& store = posix;
};

TEST_F(PosixFileStoreTest, ReadsEveryByteAlsoThroughLinks) {
    fs::create_symlink("file", folder / "link");
    for (const auto& bytes : {std::string(), std::string("a\0b\r\n\xFF", 6)}) {
        makeFile(folder / "file", bytes);
        EXPECT_EQ(store.read(folder / "file").bytes, bytes);
        EXPECT_EQ(store.read(folder / "link").bytes, bytes);
    }
}

TEST_F(PosixFileStoreTest, ReadsAsManyBytesAsAllowedAndNoMore) {
    makeFile(folder / "file", "12345");
    EXPECT_EQ(store.read(folder / "file", 5).bytes, "12345");
    const auto expectTooLarge = [this](const fs::path& path, std::uint64_t mostBytes) {
        const auto refused = store.read(path, mostBytes);
        EXPECT_EQ(refused.bytes, std::nullopt) << path;
        EXPECT_EQ(refused.failure, ReadFailure::TooLarge) << path;
    };
    expectTooLarge(folder / "file", 4);
    // One that hides its size.
    const fs::path status = "/proc/self/status";
    if (!fs::exists(status))
        GTEST_SKIP() << "no such file system here";
    EXPECT_NE(store.read(status).bytes.value_or("").find("Pid:"), std::string::npos);
    expectTooLarge(status, 10);
}

TEST_F(PosixFileStoreTest, TellsMissingFromUnreadableAndWaitsForNoOtherEndOfAPipe) {
    makeFile(folder / "file", "");
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    fs::create_symlink("itself", folder / "itself");
    fs::create_symlink("nowhere", folder / "dangling");
    const auto expectFailure = [this](const fs::path& path, ReadFailure failure) {
        const auto result = store.read(path);
        EXPECT_EQ(result.bytes, std::nullopt) << path;
        EXPECT_EQ(result.failure, failure) << path;
    };
    for (const auto* const missing : {"nothing", "no folder/nothing", "dangling"})
        expectFailure(folder / missing, ReadFailure::Missing);
    for (const auto& unreadable : {std::string("."), std::string("file/below"), std::string("itself"),
                                   std::string("pipe"), std::string(256, 'n'), std::string("/dev/null")})
        expectFailure(folder / unreadable, ReadFailure::Unreadable);
    fs::permissions(folder.path(), fs::perms::all);
    fs::permissions(folder / "file", fs::perms::none);
    const AsOrdinaryUser user;
    EXPECT_EQ(store.read(folder / "file").failure, ReadFailure::Unreadable) << "what is not allowed";
}

TEST_F(PosixFileStoreTest, MakesFilesWithThePermissionsThatTheUserWantsAndKeepsThoseOfOldOnes) {
    const auto before = ::umask(027);
    EXPECT_TRUE(store.replace(folder / "new", "bytes"));
    EXPECT_TRUE(store.replace(folder / "empty", ""));
    ::umask(before);
    EXPECT_EQ(readFile(folder / "new"), "bytes");
    EXPECT_TRUE(fs::is_empty(folder / "empty"));
    EXPECT_EQ(folder.names(), (Names{"empty", "new"}));
    EXPECT_EQ(modeOf(folder / "new"), 0640);
    for (const mode_t mode : {0600U, 0640U, 0666U, 0755U, 0200U}) {
        makeFile(folder / "file", "old", mode);
        EXPECT_TRUE(store.replace(folder / "file", "new"));
        EXPECT_EQ(modeOf(folder / "file"), mode);
        EXPECT_EQ(readFile(folder / "file"), "new");
        fs::remove(folder / "file");
    }
}

TEST_F(PosixFileStoreTest, ReplacesTheWholeFile) {
    makeFile(folder / "file", "old and longer than the new");
    std::ifstream reader(folder / "file", std::ios::binary);
    EXPECT_TRUE(store.replace(folder / "file", "new"));
    EXPECT_EQ(readFile(folder / "file"), "new");
    EXPECT_EQ(folder.names(), Names{"file"});
    // Who opened it before still reads all of the old file.
    std::string old;
    std::getline(reader, old);
    EXPECT_EQ(old, "old and longer than the new");
}

TEST_F(PosixFileStoreTest, LetsNobodyButTheOwnerAtWhatIsTheOwnersOnly) {
    makeFile(folder / "old", "old");
    for (const auto* const name : {"old", "new"}) {
        EXPECT_TRUE(store.replace(folder / name, "bytes", Access::OwnerOnly));
        EXPECT_EQ(modeOf(folder / name), 0600) << name;
    }
    EXPECT_TRUE(store.createFolders(folder / "a/b", Access::OwnerOnly));
    const auto before = ::umask(027);
    EXPECT_TRUE(store.createFolders(folder / "c/d"));
    ::umask(before);
    for (const auto& [name, mode] : {std::pair("a", 0700), {"a/b", 0700}, {"c", 0750}, {"c/d", 0750}})
        EXPECT_EQ(modeOf(folder / name), static_cast<mode_t>(mode)) << name;
}

TEST_F(PosixFileStoreTest, HidesWhatIsBeingWrittenAsTheOldFileDid) {
    makeFile(folder / "file", "old", 0600);
    Names during;
    mode_t mode = 07777;
    EXPECT_TRUE(store.replace(folder / "file", [&](ByteSink& sink) {
        during = folder.names();
        during.erase("file");
        if (!during.empty())
            mode = modeOf(folder / *during.begin());
        return sink.write("new");
    }));
    ASSERT_EQ(during.size(), 1U);
    EXPECT_TRUE(during.begin()->starts_with(PosixFileStore::kTemporaryPrefix));
    EXPECT_EQ(mode, 0600U);
}

TEST_F(PosixFileStoreTest, WritesPiecesOfAllSizesInOrder) {
    std::string expected;
    EXPECT_TRUE(store.replace(folder / "file", [&](ByteSink& sink) {
        static constexpr std::array<std::size_t, 8> kSizes{1, 65535, 65536, 3, 200000, 0, 64, 65472};
        bool taken = true;
        for (const std::size_t size : kSizes) {
            const std::string piece(size, static_cast<char>('a' + size % 26));
            expected += piece;
            taken = taken && sink.write(piece);
        }
        return taken;
    }));
    EXPECT_TRUE(readFile(folder / "file") == expected);
}

TEST_F(PosixFileStoreTest, KeepsTheLinkAndReplacesItsTarget) {
    fs::create_directory(folder / "elsewhere");
    makeFile(folder / "elsewhere/absolute", "old");
    makeFile(folder / "elsewhere/relative", "old");
    makeFile(folder / "elsewhere/chain", "old");
    fs::create_symlink(folder / "elsewhere/absolute", folder / "to absolute");
    fs::create_symlink("elsewhere/relative", folder / "to relative");
    fs::create_symlink("../elsewhere/chain", folder / "elsewhere/to chain");
    fs::create_symlink("elsewhere/to chain", folder / "to to chain");
    fs::create_symlink("elsewhere/dangling", folder / "to dangling");
    fs::create_directory_symlink("elsewhere", folder / "folder");

    const std::vector<std::pair<std::string, std::string>> cases{
        {"to absolute", "absolute"}, {"to relative", "relative"}, {"to to chain", "chain"},
        {"to dangling", "dangling"}, {"folder/new", "new"},
    };
    const auto names = folder.names();
    for (const auto& [link, target] : cases) {
        EXPECT_TRUE(store.replace(folder / link, "new " + target)) << link;
        EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(folder / "elsewhere" / target))) << link;
        EXPECT_EQ(readFile(folder / "elsewhere" / target), "new " + target);
    }
    for (const auto* const link :
         {"to absolute", "to relative", "to to chain", "to dangling", "elsewhere/to chain"})
        EXPECT_TRUE(fs::is_symlink(folder / link)) << link;
    EXPECT_EQ(folder.names(), names);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder / "elsewhere"), {}), 6);

    // From the current folder.
    const auto before = fs::current_path();
    fs::current_path(folder.path());
    EXPECT_TRUE(store.replace("to relative", "newer"));
    fs::current_path(before);
    EXPECT_TRUE(fs::is_symlink(folder / "to relative"));
    EXPECT_EQ(readFile(folder / "elsewhere/relative"), "newer");

    for (const auto& [link, target] :
         {std::pair("itself", "itself"), {"to missing folder", "no folder/file"}, {"to folder", "."}}) {
        fs::create_symlink(target, folder / link);
        const auto all = folder.names();
        EXPECT_FALSE(store.replace(folder / link, "new")) << link;
        EXPECT_TRUE(fs::is_symlink(folder / link)) << link;
        EXPECT_EQ(folder.names(), all) << link;
    }
}

TEST_F(PosixFileStoreTest, OldFileStaysWhenTheWriterGivesUp) {
    makeFile(folder / "file", "old");
    for (const std::size_t written : {std::size_t{0}, std::size_t{10}, std::size_t{1'000'000}}) {
        const auto result = store.replace(folder / "file", [&](ByteSink& sink) {
            EXPECT_TRUE(sink.write(std::string(written, 'n')));
            return false;
        });
        EXPECT_TRUE(result.failedFor(Reason::Abandoned));
        EXPECT_FALSE(store.replace(folder / "new", [](ByteSink& sink) { return sink.write("n") && false; }));
        EXPECT_EQ(readFile(folder / "file"), "old");
        EXPECT_EQ(folder.names(), Names{"file"});
    }
}

TEST_F(PosixFileStoreTest, OldFileStaysWhenTheDiskIsFull) {
    makeFile(folder / "file", "old");
    const FullDisk disk(100'000);
    EXPECT_FALSE(store.replace(folder / "file", std::string(100'001, 'n')));
    // Small pieces are collected, so that the failure shows only at the end.
    EXPECT_FALSE(store.replace(folder / "file", [](ByteSink& sink) {
        for (int i = 0; i < 3; ++i)
            sink.write(std::string(40'000, 'n'));
        return true;
    }));
    // Once full, the sink takes nothing more.
    EXPECT_FALSE(store.replace(folder / "file", [](ByteSink& sink) {
        EXPECT_FALSE(sink.write(std::string(200'000, 'n')));
        EXPECT_FALSE(sink.write("n"));
        return true;
    }));
    EXPECT_EQ(readFile(folder / "file"), "old");
    EXPECT_EQ(folder.names(), Names{"file"});
    EXPECT_TRUE(store.replace(folder / "file", std::string(100'000, 'n')));
}

TEST_F(PosixFileStoreTest, RefusesFilesAndFoldersThatMayNotBeWritten) {
    for (const auto& [fileMode, folderMode] : {std::pair(0444U, 0777U), {0666U, 0555U}}) {
        makeFile(folder / "file", "old", fileMode);
        ASSERT_EQ(::chmod(folder.path().c_str(), folderMode), 0);
        const AsOrdinaryUser user;
        EXPECT_TRUE(store.replace(folder / "file", "new").failedFor(Reason::NotPermitted));
        if (folderMode == 0555U) {
            EXPECT_TRUE(store.replace(folder / "other", "new").failedFor(Reason::NotPermitted));
        }
        EXPECT_EQ(readFile(folder / "file"), "old");
        EXPECT_EQ(folder.names(), Names{"file"});
    }
}

// A folder that may not be read cannot be synced.
TEST_F(PosixFileStoreTest, SaysThatTheNewContentIsInPlaceButMayNotLast) {
    makeFile(folder / "file", "old", 0666);
    ASSERT_EQ(::chmod(folder.path().c_str(), 0333), 0);
    FileResult result;
    {
        const AsOrdinaryUser user;
        result = store.replace(folder / "file", "new");
        EXPECT_EQ(store.identify(folder / "file").identity, result.identity);
    }
    ASSERT_EQ(::chmod(folder.path().c_str(), 0700), 0);
    EXPECT_EQ(result.failure, (FileFailure{Reason::NotDurable, EACCES}));
    EXPECT_EQ(result.failure->systemText(), "Permission denied");
    EXPECT_EQ(readFile(folder / "file"), "new");
    EXPECT_EQ(folder.names(), Names{"file"});
}

TEST_F(PosixFileStoreTest, FollowsNoLinkThatSomebodyElsePutWhereEverybodyMay) {
    static constexpr uid_t kSomebody = 65534;
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can make a link somebody else's";
    struct Case {
        mode_t folder;
        uid_t folderOwner;
        uid_t linkOwner;
        bool isFollowed;
    };
    for (const auto& [mode, folderOwner, linkOwner, isFollowed] :
         {Case{01777, 0, kSomebody, false}, Case{01777, 0, 0, true}, Case{01777, kSomebody, kSomebody, true},
          Case{01777, kSomebody, 0, true}, Case{0777, 0, kSomebody, true}, Case{01755, 0, kSomebody, true}}) {
        const TemporaryFolder shared;
        makeFile(folder / "file", "old");
        fs::create_symlink(folder / "file", shared / "link");
        ASSERT_EQ(::lchown((shared / "link").c_str(), linkOwner, linkOwner), 0);
        ASSERT_EQ(::chown(shared.path().c_str(), folderOwner, folderOwner), 0);
        ASSERT_EQ(::chmod(shared.path().c_str(), mode), 0);
        const auto result = store.replace(shared / "link", "new");
        EXPECT_EQ(result.failedFor(Reason::NotPermitted), !isFollowed)
            << std::oct << mode << ' ' << linkOwner;
        EXPECT_EQ(readFile(folder / "file"), isFollowed ? "new" : "old");
    }
}

TEST_F(PosixFileStoreTest, TellsAFileFromEveryOtherOfItsName) {
    EXPECT_TRUE(store.identify(folder / "file").failedFor(Reason::Missing));
    const auto written = store.replace(folder / "file", "bytes").identity;
    ASSERT_TRUE(written);
    EXPECT_EQ(store.read(folder / "file").identity, written);
    EXPECT_EQ(store.identify(folder / "file").identity, written);
    fs::create_symlink("file", folder / "link");
    EXPECT_EQ(store.identify(folder / "link").identity, written);
    EXPECT_NE(store.replace(folder / "file", "bytes").identity, written);

    const auto now = store.identify(folder / "file").identity;
    fs::last_write_time(folder / "file", fs::last_write_time(folder / "file") - std::chrono::nanoseconds(1));
    EXPECT_NE(store.identify(folder / "file").identity, now) << "written to, at another time";
    const auto older = store.identify(folder / "file").identity;
    const auto time = fs::last_write_time(folder / "file");
    std::ofstream(folder / "file", std::ios::app) << "more";
    fs::last_write_time(folder / "file", time);
    EXPECT_NE(store.identify(folder / "file").identity, older) << "of another size";
}

TEST_F(PosixFileStoreTest, KnowsTheRoomOfAFolderThatIsNotThereYet) {
    const auto free = store.freeSpace(folder / "a/b");
    ASSERT_TRUE(free);
    EXPECT_LE(*free, fs::space(folder.path()).capacity);
    EXPECT_GT(*free, 0U);
    makeFile(folder / "file", "");
    EXPECT_FALSE(store.freeSpace(folder / "file/below"));
}

TEST_F(PosixFileStoreTest, RefusesPlacesThatNoFileCanTake) {
    makeFile(folder / "file", "old");
    fs::create_directory(folder / "folder");
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    const auto names = folder.names();
    using Place = std::pair<fs::path, Reason>;
    for (const auto& [place, reason] :
         {Place{folder / "pipe", Reason::NotAFile}, Place{folder / "folder", Reason::NotAFile},
          Place{folder / "folder/", Reason::NotAFile}, Place{folder / "no folder/file", Reason::Missing},
          Place{folder / "file/below", Reason::Missing}, Place{folder / "new/", Reason::NotAFile},
          Place{folder.path(), Reason::NotAFile}, Place{folder / std::string(256, 'n'), Reason::NameTooLong},
          Place{"/dev/null", Reason::NotAFile}, Place{"/dev/full", Reason::NotAFile},
          Place{"", Reason::NotAFile}}) {
        EXPECT_TRUE(store.replace(place, "new").failedFor(reason)) << place;
        EXPECT_EQ(folder.names(), names) << place;
    }
    EXPECT_EQ(readFile(folder / "file"), "old");
    EXPECT_TRUE(fs::is_fifo(folder / "pipe"));
    EXPECT_TRUE(fs::is_empty(folder / "folder"));
}

TEST_F(PosixFileStoreTest, TakesEveryName) {
    Names expected;
    std::string longest;
    while (longest.size() < 254)
        longest += "é";
    longest += "x";
    for (const auto& name : {std::string("SET-12-Merk.png"), std::string(" met spaties "),
                             std::string("geëxporteerd ½ 🧥.pdf"), std::string("-rf"),
                             std::string("new\nline"), std::string("\xFF\xFE"), std::string("'\"$(x);*?"),
                             std::string(255, 'n'), longest, std::string(".hidden")}) {
        EXPECT_TRUE(store.replace(folder / name, "bytes of " + name)) << name;
        EXPECT_TRUE(store.replace(folder / name, "new bytes of " + name)) << name;
        EXPECT_EQ(store.read(folder / name).bytes, "new bytes of " + name);
        expected.insert(name);
    }
    EXPECT_EQ(folder.names(), expected);
}

TEST_F(PosixFileStoreTest, ReadersAndWritersAtOnceSeeOnlyWholeFiles) {
    const std::string one(200'000, '1');
    const std::string other(300'000, '2');
    ASSERT_TRUE(store.replace(folder / "file", one));
    std::thread writer([&] {
        for (int i = 0; i < 20; ++i)
            EXPECT_TRUE(store.replace(folder / "file", i % 2 == 0 ? other : one));
    });
    for (int i = 0; i < 200; ++i) {
        const auto bytes = store.read(folder / "file").bytes;
        EXPECT_TRUE(bytes == one || bytes == other);
    }
    writer.join();
    EXPECT_EQ(folder.names(), Names{"file"});
}

TEST_F(PosixFileStoreTest, MakesFoldersAboveFoldersButNoneWhereAFileIs) {
    for (int i = 0; i < 2; ++i)
        EXPECT_TRUE(store.createFolders(folder / "a/b c/é"));
    EXPECT_TRUE(fs::is_directory(folder / "a/b c/é"));
    makeFile(folder / "file", "bytes");
    EXPECT_TRUE(store.createFolders(folder / "file").failedFor(Reason::NameTaken));
    EXPECT_TRUE(store.createFolders(folder / "file/below").failedFor(Reason::Missing));
    EXPECT_EQ(readFile(folder / "file"), "bytes");
}

TEST_F(PosixFileStoreTest, SetsAFileAsideForItsOwnerOnly) {
    makeFile(folder / "file", "bytes");
    fs::create_symlink("aside", folder / "link");
    EXPECT_TRUE(store.setAside(folder / "file", folder / "aside"));
    EXPECT_EQ(readFile(folder / "aside"), "bytes");
    EXPECT_EQ(modeOf(folder / "aside"), 0600);
    ASSERT_EQ(::chmod((folder / "aside").c_str(), 0644), 0);
    EXPECT_TRUE(store.setAside(folder / "link", folder / "link aside"));
    EXPECT_TRUE(fs::is_symlink(folder / "link aside"));
    EXPECT_EQ(modeOf(folder / "aside"), 0644) << "what a link leads to is not what is set aside";
    EXPECT_EQ(folder.names(), (Names{"aside", "link aside"}));

    // Nothing that is missing, nor under a name that is taken.
    makeFile(folder / "file", "bytes");
    makeFile(folder / "taken", "others");
    fs::create_directory(folder / "folder");
    fs::create_symlink("nowhere", folder / "dangling");
    const auto names = folder.names();
    for (const auto* const taken : {"taken", "folder", "dangling", "file"})
        EXPECT_TRUE(store.setAside(folder / "file", folder / taken).failedFor(Reason::NameTaken)) << taken;
    for (const auto& [from, to] : {std::pair("nothing", "something"), {"file", "no folder/file"}})
        EXPECT_TRUE(store.setAside(folder / from, folder / to).failedFor(Reason::Missing)) << from;
    EXPECT_EQ(folder.names(), names);
    EXPECT_EQ(readFile(folder / "file"), "bytes");
    EXPECT_EQ(readFile(folder / "taken"), "others");
    EXPECT_TRUE(fs::is_symlink(folder / "dangling"));
}

TEST_F(PosixFileStoreTest, ListsAndRemovesWhatStandsInAFolder) {
    makeFile(folder / "shoots.json", "[]");
    makeFile(folder / ".hidden", "");
    fs::create_directories(folder / "backups" / "inner");
    const auto names = store.list(folder.path());
    EXPECT_EQ(Names(names.begin(), names.end()), (Names{"shoots.json", ".hidden", "backups"}));
    EXPECT_TRUE(store.list(folder / "missing").empty());
    EXPECT_TRUE(store.list(folder / "shoots.json").empty());
    for (int i = 0; i < 2; ++i)
        EXPECT_TRUE(store.remove(folder / "shoots.json")) << "the second time it is not there any more";
    EXPECT_FALSE(store.remove(folder / "backups")) << "it is still there";
    EXPECT_EQ(folder.names(), (Names{".hidden", "backups"}));

    // And what an unfinished replacement left.
    const auto temporary = std::string(PosixFileStore::kTemporaryPrefix) + "01234567";
    makeFile(folder / temporary, "[");
    makeFile(folder / "backups" / temporary, "[");
    store.removeLeftovers(folder.path());
    EXPECT_EQ(folder.names(), (Names{".hidden", "backups"}));
    EXPECT_TRUE(fs::exists(folder / "backups" / temporary)) << "another folder's is not its own";
    store.removeLeftovers(folder / "missing");
}

} // namespace
} // namespace vantor
