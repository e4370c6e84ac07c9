#include "store/store_file.h"

#include "store/kept_files.h"

#include <algorithm>
#include <string>
#include <utility>

namespace vantor {
StoreFile::StoreFile(const FileStore& files, std::filesystem::path path, Clock clock, DailyBackups* backups)
    : m_files(files),
      m_path(std::move(path)),
      m_clock(std::move(clock)),
      m_backups(backups) {}

void StoreFile::load(const std::function<bool(std::string_view bytes)>& accept) {
    const auto read = m_files.read(m_path);
    if (!read.bytes) {
        m_setAside = read.failure != FileStore::ReadFailure::Missing;
        return;
    }
    // Unreadable until it was read, also for whoever goes on after an exception.
    m_setAside = true;
    if (!accept(*read.bytes))
        return;
    m_setAside = false;
    keepBackup(*read.bytes);
}

void StoreFile::save(std::string_view bytes) {
    m_files.createFolders(m_path.parent_path());
    // Better not saved this time than the only copy of the user's work overwritten.
    if (m_setAside && !setAside())
        return;
    m_setAside = false;
    if (m_files.replace(m_path, bytes))
        keepBackup(bytes);
}

bool StoreFile::setAside() const {
    auto time = m_clock().iso8601();
    std::erase_if(time, [](char c) { return c == '-' || c == ':'; });
    const auto folder = m_path.parent_path();
    const auto prefix = m_path.filename().string() + ".unreadable-";
    const auto name = prefix + time;
    static constexpr int kMostOfOneSecond = 100;
    auto free = name;
    for (int i = 2; i <= kMostOfOneSecond; ++i) {
        if (m_files.rename(m_path, folder / free)) {
            removeOldFiles(m_files, folder, kMostSetAside, free,
                           [&](const std::string& other) { return other.starts_with(prefix); });
            return true;
        }
        free = name + "-" + std::to_string(i);
    }
    const auto left = m_files.read(m_path);
    return !left.bytes && left.failure == FileStore::ReadFailure::Missing;
}

void StoreFile::keepBackup(std::string_view bytes) {
    if (m_backups != nullptr)
        m_backups->keep(m_path.filename(), bytes);
}

} // namespace vantor
