#include "ui/main/shoot_files.h"

#include "ui/frame/confirmation.h"
#include "ui/frame/file_notices.h"
#include "ui/frame/save_file.h"
#include "ui/widgets/text.h"
#include "view/proposed_names.h"

#include <utility>

namespace vantor::ui {

ShootFiles::ShootFiles(QWidget& window, ShootManager& manager, const Services& services,
                       std::function<void()> onClosed)
    : m_window(window),
      m_manager(manager),
      m_services(services),
      m_onClosed(std::move(onClosed)),
      m_opener(
          services.files, m_manager, [this] { showImportError(); },
          [this](const auto& file, auto why) { tellUnreadable(m_services, file, why); }) {}

void ShootFiles::exportCSV() {
    if (const auto* const shoot = m_manager.activeShoot())
        saveFile(&m_window, m_services, shootFileName(shoot, lookUp("sets"), ".csv"), csvType(),
                 m_manager.exportCSV(shoot->id));
}

void ShootFiles::exportJSON() {
    exportAs(lookUp("sets"), ".json", jsonType());
}

void ShootFiles::exportVantorFile() {
    exportAs(lookUp("shoot"), ".vantor", shootFileType());
}

void ShootFiles::exportAs(std::string_view withoutShoot, std::string_view extension, const FileType& type) {
    const auto* const shoot = m_manager.activeShoot();
    if (auto bytes = shoot != nullptr ? m_manager.exportJSON(shoot->id) : std::nullopt)
        saveFile(&m_window, m_services, shootFileName(shoot, withoutShoot, extension), type,
                 *std::move(bytes));
}

void ShootFiles::importVantorFile() {
    m_services.dialogs.askWhatToOpen(askingWindow(&m_window), {shootFileType()}, [this](const auto& path) {
        if (path)
            m_opener.openChosen(*path);
    });
}

void ShootFiles::open(HandedFiles handed) {
    m_opener.open(std::move(handed));
}

void ShootFiles::showImportError() {
    // One message for however many files.
    if (std::exchange(m_errorShown, true))
        return;
    showAlert(
        &m_window, shown("Kon .vantor-bestand niet openen"),
        shown("Het bestand kon niet gelezen worden, mogelijk beschadigd of geen geldig .vantor-bestand."),
        [this] {
            m_errorShown = false;
            m_onClosed();
        });
}

} // namespace vantor::ui
