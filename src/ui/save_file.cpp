#include "ui/save_file.h"

#include <utility>

namespace vantor::ui {

void saveFile(const QWidget* asking, const Services& services, const std::string& proposedName,
              const FileType& type, std::optional<std::string> bytes) {
    services.dialogs.askWhereToSave(askingWindow(asking), proposedName, type,
                                    [&files = services.files, bytes = std::move(bytes)](const auto& path) {
                                        if (path && bytes)
                                            files.replace(*path, *bytes);
                                    });
}

} // namespace vantor::ui
