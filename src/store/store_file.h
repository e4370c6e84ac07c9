// StoreFile: the one file that a store lives in.
//
// - Saving replaces it whole and makes missing folders; failures are silent, as the store's own state holds on.
// - A file that is there but could not be read is never overwritten: the first save sets it aside beside its
//   old place, as "<name>.unreadable-<UTC time>", once. The last five of those are kept.
// - Content that was read well, and content that was saved, is offered to the daily backups.
// - Borrows the file store and the backups for its lifetime; belongs to the user-interface thread, like the stores.
#pragma once

#include "base/timestamp.h"
#include "platform/file_store.h"
#include "store/daily_backups.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string_view>

namespace vantor {

class StoreFile {
public:
    static constexpr std::size_t kMostSetAside = 5;

    // Without `backups` there are none.
    StoreFile(const FileStore& files, std::filesystem::path path, Clock clock = Timestamp::now,
              DailyBackups* backups = nullptr);

    // Hands the file's bytes to `accept`, which takes them and says whether they made sense. Calls nothing when the
    // file is missing or cannot be read.
    void load(const std::function<bool(std::string_view bytes)>& accept);

    void save(std::string_view bytes);

private:
    [[nodiscard]] bool setAside() const;
    void keepBackup(std::string_view bytes);

    const FileStore& m_files;
    std::filesystem::path m_path;
    Clock m_clock;
    DailyBackups* m_backups;
    bool m_setAside = false;
};

} // namespace vantor
