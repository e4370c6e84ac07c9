#include "ui/frame/save_file.h"

#include "ui/frame/file_notices.h"

#include <utility>

namespace vantor::ui {

void saveFile(const QWidget* asking, const Services& services, const std::string& proposedName,
              const FileType& type, std::optional<std::string> bytes) {
    services.dialogs.askWhereToSave(askingWindow(asking), proposedName, type,
                                    [&services, bytes = std::move(bytes)](const auto& path) {
                                        if (path && bytes)
                                            tellSaved(services, *path, services.files.replace(*path, *bytes));
                                        else if (path)
                                            tellTooLongForCode(services);
                                    });
}

} // namespace vantor::ui
