// StoreFile: the one file that a store lives in, and whether what the store holds is in it.
//
// - Saving replaces it whole, makes missing folders, and lets nobody but the user read it. What could not be saved is
//   kept, with the reason, until a later save or saveAgain() succeeds.
// - A file that is not the one that was last read well or written is never overwritten, whether it could not be read
//   or was put there meanwhile: saving sets it aside beside its old place, as "<name>.unreadable-<UTC time>". The
//   last five of those are kept.
// - Content that was read well, and content that was saved, is offered to the daily backups. Where a save fails for
//   want of space, old backups go, one at a time.
// - Borrows the file store and the backups for its lifetime; belongs to the user-interface thread, like the stores.
#pragma once

#include "base/timestamp.h"
#include "platform/file_store.h"
#include "store/daily_backups.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace vantor {

class StoreFile {
public:
    static constexpr std::size_t kMostSetAside = 5;

    struct Unsaved {
        // When the first save failed of those that failed since the last one that did not.
        Timestamp since;
        // Why the last one failed.
        FileFailure why;
    };

    // Without `backups` there are none. `onUnsaved` hears of every save that failed.
    StoreFile(
        const FileStore& files, std::filesystem::path path, Clock clock = Timestamp::now,
        DailyBackups* backups = nullptr, std::function<void()> onUnsaved = [] {});
    StoreFile(const StoreFile&) = delete;
    StoreFile& operator=(const StoreFile&) = delete;

    // Hands the file's bytes to `accept`, which takes them and says whether they made sense; what is not saved yet
    // instead of them. Calls nothing when the file is missing or cannot be read.
    void load(const std::function<bool(std::string_view bytes)>& accept);

    void save(std::string_view bytes);
    // Does nothing when all is saved.
    void saveAgain();

    // Absent while what was last saved, or else read, is in the file.
    [[nodiscard]] const std::optional<Unsaved>& unsaved() const { return m_unsaved; }

private:
    [[nodiscard]] bool tryToSave(std::string_view bytes);
    [[nodiscard]] std::optional<FileFailure> attempt(std::string_view bytes);
    [[nodiscard]] std::optional<FileFailure> setOtherFileAside();
    void keepBackup(std::string_view bytes);

    const FileStore& m_files;
    std::filesystem::path m_path;
    Clock m_clock;
    DailyBackups* m_backups;
    std::function<void()> m_onUnsaved;
    // The file that was last read well or written.
    std::optional<FileIdentity> m_known;
    std::optional<Unsaved> m_unsaved;
    // What is to be saved while something is not.
    std::string m_waiting;
};

} // namespace vantor
