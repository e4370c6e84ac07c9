// StoreFolder: the folder that the stores live in: shoots.json, catalog.json, and backups/ beside them.
//
// - Only the process that owns the folder makes one. What a process that was killed left of an unfinished save is
//   removed then.
// - Borrows the file store for its lifetime, and outlives the store files that it hands out.
#pragma once

#include "base/timestamp.h"
#include "platform/file_store.h"
#include "store/daily_backups.h"
#include "store/store_file.h"

#include <filesystem>

namespace vantor {

class StoreFolder {
public:
    StoreFolder(const FileStore& files, std::filesystem::path path, Clock clock,
                DailyBackups::Background background);
    StoreFolder(const StoreFolder&) = delete;
    StoreFolder& operator=(const StoreFolder&) = delete;

    [[nodiscard]] StoreFile shoots() { return file("shoots.json"); }
    [[nodiscard]] StoreFile catalog() { return file("catalog.json"); }

private:
    [[nodiscard]] StoreFile file(const char* name);

    const FileStore& m_files;
    std::filesystem::path m_path;
    Clock m_clock;
    DailyBackups m_backups;
};

} // namespace vantor
