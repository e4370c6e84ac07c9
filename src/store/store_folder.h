// StoreFolder: the folder that the stores live in: shoots.json, catalog.json, and versions/ beside them.
//
// - Only the process that owns the folder makes one. What a process that was killed left of an unfinished save is
//   removed then.
// - A save that failed is tried again every five seconds until it succeeds, also when the store is gone meanwhile.
// - Borrows the file store and the timer for its lifetime; the stores borrow its files.
#pragma once

#include "base/signal.h"
#include "base/timestamp.h"
#include "platform/file_store.h"
#include "platform/timer.h"
#include "store/restore_points.h"
#include "store/store_file.h"

#include <chrono>
#include <filesystem>
#include <optional>

namespace vantor {

class StoreFolder {
public:
    static constexpr std::chrono::milliseconds kBetweenTries{5000};

    StoreFolder(const FileStore& files, std::filesystem::path path, Clock clock,
                RestorePoints::Background background, Timer& timer);
    StoreFolder(const StoreFolder&) = delete;
    StoreFolder& operator=(const StoreFolder&) = delete;
    ~StoreFolder() { m_timer.stop(); }

    [[nodiscard]] StoreFile& shoots() { return m_shoots; }
    [[nodiscard]] StoreFile& catalog() { return m_catalog; }
    [[nodiscard]] RestorePoints& points() { return m_points; }
    [[nodiscard]] const std::filesystem::path& path() const { return m_path; }

    // Of the store that has been waiting longest; absent while all is saved.
    [[nodiscard]] std::optional<StoreFile::Unsaved> unsaved() const;
    // Tells of every save that failed, and when all is saved again.
    [[nodiscard]] Signal<>& savingChanged() { return m_savingChanged; }

    // Tries at once what could not be saved so far, as is to be done before the program ends.
    void saveAgain();

private:
    void noteSaving();

    std::filesystem::path m_path;
    Timer& m_timer;
    bool m_triesLater = false;
    Signal<> m_savingChanged;
    RestorePoints m_points;
    StoreFile m_shoots;
    StoreFile m_catalog;
};

} // namespace vantor
