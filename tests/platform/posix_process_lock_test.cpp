#include "platform/posix/posix_process_lock.h"
#include "tests/support/read_file.h"
#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <fstream>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

namespace vantor::testing {
namespace {

using Attempt = ProcessLock::Attempt;

int noKernelLocks(int, int) {
    errno = ENOLCK;
    return -1;
}

void write(const std::filesystem::path& path, const std::string& content) {
    std::ofstream(path, std::ios::binary) << content;
}

// A process that runs `work` and then stays until it is killed.
class Child {
public:
    explicit Child(const std::function<void()>& work) {
        std::array<int, 2> ends{};
        if (::pipe(ends.data()) != 0)
            throw std::runtime_error("no pipe");
        m_process = ::fork();
        if (m_process == 0) {
            work();
            if (::write(ends[1], "!", 1) != 1)
                ::_exit(1);
            while (true)
                ::pause();
        }
        char ready = 0;
        ::close(ends[1]);
        if (::read(ends[0], &ready, 1) != 1)
            ADD_FAILURE() << "the child ended";
        ::close(ends[0]);
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child() { kill(); }

    [[nodiscard]] pid_t process() const { return m_process; }

    void kill() {
        if (m_process <= 0)
            return;
        ::kill(m_process, SIGKILL);
        ::waitpid(m_process, nullptr, 0);
        m_process = 0;
    }

private:
    pid_t m_process = 0;
};

// Each with the kernel's locks and without.
class PosixProcessLockTest : public ::testing::TestWithParam<bool> {
protected:
    [[nodiscard]] std::unique_ptr<PosixProcessLock> makeLock() const {
        return GetParam() ? std::make_unique<PosixProcessLock>(m_file)
                          : std::make_unique<PosixProcessLock>(m_file, noKernelLocks);
    }

    TemporaryFolder m_folder;
    std::filesystem::path m_file = m_folder / "Vantor" / "lock";
};

INSTANTIATE_TEST_SUITE_P(, PosixProcessLockTest, ::testing::Bool(),
                         [](const auto& test) { return test.param ? "ByTheKernel" : "ByTheFile"; });

TEST_P(PosixProcessLockTest, IsHeldByOneAtATimeAndFreeWhenItsHolderGoes) {
    const auto first = makeLock();
    auto second = makeLock();
    EXPECT_EQ(first->tryTake(), Attempt::Taken);
    EXPECT_EQ(second->tryTake(), Attempt::HeldByOther);
    EXPECT_EQ(first->tryTake(), Attempt::Taken);
    first->release();
    EXPECT_EQ(second->tryTake(), Attempt::Taken);
    EXPECT_EQ(first->tryTake(), Attempt::HeldByOther);
    second.reset();
    EXPECT_EQ(first->tryTake(), Attempt::Taken);
    for (const auto& entry : std::filesystem::directory_iterator(m_folder / "Vantor"))
        EXPECT_EQ(entry.path().filename(), "lock") << "it leaves nothing beside itself";
}

TEST_P(PosixProcessLockTest, IsTakenOverFromALivingOrStoppedProcessOnlyOnceItIsKilled) {
    Child child([&] { (void)makeLock().release()->tryTake(); });
    EXPECT_EQ(makeLock()->tryTake(), Attempt::HeldByOther);
    ::kill(child.process(), SIGSTOP);
    EXPECT_EQ(makeLock()->tryTake(), Attempt::HeldByOther);
    child.kill();
    EXPECT_EQ(makeLock()->tryTake(), Attempt::Taken);
}

TEST_P(PosixProcessLockTest, IsTakenOnceByManyAtTheSameMoment) {
    for (int round = 0; round < 5; ++round) {
        std::vector<std::unique_ptr<PosixProcessLock>> locks;
        for (int i = 0; i < 8; ++i)
            locks.push_back(makeLock());
        std::atomic<int> taken = 0;
        std::vector<std::thread> threads;
        for (const auto& lock : locks)
            threads.emplace_back([&] { taken += lock->tryTake() == Attempt::Taken ? 1 : 0; });
        for (auto& thread : threads)
            thread.join();
        EXPECT_EQ(taken, 1);
    }
}

TEST_P(PosixProcessLockTest, TellsTheOthersWhatItsHolderLeft) {
    const auto first = makeLock();
    const auto second = makeLock();
    EXPECT_EQ(second->told(), "");
    ASSERT_EQ(first->tryTake(), Attempt::Taken);
    EXPECT_EQ(second->told(), "");
    first->tell("a long place/with\na line feed and \xFF");
    EXPECT_EQ(second->told(), "a long place/with\na line feed and \xFF");
    first->tell("short");
    EXPECT_EQ(second->told(), "short");
    first->release();
    EXPECT_EQ(second->told(), "");
    first->tell("nothing");
    EXPECT_EQ(second->told(), "");
}

TEST_P(PosixProcessLockTest, IsNotInheritedByProgramsThatTheHolderStarts) {
    auto first = makeLock();
    ASSERT_EQ(first->tryTake(), Attempt::Taken);
    const auto process = ::fork();
    if (process == 0) {
        ::execlp("sleep", "sleep", "60", nullptr);
        ::_exit(1);
    }
    // Until it is that program.
    const auto name = std::filesystem::path("/proc") / std::to_string(process) / "comm";
    while (readFile(name) != "sleep\n")
        std::this_thread::yield();
    first.reset();
    EXPECT_EQ(makeLock()->tryTake(), Attempt::Taken);
    ::kill(process, SIGKILL);
    ::waitpid(process, nullptr, 0);
}

TEST_P(PosixProcessLockTest, IsTheFoldersWhereItsFileCannotBeAndNoneWhereNoFolderCanBe) {
    write(m_folder / "Vantor", "a file");
    EXPECT_EQ(makeLock()->tryTake(), Attempt::Impossible);
    std::filesystem::remove(m_folder / "Vantor");
    std::filesystem::create_directories(m_file);
    const auto expectOneAtATime = [this] {
        const auto first = makeLock();
        EXPECT_EQ(first->tryTake(), GetParam() ? Attempt::Taken : Attempt::Impossible);
        EXPECT_EQ(makeLock()->tryTake(), GetParam() ? Attempt::HeldByOther : Attempt::Impossible);
        first->tell("nothing");
        EXPECT_EQ(first->told(), "");
        // Also for one that can make the file by now.
        std::filesystem::remove(m_file);
        EXPECT_EQ(makeLock()->tryTake(), GetParam() ? Attempt::HeldByOther : Attempt::Taken);
    };
    expectOneAtATime();
    // Opening it must not wait for another end.
    std::filesystem::remove(m_file);
    ASSERT_EQ(::mkfifo(m_file.c_str(), 0600), 0);
    expectOneAtATime();
}

// --- the kernel decides, whatever the file says

TEST(PosixProcessLockByTheKernel, IsTakenThoughTheFileNamesALivingProcessAndHeldWhateverBecomesOfIt) {
    const TemporaryFolder folder;
    {
        PosixProcessLock before(folder / "before", noKernelLocks);
        ASSERT_EQ(before.tryTake(), Attempt::Taken);
        std::filesystem::copy_file(folder / "before", folder / "lock");
    }
    PosixProcessLock first(folder / "lock");
    PosixProcessLock second(folder / "lock");
    ASSERT_EQ(first.tryTake(), Attempt::Taken);
    write(folder / "lock", "");
    EXPECT_EQ(second.tryTake(), Attempt::HeldByOther);
    std::filesystem::remove(folder / "lock");
    EXPECT_EQ(second.tryTake(), Attempt::HeldByOther);
    first.release();
    EXPECT_EQ(second.tryTake(), Attempt::Taken);
}

TEST(PosixProcessLockByTheKernel, MakesAFileAndFoldersOfTheOwnersOnly) {
    const TemporaryFolder folder;
    PosixProcessLock lock(folder / "share/Vantor/lock");
    ASSERT_EQ(lock.tryTake(), Attempt::Taken);
    for (const auto& [name, mode] :
         {std::pair("share", 0700), {"share/Vantor", 0700}, {"share/Vantor/lock", 0600}}) {
        struct stat status {};
        ASSERT_EQ(::stat((folder / name).c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777, static_cast<mode_t>(mode)) << name;
    }
}

int noLocksOfFolders(int descriptor, int operation) {
    struct stat status {};
    if (::fstat(descriptor, &status) != 0 || !S_ISDIR(status.st_mode))
        return ::flock(descriptor, operation);
    errno = EBADF;
    return -1;
}

TEST(PosixProcessLockByTheKernel, NeedsNoLocksOfFolders) {
    const TemporaryFolder folder;
    PosixProcessLock first(folder / "lock", noLocksOfFolders);
    PosixProcessLock second(folder / "lock", noLocksOfFolders);
    EXPECT_EQ(first.tryTake(), Attempt::Taken);
    EXPECT_EQ(second.tryTake(), Attempt::HeldByOther);
    first.release();
    EXPECT_EQ(second.tryTake(), Attempt::Taken);
}

// --- the file decides

class StaleLock : public ::testing::Test {
protected:
    StaleLock() {
        PosixProcessLock lock(m_folder / "lock", noKernelLocks);
        EXPECT_EQ(lock.tryTake(), Attempt::Taken);
        const auto content = readFile(m_folder / "lock");
        for (std::size_t from = 0; from < content.size();) {
            const auto end = content.find('\n', from);
            m_lines.push_back(content.substr(from, end - from));
            from = end + 1;
        }
    }

    // With one of its lines changed, the lock of a living process, which this one is.
    Attempt tryAfter(std::size_t line, const std::string& text) {
        auto lines = m_lines;
        lines.at(line) = text;
        std::string content;
        for (const auto& each : lines)
            content += each + '\n';
        write(m_folder / "lock", content);
        return PosixProcessLock(m_folder / "lock", noKernelLocks).tryTake();
    }

    TemporaryFolder m_folder;
    std::vector<std::string> m_lines;
};

TEST_F(StaleLock, IsTakenOverUnlessItIsOfThatVeryLivingProcessAndMakesSense) {
    const auto ended = ::fork();
    if (ended == 0)
        ::_exit(0);
    ::waitpid(ended, nullptr, 0);
    EXPECT_EQ(tryAfter(1, std::to_string(::getpid())), Attempt::HeldByOther);
    EXPECT_EQ(tryAfter(1, std::to_string(ended)), Attempt::Taken);
    EXPECT_EQ(tryAfter(2, "1"), Attempt::Taken) << "a later process of that number";
    EXPECT_EQ(tryAfter(3, "00000000-0000-4000-8000-000000000000"), Attempt::Taken)
        << "before the machine started";
    for (const auto* const content :
         {"", "\n\n\n\n\n", "vantor-prep lock 1", "vantor-prep lock 1\nx\n1\n2\n\n",
          "vantor-prep lock 1\n-1\n1\n2\n\n"}) {
        write(m_folder / "lock", content);
        EXPECT_EQ(PosixProcessLock(m_folder / "lock", noKernelLocks).tryTake(), Attempt::Taken) << content;
    }
}

} // namespace
} // namespace vantor::testing
