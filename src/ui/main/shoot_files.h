// ShootFiles: what the main window saves of the active shoot, and the shoot files that it opens.
#pragma once

#include "store/shoot_manager.h"
#include "ui/frame/services.h"
#include "ui/main/shoot_file_opener.h"

#include <functional>

namespace vantor::ui {

class ShootFiles {
public:
    // `onClosed` is called when the message about a file that is no shoot was closed.
    ShootFiles(QWidget& window, ShootManager& manager, const Services& services,
               std::function<void()> onClosed);

    // Save the active shoot as it is when the question where to comes up; nothing without one.
    void exportCSV();
    void exportJSON();
    void exportVantorFile();

    void importVantorFile();
    // What the desktop handed over; says so when a file is none.
    void open(HandedFiles handed);

private:
    void exportAs(std::string_view withoutShoot, std::string_view extension, const FileType& type);
    void showImportError();

    QWidget& m_window;
    ShootManager& m_manager;
    const Services& m_services;
    std::function<void()> m_onClosed;
    ShootFileOpener m_opener;
    bool m_errorShown = false;
};

} // namespace vantor::ui
