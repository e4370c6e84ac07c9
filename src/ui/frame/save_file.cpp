#include "ui/frame/save_file.h"

#include "view/document_notices.h"

#include <utility>

namespace vantor::ui {

void saveFile(const QWidget* asking, const Services& services, const std::string& proposedName,
              const FileType& type, std::optional<std::string> bytes) {
    services.dialogs.askWhereToSave(
        askingWindow(asking), proposedName, type, [&services, bytes = std::move(bytes)](const auto& path) {
            if (path && bytes)
                tellSaved(services, *path, services.files.replace(*path, *bytes));
            else if (path)
                services.notices.show({Notice::Kind::Error,
                                       lookUp("Niet bewaard: de tekst past niet in een QR-code"),
                                       {},
                                       "export"});
        });
}

void tellSaved(const Services& services, const std::filesystem::path& path, const FileResult& result) {
    const auto name = path.filename().string();
    if (!result) {
        services.notices.show({Notice::Kind::Error,
                               lookUp("%1 is niet bewaard: %2", {name, reasonInWords(*result.failure)}),
                               {},
                               "export"});
        return;
    }
    const auto opens = [&urls = services.urls](const std::filesystem::path& what) {
        return [&urls, what] { urls.openPage(what); };
    };
    services.notices.show(
        {Notice::Kind::Done,
         lookUp("Bewaard in %1", {path.string()}),
         {{lookUp("Openen"), opens(path)}, {lookUp("Map openen"), opens(path.parent_path())}},
         "export"});
}

} // namespace vantor::ui
