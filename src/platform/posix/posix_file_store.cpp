#include "platform/posix/posix_file_store.h"

#include "base/uuid.h"
#include "platform/posix/descriptor.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstdio>
#include <system_error>

namespace vantor {
namespace {

namespace fs = std::filesystem;

bool readStatus(const Descriptor& descriptor, struct stat& status) {
    return uninterrupted([&] { return ::fstat(descriptor.number(), &status); }) == 0;
}

// Collects small pieces, since a PDF writer hands over a few bytes at a time.
class DescriptorSink final : public ByteSink {
public:
    explicit DescriptorSink(int descriptor) : m_descriptor(descriptor) {}

    bool write(std::string_view bytes) override {
        if (m_pending.size() + bytes.size() < kBufferBytes) {
            m_pending += bytes;
            return !m_failed;
        }
        return flush() && writeAll(bytes);
    }

    bool flush() {
        const bool written = writeAll(m_pending);
        m_pending.clear();
        return written;
    }

private:
    static constexpr std::size_t kBufferBytes = std::size_t{64} * 1024;

    bool writeAll(std::string_view bytes) {
        while (!m_failed && !bytes.empty()) {
            const auto count =
                uninterrupted([&] { return ::write(m_descriptor, bytes.data(), bytes.size()); });
            if (count <= 0)
                m_failed = true;
            else
                bytes.remove_prefix(static_cast<std::size_t>(count));
        }
        return !m_failed;
    }

    int m_descriptor;
    std::string m_pending;
    bool m_failed = false;
};

// Where the name leads to once all symbolic links are followed, also when nothing is there yet.
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
        const auto length = uninterrupted([&] { return ::readlink(path.c_str(), text.data(), text.size()); });
        if (length < 0)
            return std::nullopt;
        const fs::path target(std::string_view(text.data(), static_cast<std::size_t>(length)));
        path = target.is_absolute() ? target : path.parent_path() / target;
    }
    return std::nullopt;
}

fs::path folderOf(const fs::path& path) {
    return path.has_parent_path() ? path.parent_path() : fs::path(".");
}

bool syncFolder(const fs::path& folder) {
    auto descriptor = openFile(folder, O_RDONLY | O_DIRECTORY);
    if (!descriptor.isOpen())
        return false;
    const int result = uninterrupted([&] { return ::fsync(descriptor.number()); });
    // File systems that keep no folders on a disk say that there is nothing to sync.
    return result == 0 || errno == EINVAL || errno == ENOTSUP;
}

// Opens the file that is to be replaced, without changing it, to learn whether it may be.
struct OldFile {
    bool mayBeReplaced = false;
    std::optional<mode_t> mode;
};

OldFile examine(const fs::path& path) {
    const auto descriptor = openFile(path, O_WRONLY | O_NONBLOCK);
    if (!descriptor.isOpen())
        return {errno == ENOENT, std::nullopt};
    struct stat status {};
    if (!readStatus(descriptor, status) || !S_ISREG(status.st_mode))
        return {};
    return {true, status.st_mode & 07777};
}

bool syncToDisk(const Descriptor& file) {
    return uninterrupted([&] { return ::fsync(file.number()); }) == 0;
}

bool writeTemporary(const fs::path& path, std::optional<mode_t> mode,
                    const std::function<bool(ByteSink&)>& write) {
    // Nobody may read here what the old file did not let him read.
    auto descriptor = openFile(path, O_WRONLY | O_CREAT | O_EXCL, mode.value_or(0666) & 0666);
    if (!descriptor.isOpen())
        return false;
    DescriptorSink sink(descriptor.number());
    if (!write(sink) || !sink.flush())
        return false;
    if (mode && uninterrupted([&] { return ::fchmod(descriptor.number(), *mode); }) != 0)
        return false;
    return syncToDisk(descriptor) && descriptor.close();
}

} // namespace

FileStore::ReadResult PosixFileStore::read(const fs::path& path, std::uint64_t mostBytes) const {
    const auto failed = [](ReadFailure why) { return ReadResult{std::nullopt, why}; };
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
    return {std::move(bytes), {}};
}

bool PosixFileStore::replace(const fs::path& path, const std::function<bool(ByteSink&)>& write) const {
    const auto target = resolved(path);
    if (!target || !target->has_filename())
        return false;
    const auto old = examine(*target);
    if (!old.mayBeReplaced)
        return false;
    const auto folder = folderOf(*target);
    const auto temporary = folder / (std::string(kTemporaryPrefix) + Uuid::random().text());
    if (!writeTemporary(temporary, old.mode, write) ||
        uninterrupted([&] { return ::rename(temporary.c_str(), target->c_str()); }) != 0) {
        uninterrupted([&] { return ::unlink(temporary.c_str()); });
        return false;
    }
    return syncFolder(folder);
}

bool PosixFileStore::createFolders(const fs::path& folder) const {
    const auto isThere = [&] {
        struct stat status {};
        return uninterrupted([&] { return ::stat(folder.c_str(), &status); }) == 0 && S_ISDIR(status.st_mode);
    };
    const auto make = [&] {
        if (uninterrupted([&] { return ::mkdir(folder.c_str(), 0777); }) != 0)
            return false;
        // A file is only as durable as the name of its folder.
        if (syncFolder(folderOf(folder)))
            return true;
        uninterrupted([&] { return ::rmdir(folder.c_str()); });
        return false;
    };
    if (isThere() || make())
        return true;
    if (errno == ENOENT && folder.has_parent_path() && createFolders(folder.parent_path()) && make())
        return true;
    // Another process may have been quicker.
    return isThere();
}

bool PosixFileStore::rename(const fs::path& from, const fs::path& to) const {
    // A hard link refuses a name that is taken, which a rename would replace.
    if (uninterrupted([&] { return ::link(from.c_str(), to.c_str()); }) == 0) {
        if (uninterrupted([&] { return ::unlink(from.c_str()); }) == 0)
            return true;
        uninterrupted([&] { return ::unlink(to.c_str()); });
        return false;
    }
    // Also a name that cannot be looked at counts as taken.
    std::error_code error;
    if (errno == EEXIST || fs::symlink_status(to, error).type() != fs::file_type::not_found)
        return false;
    return uninterrupted([&] { return ::rename(from.c_str(), to.c_str()); }) == 0;
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
