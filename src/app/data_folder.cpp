#include "app/data_folder.h"

#include <QStandardPaths>
#include <QtGlobal>

namespace vantor {

namespace fs = std::filesystem;

void ignoreRelativeBaseFolders() {
    for (const auto* const name :
         {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"}) {
        if (fs::path(qgetenv(name).toStdString()).is_relative())
            qunsetenv(name);
    }
}

fs::path dataFolder() {
    const auto folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return fs::path(folder.toStdString()) / "Vantor";
}

} // namespace vantor
