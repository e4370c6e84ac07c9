#include "platform/posix/posix_process_lock.h"

#include "base/uuid.h"
#include "platform/posix/posix_file_store.h"

#include <sys/file.h>
#include <sys/stat.h>

#include <array>
#include <charconv>
#include <chrono>
#include <csignal>
#include <thread>

namespace vantor {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kFirstLine = "vantor-prep lock 1";
constexpr std::size_t kMostBytes = 16384;
// After it, nobody who found the same holder gone is still about to take over.
constexpr std::chrono::milliseconds kTakeover{100};

std::string contentOf(const fs::path& path) {
    const auto file = openFile(path, O_RDONLY | O_NONBLOCK);
    std::string content(kMostBytes, '\0');
    std::size_t length = 0;
    while (file.isOpen() && length < content.size()) {
        const auto count = uninterrupted(
            [&] { return ::read(file.number(), content.data() + length, content.size() - length); });
        if (count <= 0)
            break;
        length += static_cast<std::size_t>(count);
    }
    content.resize(length);
    return content;
}

std::string lineOf(const fs::path& path) {
    const auto content = contentOf(path);
    return content.substr(0, content.find('\n'));
}

// When a process started, in the kernel's own counting: it tells the process from a later one of the same number.
// Empty when that cannot be known.
std::string startOf(pid_t process) {
    constexpr int kFieldsBefore = 20;
    const auto content = lineOf(fs::path("/proc") / std::to_string(process) / "stat");
    // The second field is the program's name, which may hold anything.
    auto position = content.rfind(')');
    for (int i = 0; i < kFieldsBefore && position != std::string::npos; ++i)
        position = content.find(' ', position + 1);
    if (position == std::string::npos)
        return {};
    return content.substr(position + 1, content.find(' ', position + 1) - position - 1);
}

struct Holder {
    pid_t process = 0;
    std::string start;
    std::string boot;
    std::string text;

    [[nodiscard]] static Holder self() {
        return {::getpid(), startOf(::getpid()), lineOf("/proc/sys/kernel/random/boot_id"), {}};
    }

    [[nodiscard]] static std::optional<Holder> read(const fs::path& path) {
        const auto content = contentOf(path);
        std::string_view rest = content;
        const auto nextLine = [&]() -> std::optional<std::string_view> {
            const auto end = rest.find('\n');
            if (end == std::string_view::npos)
                return std::nullopt;
            const auto line = rest.substr(0, end);
            rest.remove_prefix(end + 1);
            return line;
        };
        const auto first = nextLine();
        const auto process = nextLine();
        const auto start = nextLine();
        const auto boot = nextLine();
        if (first != kFirstLine || !process || !start || !boot || !rest.ends_with('\n'))
            return std::nullopt;
        Holder holder{0, std::string(*start), std::string(*boot),
                      std::string(rest.substr(0, rest.size() - 1))};
        const auto* const end = process->data() + process->size();
        if (std::from_chars(process->data(), end, holder.process).ptr != end || holder.process <= 0)
            return std::nullopt;
        return holder;
    }

    // The text comes last, as it may hold line feeds.
    [[nodiscard]] std::string content() const {
        return std::string(kFirstLine) + '\n' + std::to_string(process) + '\n' + start + '\n' + boot + '\n' +
               text + '\n';
    }

    [[nodiscard]] bool lives() const {
        if (boot != self().boot || (::kill(process, 0) != 0 && errno != EPERM))
            return false;
        const auto now = startOf(process);
        return now.empty() || start.empty() || now == start;
    }
};

bool writeAll(int file, std::string_view bytes) {
    return uninterrupted([&] { return ::ftruncate(file, 0); }) == 0 &&
           uninterrupted([&] { return ::pwrite(file, bytes.data(), bytes.size(), 0); }) ==
               static_cast<ssize_t>(bytes.size());
}

// Whether the open file is still the one of that name: who cleans up may have removed it.
bool isAt(const Descriptor& file, const fs::path& path) {
    struct stat opened {};
    struct stat named {};
    return ::fstat(file.number(), &opened) == 0 && ::stat(path.c_str(), &named) == 0 &&
           opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

bool isRegular(const Descriptor& file) {
    struct stat status {};
    return ::fstat(file.number(), &status) == 0 && S_ISREG(status.st_mode);
}

} // namespace

PosixProcessLock::PosixProcessLock(fs::path file) : PosixProcessLock(std::move(file), ::flock) {}

PosixProcessLock::PosixProcessLock(fs::path file, KernelLock kernelLock)
    : m_file(std::move(file)),
      m_kernelLock(kernelLock) {}

PosixProcessLock::~PosixProcessLock() {
    release();
}

ProcessLock::Attempt PosixProcessLock::tryTake() {
    constexpr int kMostTries = 10;
    if (isHeld())
        return Attempt::Taken;
    PosixFileStore().createFolders(m_file.parent_path(), FileStore::Access::OwnerOnly);
    for (int tries = 0; tries < kMostTries; ++tries) {
        if (const auto attempt = tryOnce())
            return *attempt;
    }
    return Attempt::HeldByOther;
}

// Absent: the file was taken away in between.
std::optional<ProcessLock::Attempt> PosixProcessLock::tryOnce() {
    auto folder = openFile(m_file.parent_path(), O_RDONLY | O_DIRECTORY);
    if (!folder.isOpen())
        return Attempt::Impossible;
    const auto folderLocked = tryKernelLock(folder);
    if (folderLocked == false)
        return Attempt::HeldByOther;

    auto file = openFile(m_file, O_RDWR | O_CREAT | O_NONBLOCK, 0600);
    if (!file.isOpen())
        file = openFile(m_file, O_RDONLY | O_NONBLOCK);
    if (file.isOpen() && isRegular(file)) {
        const auto locked = tryKernelLock(file);
        if (locked == false)
            return Attempt::HeldByOther;
        if (!locked && !folderLocked)
            return tryWithoutKernel();
        if (!isAt(file, m_file))
            return std::nullopt;
        m_held = std::move(file);
        m_heldByKernel = true;
        writeHolder({});
    } else if (!folderLocked) {
        return Attempt::Impossible;
    }
    if (folderLocked)
        m_heldFolder = std::move(folder);
    return Attempt::Taken;
}

// Absent: there are no locks on it.
std::optional<bool> PosixProcessLock::tryKernelLock(const Descriptor& file) const {
    if (uninterrupted([&] { return m_kernelLock(file.number(), LOCK_EX | LOCK_NB); }) == 0)
        return true;
    return errno == EWOULDBLOCK ? std::optional(false) : std::nullopt;
}

ProcessLock::Attempt PosixProcessLock::tryWithoutKernel() {
    if (const auto holder = Holder::read(m_file); holder && holder->lives())
        return Attempt::HeldByOther;
    // Whoever else finds the holder gone does the same now; the last of them stays.
    auto mine = m_file;
    mine += "-" + Uuid::random().text();
    auto file = openFile(mine, O_RDWR | O_CREAT | O_EXCL, 0600);
    const bool isInPlace = file.isOpen() && writeAll(file.number(), Holder::self().content()) &&
                           uninterrupted([&] { return ::rename(mine.c_str(), m_file.c_str()); }) == 0;
    if (!isInPlace) {
        if (file.isOpen())
            ::unlink(mine.c_str());
        return Attempt::Impossible;
    }
    std::this_thread::sleep_for(kTakeover);
    if (!isAt(file, m_file))
        return Attempt::HeldByOther;
    m_held = std::move(file);
    m_heldByKernel = false;
    return Attempt::Taken;
}

void PosixProcessLock::release() {
    if (m_held.isOpen() && m_heldByKernel) {
        // Removed, it could be somebody's who opened it a moment ago.
        uninterrupted([&] { return ::ftruncate(m_held.number(), 0); });
    } else if (m_held.isOpen() && isAt(m_held, m_file)) {
        ::unlink(m_file.c_str());
    }
    m_held = Descriptor();
    m_heldFolder = Descriptor();
}

void PosixProcessLock::writeHolder(std::string_view text) {
    auto holder = Holder::self();
    holder.text = text;
    writeAll(m_held.number(), holder.content());
}

void PosixProcessLock::tell(std::string_view text) {
    if (m_held.isOpen())
        writeHolder(text);
}

std::string PosixProcessLock::told() const {
    const auto holder = Holder::read(m_file);
    return holder ? holder->text : std::string();
}

} // namespace vantor
