#include "platform/posix/posix_file_store.h"

#include "base/uuid.h"
#include "platform/posix/descriptor.h"

#include <sys/stat.h>
#include <sys/statvfs.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <system_error>

namespace vantor {
namespace {

namespace fs = std::filesystem;

constexpr mode_t kOwnersFile = 0600;

FileFailure failureOf(int error) {
    using Reason = FileFailure::Reason;
    switch (error) {
    case ENOSPC:
    case EDQUOT:
        return {Reason::NoSpace, error};
    case EACCES:
    case EPERM:
        return {Reason::NotPermitted, error};
    case EROFS:
        return {Reason::ReadOnly, error};
    case ENOENT:
    case ENOTDIR:
        return {Reason::Missing, error};
    case ENAMETOOLONG:
        return {Reason::NameTooLong, error};
    case EEXIST:
        return {Reason::NameTaken, error};
    case EISDIR:
    case ENXIO:
        return {Reason::NotAFile, error};
    default:
        return {Reason::Other, error};
    }
}

// Of the system call before.
FileFailure lastFailure() {
    return failureOf(errno);
}

bool readStatus(const Descriptor& descriptor, struct stat& status) {
    return uninterrupted([&] { return ::fstat(descriptor.number(), &status); }) == 0;
}

FileIdentity identityOf(const struct stat& status) {
    return {status.st_dev, status.st_ino, static_cast<std::uint64_t>(status.st_size), status.st_mtim.tv_sec,
            status.st_mtim.tv_nsec};
}

// Collects small pieces, since a PDF writer hands over a few bytes at a time.
class DescriptorSink final : public ByteSink {
public:
    explicit DescriptorSink(int descriptor) : m_descriptor(descriptor) {}

    bool write(std::string_view bytes) override {
        if (m_pending.size() + bytes.size() < kBufferBytes) {
            m_pending += bytes;
            return !m_failure;
        }
        return flush() && writeAll(bytes);
    }

    bool flush() {
        const bool written = writeAll(m_pending);
        m_pending.clear();
        return written;
    }

    [[nodiscard]] const std::optional<FileFailure>& failure() const { return m_failure; }

private:
    static constexpr std::size_t kBufferBytes = std::size_t{64} * 1024;

    bool writeAll(std::string_view bytes) {
        while (!m_failure && !bytes.empty()) {
            const auto count =
                uninterrupted([&] { return ::write(m_descriptor, bytes.data(), bytes.size()); });
            if (count > 0)
                bytes.remove_prefix(static_cast<std::size_t>(count));
            else
                m_failure = count < 0 ? lastFailure() : FileFailure{};
        }
        return !m_failure;
    }

    int m_descriptor;
    std::string m_pending;
    std::optional<FileFailure> m_failure;
};

fs::path folderOf(const fs::path& path) {
    return path.has_parent_path() ? path.parent_path() : fs::path(".");
}

// Where everybody may place links, one of somebody else may be there to have another file of the user's replaced.
bool mayFollow(const fs::path& path, const struct stat& link) {
    struct stat folder {};
    if (uninterrupted([&] { return ::stat(folderOf(path).c_str(), &folder); }) != 0)
        return false;
    const bool isEverybodys = (folder.st_mode & S_ISVTX) != 0 && (folder.st_mode & S_IWOTH) != 0;
    errno = EACCES;
    return !isEverybodys || link.st_uid == ::geteuid() || link.st_uid == folder.st_uid;
}

// Where the name leads to once all symbolic links are followed, also when nothing is there yet. Absent: the last error
// says why.
std::optional<fs::path> resolved(fs::path path) {
    static constexpr int kMostLinks = 40;
    for (int links = 0; links < kMostLinks; ++links) {
        // Taken for no link because it could not be looked at, a link would be replaced instead of its target.
        struct stat status {};
        if (uninterrupted([&] { return ::lstat(path.c_str(), &status); }) != 0)
            return errno == ENOENT ? std::optional(path) : std::nullopt;
        if (!S_ISLNK(status.st_mode))
            return path;
        std::array<char, PATH_MAX> text{};
        if (!mayFollow(path, status))
            return std::nullopt;
        const auto length = uninterrupted([&] { return ::readlink(path.c_str(), text.data(), text.size()); });
        if (length < 0)
            return std::nullopt;
        const fs::path target(std::string_view(text.data(), static_cast<std::size_t>(length)));
        path = target.is_absolute() ? target : path.parent_path() / target;
    }
    errno = ELOOP;
    return std::nullopt;
}

std::optional<FileFailure> syncFolder(const fs::path& folder) {
    auto descriptor = openFile(folder, O_RDONLY | O_DIRECTORY);
    // File systems that keep no folders on a disk say that there is nothing to sync.
    if (!descriptor.isOpen() || (uninterrupted([&] { return ::fsync(descriptor.number()); }) != 0 &&
                                 errno != EINVAL && errno != ENOTSUP))
        return lastFailure();
    return std::nullopt;
}

// Opens the file that is to be replaced, without changing it, to learn whether it may be.
struct OldFile {
    std::optional<FileFailure> failure;
    std::optional<mode_t> mode;
};

OldFile examine(const fs::path& path) {
    const auto descriptor = openFile(path, O_WRONLY | O_NONBLOCK);
    if (!descriptor.isOpen() && errno == ENOENT)
        return {};
    struct stat status {};
    if (!descriptor.isOpen() || !readStatus(descriptor, status))
        return {lastFailure(), std::nullopt};
    if (!S_ISREG(status.st_mode))
        return {FileFailure{FileFailure::Reason::NotAFile}, std::nullopt};
    return {std::nullopt, status.st_mode & 07777};
}

bool syncToDisk(const Descriptor& file) {
    return uninterrupted([&] { return ::fsync(file.number()); }) == 0;
}

enum class Syncing { Synced, Unsynced };

FileResult writeTemporary(const fs::path& path, std::optional<mode_t> mode, const FileStore::Write& write,
                          Syncing syncing) {
    // Nobody may read here what the old file did not let him read.
    auto descriptor = openFile(path, O_WRONLY | O_CREAT | O_EXCL, mode.value_or(0666) & 0666);
    if (!descriptor.isOpen())
        return lastFailure();
    DescriptorSink sink(descriptor.number());
    if (!write(sink) || !sink.flush())
        return sink.failure().value_or(FileFailure{FileFailure::Reason::Abandoned});
    struct stat status {};
    // Closing may still change when the file was changed.
    if ((mode && uninterrupted([&] { return ::fchmod(descriptor.number(), *mode); }) != 0) ||
        (syncing == Syncing::Synced && !syncToDisk(descriptor)) || !descriptor.close() ||
        uninterrupted([&] { return ::lstat(path.c_str(), &status); }) != 0)
        return lastFailure();
    return identityOf(status);
}

FileResult replaceWhole(const fs::path& path, const FileStore::Write& write, std::optional<mode_t> wantedMode,
                        Syncing syncing) {
    const auto target = resolved(path);
    if (!target)
        return lastFailure();
    if (!target->has_filename())
        return FileFailure{FileFailure::Reason::NotAFile};
    const auto old = examine(*target);
    if (old.failure)
        return *old.failure;
    const auto folder = folderOf(*target);
    const auto temporary = folder / (std::string(PosixFileStore::kTemporaryPrefix) + Uuid::random().text());
    auto result = writeTemporary(temporary, wantedMode ? wantedMode : old.mode, write, syncing);
    if (result && uninterrupted([&] { return ::rename(temporary.c_str(), target->c_str()); }) != 0)
        result = lastFailure();
    if (!result)
        uninterrupted([&] { return ::unlink(temporary.c_str()); });
    else if (const auto failure = syncing == Syncing::Synced ? syncFolder(folder) : std::nullopt)
        result.failure = {FileFailure::Reason::NotDurable, failure->systemError};
    return result;
}

} // namespace

FileStore::ReadResult PosixFileStore::read(const fs::path& path, std::uint64_t mostBytes) const {
    const auto failed = [](ReadFailure why) { return ReadResult{std::nullopt, why, {}}; };
    // Without blocking, a named pipe opens at once and is refused below instead of waiting for a writer.
    const auto descriptor = openFile(path, O_RDONLY | O_NONBLOCK);
    if (!descriptor.isOpen())
        return failed(errno == ENOENT ? ReadFailure::Missing : ReadFailure::Unreadable);
    struct stat status {};
    if (!readStatus(descriptor, status) || !S_ISREG(status.st_mode))
        return failed(ReadFailure::Unreadable);
    if (static_cast<std::uint64_t>(status.st_size) > mostBytes)
        return failed(ReadFailure::TooLarge);

    // One byte more than the size tells the end from a file that grew meanwhile.
    std::string bytes(static_cast<std::size_t>(status.st_size) + 1, '\0');
    std::size_t length = 0;
    while (true) {
        if (length == bytes.size())
            bytes.resize(bytes.size() * 2);
        const auto count = uninterrupted(
            [&] { return ::read(descriptor.number(), bytes.data() + length, bytes.size() - length); });
        if (count < 0)
            return failed(ReadFailure::Unreadable);
        if (count == 0)
            break;
        length += static_cast<std::size_t>(count);
        if (length > mostBytes)
            return failed(ReadFailure::TooLarge);
    }
    bytes.resize(length);
    return {std::move(bytes), {}, identityOf(status)};
}

FileResult PosixFileStore::identify(const fs::path& path) const {
    struct stat status {};
    if (uninterrupted([&] { return ::stat(path.c_str(), &status); }) != 0)
        return lastFailure();
    return identityOf(status);
}

FileResult PosixFileStore::replace(const fs::path& path, const Write& write, Access access) const {
    return replaceWhole(path, write, access == Access::OwnerOnly ? std::optional(kOwnersFile) : std::nullopt,
                        Syncing::Synced);
}

FileResult PosixFileStore::replaceUnsynced(const fs::path& path, std::string_view bytes) const {
    return replaceWhole(
        path, [&](ByteSink& sink) { return sink.write(bytes); }, kOwnersFile, Syncing::Unsynced);
}

std::optional<std::string> PosixFileStore::readBeginning(const fs::path& path, std::size_t mostBytes) const {
    const auto descriptor = openFile(path, O_RDONLY | O_NONBLOCK);
    struct stat status {};
    if (!descriptor.isOpen() || !readStatus(descriptor, status) || !S_ISREG(status.st_mode))
        return std::nullopt;
    std::string bytes(mostBytes, '\0');
    std::size_t length = 0;
    while (length < mostBytes) {
        const auto count = uninterrupted(
            [&] { return ::read(descriptor.number(), bytes.data() + length, mostBytes - length); });
        if (count < 0)
            return std::nullopt;
        if (count == 0)
            break;
        length += static_cast<std::size_t>(count);
    }
    bytes.resize(length);
    return bytes;
}

FileResult PosixFileStore::createFolders(const fs::path& folder, Access access) const {
    const auto isThere = [&] {
        struct stat status {};
        return uninterrupted([&] { return ::stat(folder.c_str(), &status); }) == 0 && S_ISDIR(status.st_mode);
    };
    const auto make = [&]() -> FileResult {
        const mode_t mode = access == Access::OwnerOnly ? 0700 : 0777;
        if (uninterrupted([&] { return ::mkdir(folder.c_str(), mode); }) != 0)
            return lastFailure();
        // A file is only as durable as the name of its folder.
        const auto failure = syncFolder(folderOf(folder));
        if (!failure)
            return {};
        uninterrupted([&] { return ::rmdir(folder.c_str()); });
        return *failure;
    };
    if (isThere())
        return {};
    auto result = make();
    if (!result && result.failure->systemError == ENOENT && folder.has_parent_path()) {
        result = createFolders(folder.parent_path(), access);
        if (result)
            result = make();
    }
    // Another process may have been quicker.
    return result || !isThere() ? result : FileResult();
}

FileResult PosixFileStore::setAside(const fs::path& from, const fs::path& to) const {
    // A hard link refuses a name that is taken, which a rename would replace.
    if (uninterrupted([&] { return ::link(from.c_str(), to.c_str()); }) == 0) {
        if (uninterrupted([&] { return ::unlink(from.c_str()); }) != 0) {
            const auto failure = lastFailure();
            uninterrupted([&] { return ::unlink(to.c_str()); });
            return failure;
        }
    } else {
        // Also a name that cannot be looked at counts as taken.
        std::error_code error;
        if (errno == EEXIST || fs::symlink_status(to, error).type() != fs::file_type::not_found)
            return failureOf(EEXIST);
        if (uninterrupted([&] { return ::rename(from.c_str(), to.c_str()); }) != 0)
            return lastFailure();
    }
    // What is somebody else's stays as it is.
    struct stat status {};
    if (uninterrupted([&] { return ::lstat(to.c_str(), &status); }) == 0 && S_ISREG(status.st_mode))
        uninterrupted([&] { return ::chmod(to.c_str(), kOwnersFile); });
    return {};
}

std::optional<std::uint64_t> PosixFileStore::freeSpace(const fs::path& folder) const {
    struct statvfs status {};
    for (auto path = folder;; path = path.parent_path()) {
        if (uninterrupted([&] { return ::statvfs(path.empty() ? "." : path.c_str(), &status); }) == 0)
            break;
        if (errno != ENOENT || !path.has_relative_path())
            return std::nullopt;
    }
    // File systems that do not count say that they have no blocks at all.
    if (status.f_blocks == 0)
        return std::nullopt;
    return std::uint64_t{status.f_bavail} * status.f_frsize;
}

std::vector<std::string> PosixFileStore::list(const fs::path& folder) const {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
         entry.increment(error))
        names.push_back(entry->path().filename().string());
    return names;
}

bool PosixFileStore::remove(const fs::path& path) const {
    std::error_code error;
    fs::remove(path, error);
    return !error;
}

void PosixFileStore::removeLeftovers(const fs::path& folder) const {
    for (const auto& name : list(folder)) {
        if (name.starts_with(kTemporaryPrefix))
            remove(folder / name);
    }
}

} // namespace vantor
