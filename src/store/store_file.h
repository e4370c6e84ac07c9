// StoreFile: the one file that a store lives in.
//
// - Saving replaces it whole and makes missing folders; failures are silent, as the store's own state holds on.
// - A file that is there but could not be read is never overwritten: the first save sets it aside beside its
//   old place, as "<name>.unreadable-<UTC time>", once.
// - Borrows the file store for its lifetime; belongs to the user-interface thread, like the stores.
#pragma once

#include "base/timestamp.h"
#include "platform/file_store.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace vantor {

class StoreFile {
public:
    StoreFile(const FileStore& files, std::filesystem::path path, Clock clock = Timestamp::now);

    // The file's bytes; absent when it is missing or cannot be read.
    [[nodiscard]] std::optional<std::string> load();

    // Says that what load() gave made no sense, so that it is to be set aside.
    void markUnreadable() { m_setAside = true; }

    void save(std::string_view bytes);

private:
    [[nodiscard]] bool setAside() const;

    const FileStore& m_files;
    std::filesystem::path m_path;
    Clock m_clock;
    bool m_setAside = false;
};

} // namespace vantor
