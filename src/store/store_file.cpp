#include "store/store_file.h"

#include <algorithm>
#include <utility>

namespace vantor {

StoreFile::StoreFile(const FileStore& files, std::filesystem::path path, Clock clock)
    : m_files(files),
      m_path(std::move(path)),
      m_clock(std::move(clock)) {}

std::optional<std::string> StoreFile::load() {
    auto result = m_files.read(m_path);
    m_setAside = !result.bytes && result.failure != FileStore::ReadFailure::Missing;
    return std::move(result.bytes);
}

void StoreFile::save(std::string_view bytes) {
    m_files.createFolders(m_path.parent_path());
    // Better not saved this time than the only copy of the user's work overwritten.
    if (m_setAside && !setAside())
        return;
    m_setAside = false;
    m_files.replace(m_path, bytes);
}

bool StoreFile::setAside() const {
    auto time = m_clock().iso8601();
    std::erase_if(time, [](char c) { return c == '-' || c == ':'; });
    auto name = m_path;
    name += ".unreadable-" + time;
    static constexpr int kMostOfOneSecond = 100;
    auto free = name;
    for (int i = 2; i <= kMostOfOneSecond; ++i) {
        if (m_files.rename(m_path, free))
            return true;
        free = name;
        free += "-" + std::to_string(i);
    }
    const auto left = m_files.read(m_path);
    return !left.bytes && left.failure == FileStore::ReadFailure::Missing;
}

} // namespace vantor
