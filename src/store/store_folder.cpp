#include "store/store_folder.h"

#include <utility>

namespace vantor {

StoreFolder::StoreFolder(const FileStore& files, std::filesystem::path path, Clock clock,
                         DailyBackups::Background background, Timer& timer)
    : m_path(std::move(path)),
      m_timer(timer),
      m_backups(files, m_path / "backups", clock, std::move(background)),
      m_shoots(files, m_path / "shoots.json", clock, &m_backups, [this] { tryLater(); }),
      m_catalog(files, m_path / "catalog.json", clock, &m_backups, [this] { tryLater(); }) {
    files.removeLeftovers(m_path);
    files.removeLeftovers(m_path / "backups");
}

void StoreFolder::saveAgain() {
    m_shoots.saveAgain();
    m_catalog.saveAgain();
    if (m_triesLater && !m_shoots.unsaved() && !m_catalog.unsaved()) {
        m_triesLater = false;
        m_timer.stop();
    }
}

void StoreFolder::tryLater() {
    if (std::exchange(m_triesLater, true))
        return;
    m_timer.startRepeating(kBetweenTries, [this] { saveAgain(); });
}

} // namespace vantor
