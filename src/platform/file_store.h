// FileStore: whole files, read and replaced.
//
// - A file is replaced whole or not at all: whoever reads it finds the old content or the new one, also after
//   a crash, a power cut, a full disk or an error in the middle.
// - Nothing is reported beyond success or failure; nothing throws but for want of memory, which leaves files whole too.
#pragma once

#include "platform/byte_sink.h"

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
    };

    static constexpr std::uint64_t kNoLimit = std::numeric_limits<std::uint64_t>::max();

    virtual ~FileStore() = default;

    // Reads a regular file of at most `mostBytes`. Never waits for another program, as reading a pipe would.
    [[nodiscard]] virtual ReadResult read(const std::filesystem::path& path,
                                          std::uint64_t mostBytes = kNoLimit) const = 0;

    // Replaces the file, or makes it, with what `write` puts into the sink. Its permissions are kept, and where
    // the name is a symbolic link, the link is kept and its target replaced. When `write` returns false or
    // anything fails the file stays as it was and the result is false. The folder has to exist.
    virtual bool replace(const std::filesystem::path& path,
                         const std::function<bool(ByteSink&)>& write) const = 0;
    bool replace(const std::filesystem::path& path, std::string_view bytes) const {
        return replace(path, [&](ByteSink& sink) { return sink.write(bytes); });
    }

    // Makes the folder and every missing one above it, durably; true when it is there afterwards.
    virtual bool createFolders(const std::filesystem::path& folder) const = 0;

    // Gives a file another name in its folder; false, and nothing changed, when that name is taken.
    virtual bool rename(const std::filesystem::path& from, const std::filesystem::path& to) const = 0;

    // The names of what stands in the folder, in no order; none when it cannot be read.
    [[nodiscard]] virtual std::vector<std::string> list(const std::filesystem::path& folder) const = 0;

    // Removes a file or an empty folder; false when it is still there.
    virtual bool remove(const std::filesystem::path& path) const = 0;

    // Removes from the folder what processes that were killed left of unfinished replacements. Only for a folder
    // that no other process writes to.
    virtual void removeLeftovers(const std::filesystem::path& folder) const = 0;
};

} // namespace vantor
