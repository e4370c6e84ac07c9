#include "store/store_folder.h"

#include <utility>

namespace vantor {

StoreFolder::StoreFolder(const FileStore& files, std::filesystem::path path, Clock clock,
                         DailyBackups::Background background)
    : m_files(files),
      m_path(std::move(path)),
      m_clock(std::move(clock)),
      m_backups(files, m_path / "backups", m_clock, std::move(background)) {
    m_files.removeLeftovers(m_path);
    m_files.removeLeftovers(m_path / "backups");
}

StoreFile StoreFolder::file(const char* name) {
    return {m_files, m_path / name, m_clock, &m_backups};
}

} // namespace vantor
