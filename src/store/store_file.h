// StoreFile: the one file that a store lives in, and whether what the store holds is in it.
//
// - Saving replaces it whole, makes missing folders, and lets nobody but the user read it. What could not be saved is
//   kept, with the reason, until a later save or saveAgain() succeeds.
// - A file that is not the one that was last read well or written is never overwritten, whether it could not be read
//   or was put there meanwhile: saving sets it aside beside its old place, as "<name>.unreadable-<UTC time>". The
//   last five of those are kept.
// - Beside it, "<name>.checksum" holds checksums of what was written last and before that, a line each, so that loading
//   can tell what something else has changed. It is not synced: a file without a checksum tells nothing.
// - Where a save fails for want of space, old restore points go, one at a time.
// - Borrows the file store and the points for its lifetime; belongs to the user-interface thread, like the stores.
#pragma once

#include "base/timestamp.h"
#include "platform/file_store.h"
#include "store/restore_points.h"

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

    enum class Loaded {
        NotYet,
        // There is no such file.
        Missing,
        // Read, and as it was written.
        Read,
        // Read, but something else has changed it since it was written.
        ReadChanged,
        // It is there, but says nothing.
        Unreadable,
    };

    // Without `points` none go. `onSavingChanged` hears of every save that failed, and when all is saved again.
    StoreFile(
        const FileStore& files, std::filesystem::path path, Clock clock = Timestamp::now,
        const RestorePoints* points = nullptr, std::function<void()> onSavingChanged = [] {});
    StoreFile(const StoreFile&) = delete;
    StoreFile& operator=(const StoreFile&) = delete;

    // Hands the file's bytes to `accept`, which takes them and says whether they made sense; what is not saved yet
    // instead of them. Calls nothing when the file is missing or cannot be read.
    void load(const std::function<bool(std::string_view bytes)>& accept);

    [[nodiscard]] Loaded loaded() const { return m_loaded; }

    void save(std::string_view bytes);
    // Does nothing when all is saved.
    void saveAgain();

    // Absent while what was last saved, or else read, is in the file.
    [[nodiscard]] const std::optional<Unsaved>& unsaved() const { return m_unsaved; }

private:
    [[nodiscard]] bool tryToSave(std::string_view bytes);
    [[nodiscard]] std::optional<FileFailure> attempt(std::string_view bytes);
    [[nodiscard]] std::optional<FileFailure> setOtherFileAside();
    [[nodiscard]] std::filesystem::path checksumPath() const;
    [[nodiscard]] bool isAsWritten(std::string_view bytes);
    void noteChecksum(const std::string& checksum);

    const FileStore& m_files;
    std::filesystem::path m_path;
    Clock m_clock;
    const RestorePoints* m_points;
    std::function<void()> m_onSavingChanged;
    Loaded m_loaded = Loaded::NotYet;
    // The checksum, as a line, of what was last read or written.
    std::string m_inFile;
    // The file that was last read well or written.
    std::optional<FileIdentity> m_known;
    std::optional<Unsaved> m_unsaved;
    // What is to be saved while something is not.
    std::string m_waiting;
};

} // namespace vantor
