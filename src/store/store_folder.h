// StoreFolder: the folder that the stores live in: shoots.json, catalog.json, and backups/ beside them.
//
// - Only the process that owns the folder makes one. What a process that was killed left of an unfinished save is
//   removed then.
// - A save that failed is tried again every five seconds until it succeeds, also when the store is gone meanwhile.
// - Borrows the file store and the timer for its lifetime; the stores borrow its files.
#pragma once

#include "base/timestamp.h"
#include "platform/file_store.h"
#include "platform/timer.h"
#include "store/daily_backups.h"
#include "store/store_file.h"

#include <chrono>
#include <filesystem>

namespace vantor {

class StoreFolder {
public:
    static constexpr std::chrono::milliseconds kBetweenTries{5000};

    StoreFolder(const FileStore& files, std::filesystem::path path, Clock clock,
                DailyBackups::Background background, Timer& timer);
    StoreFolder(const StoreFolder&) = delete;
    StoreFolder& operator=(const StoreFolder&) = delete;
    ~StoreFolder() { m_timer.stop(); }

    [[nodiscard]] StoreFile& shoots() { return m_shoots; }
    [[nodiscard]] StoreFile& catalog() { return m_catalog; }

    // Tries at once what could not be saved so far, as is to be done before the program ends.
    void saveAgain();

private:
    void tryLater();

    std::filesystem::path m_path;
    Timer& m_timer;
    bool m_triesLater = false;
    DailyBackups m_backups;
    StoreFile m_shoots;
    StoreFile m_catalog;
};

} // namespace vantor
