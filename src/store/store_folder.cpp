#include "store/store_folder.h"

#include "store/restore_point_file.h"

#include <utility>

namespace vantor {

StoreFolder::StoreFolder(const FileStore& files, std::filesystem::path path, Clock clock,
                         RestorePoints::Background background, Timer& timer)
    : m_path(std::move(path)),
      m_timer(timer),
      m_points(files, m_path, clock, std::move(background)),
      m_shoots(files, m_path / "shoots.json", clock, &m_points, [this] { noteSaving(); }),
      m_catalog(files, m_path / "catalog.json", clock, &m_points, [this] { noteSaving(); }) {
    files.removeLeftovers(m_path);
    files.removeLeftovers(m_path / kPointFolder);
}

std::optional<StoreFile::Unsaved> StoreFolder::unsaved() const {
    const auto& shoots = m_shoots.unsaved();
    const auto& catalog = m_catalog.unsaved();
    if (!shoots || !catalog)
        return shoots ? shoots : catalog;
    return shoots->since.secondsSinceReference <= catalog->since.secondsSinceReference ? shoots : catalog;
}

void StoreFolder::saveAgain() {
    m_shoots.saveAgain();
    m_catalog.saveAgain();
}

void StoreFolder::noteSaving() {
    const bool triesLater = unsaved().has_value();
    if (std::exchange(m_triesLater, triesLater) != triesLater) {
        if (triesLater)
            m_timer.startRepeating(kBetweenTries, [this] { saveAgain(); });
        else
            m_timer.stop();
    }
    m_savingChanged.emit();
}

} // namespace vantor
