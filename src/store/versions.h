// Versions: what there is to go back to: restore points, copies that earlier versions of the program made each day, and
// store files that were set aside.
//
// Reads files only, and may run beside the window.
#pragma once

#include "base/timestamp.h"
#include "platform/file_store.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "edit/restore_edits.h"

namespace vantor {

struct Version {
    enum class Kind { RestorePoint, DailyCopy, SetAside };
    Kind kind = Kind::RestorePoint;
    // When it was made; of a daily copy only the day is known.
    Timestamp at;
    // Before what a restore point was made; empty: before the first change of its day.
    std::string before;
    // Absent when it cannot be read.
    struct Counts {
        std::size_t shoots = 0;
        std::size_t sets = 0;
    };
    std::optional<Counts> counts;
    // A restore point's one file; of the others that of the shoots and that of the catalogue, as far as they are there.
    std::filesystem::path point;
    std::filesystem::path shoots;
    std::filesystem::path catalog;
    // Whether any of it can be put back, as far as its beginning tells.
    bool isReadable = false;
};

// What there is in the folder of the stores, the newest first.
[[nodiscard]] std::vector<Version> versionsIn(const FileStore& files, const std::filesystem::path& folder);

// What a version holds; absent when it cannot be read.
[[nodiscard]] std::optional<LibraryVersion> contentOf(const FileStore& files, const Version& version);

[[nodiscard]] Version::Counts countsOf(const std::vector<Shoot>& shoots);

} // namespace vantor
