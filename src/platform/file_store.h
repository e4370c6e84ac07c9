// FileStore: whole files, read and replaced.
//
// - A file is replaced whole or not at all: whoever reads it finds the old content or the new one, also after
//   a crash, a power cut, a full disk or an error in the middle.
// - Failures say why. Nothing throws but for want of memory, which leaves files whole too.
#pragma once

#include "platform/byte_sink.h"
#include "platform/file_result.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantor {

class FileStore {
public:
    enum class ReadFailure {
        // No file of that name exists.
        Missing,
        // More bytes than were asked for at most.
        TooLarge,
        // It is no regular file, may not be read, or reading it failed.
        Unreadable,
    };
    struct ReadResult {
        // The file's content; absent on failure.
        std::optional<std::string> bytes;
        // Why there is none.
        ReadFailure failure = ReadFailure::Unreadable;
        // Of the file as it was when reading began.
        FileIdentity identity = {};
    };
    // Who may read and change what is made.
    enum class Access {
        // As the user has set for new files; a file that is replaced keeps its permissions.
        UsersChoice,
        // Nobody but the user, whatever the permissions were before.
        OwnerOnly,
    };
    using Write = std::function<bool(ByteSink&)>;

    static constexpr std::uint64_t kNoLimit = std::numeric_limits<std::uint64_t>::max();

    virtual ~FileStore() = default;

    // Reads a regular file of at most `mostBytes`. Never waits for another program, as reading a pipe would.
    [[nodiscard]] virtual ReadResult read(const std::filesystem::path& path,
                                          std::uint64_t mostBytes = kNoLimit) const = 0;

    // Which file has that name, links followed; the failure is Missing when none has.
    [[nodiscard]] virtual FileResult identify(const std::filesystem::path& path) const = 0;

    // Replaces the file, or makes it, with what `write` puts into the sink, and tells its identity. Where the name is a
    // symbolic link, the link is kept and its target replaced, unless the link is somebody else's in a folder where
    // everybody may place one. When `write` returns false or anything fails the file stays as it was; only after the
    // failure NotDurable it holds the new content. The folder has to exist.
    virtual FileResult replace(const std::filesystem::path& path, const Write& write,
                               Access access) const = 0;
    FileResult replace(const std::filesystem::path& path, const Write& write) const {
        return replace(path, write, Access::UsersChoice);
    }
    FileResult replace(const std::filesystem::path& path, std::string_view bytes,
                       Access access = Access::UsersChoice) const {
        return replace(
            path, [&](ByteSink& sink) { return sink.write(bytes); }, access);
    }

    // The same for what may be lost in a power cut, at a fraction of the time, and for its owner only.
    virtual FileResult replaceUnsynced(const std::filesystem::path& path, std::string_view bytes) const = 0;

    // The first bytes of a regular file, `mostBytes` of them at most; absent when it cannot be read.
    [[nodiscard]] virtual std::optional<std::string> readBeginning(const std::filesystem::path& path,
                                                                   std::size_t mostBytes) const = 0;

    // Makes the folder and every missing one above it, durably; no failure when it is there afterwards.
    virtual FileResult createFolders(const std::filesystem::path& folder, Access access) const = 0;
    FileResult createFolders(const std::filesystem::path& folder) const {
        return createFolders(folder, Access::UsersChoice);
    }

    // Gives a file another name in its folder, under which only its owner may read it. It keeps its name when the other
    // one is taken.
    virtual FileResult setAside(const std::filesystem::path& from, const std::filesystem::path& to) const = 0;

    // The bytes that the user's files may still take on the disk of the folder, which need not be there yet; absent
    // when that cannot be known.
    [[nodiscard]] virtual std::optional<std::uint64_t>
    freeSpace(const std::filesystem::path& folder) const = 0;

    // The names of what stands in the folder, in no order; none when it cannot be read.
    [[nodiscard]] virtual std::vector<std::string> list(const std::filesystem::path& folder) const = 0;

    // Removes a file or an empty folder; false when it is still there.
    virtual bool remove(const std::filesystem::path& path) const = 0;

    // Removes from the folder what processes that were killed left of unfinished replacements. Only for a folder
    // that no other process writes to.
    virtual void removeLeftovers(const std::filesystem::path& folder) const = 0;
};

} // namespace vantor
