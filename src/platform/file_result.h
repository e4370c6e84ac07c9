// FileResult: what became of something that was to be done with a file, and why not.
//
// A value that takes no memory of its own, so that telling a failure cannot fail.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <system_error>

namespace vantor {

struct FileFailure {
    enum class Reason {
        // The disk, or the user's share of it, is full.
        NoSpace,
        // The user may not, or may not by this way.
        NotPermitted,
        // Nobody may: the disk is there for reading only.
        ReadOnly,
        // There is no such file, or no folder for it.
        Missing,
        NameTooLong,
        // Something else has that name already.
        NameTaken,
        // It is a folder, a pipe, a device.
        NotAFile,
        // Whoever was to write the content gave up.
        Abandoned,
        // The new content stands in its place, but a power cut may still bring the old one back.
        NotDurable,
        Other,
    };
    Reason reason = Reason::Other;
    // What the system calls it; 0 when it was not asked.
    int systemError = 0;

    // In the system's words.
    [[nodiscard]] std::string systemText() const { return std::generic_category().message(systemError); }
    bool operator==(const FileFailure&) const = default;
};

// Tells a file from every other one that had its name, and from itself before it was written to.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t number = 0;
    std::uint64_t size = 0;
    // When its content changed last.
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;

    bool operator==(const FileIdentity&) const = default;
};

struct FileResult {
    // Absent: it is done, and stays done.
    std::optional<FileFailure> failure;
    // Of the file that has the name now, where that is known: also after a replacement that is not known to be durable.
    std::optional<FileIdentity> identity;

    FileResult() = default;
    FileResult(FileFailure why) : failure(why) {}
    FileResult(FileIdentity which) : identity(which) {}

    [[nodiscard]] explicit operator bool() const { return !failure; }
    [[nodiscard]] bool failedFor(FileFailure::Reason reason) const {
        return failure && failure->reason == reason;
    }
};

} // namespace vantor
