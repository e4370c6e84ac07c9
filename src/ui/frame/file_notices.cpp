#include "ui/frame/file_notices.h"

#include "base/shown_text.h"
#include "view/document_notices.h"

#include <utility>

namespace vantor::ui {
namespace {

// What became of one export, or one file, is old once the next is told.
void tell(const Services& services, Notice::Kind kind, std::string text,
          std::vector<NoticeAction> actions = {}) {
    services.notices.show({kind, std::move(text), std::move(actions), "file"});
}

std::string nameOf(const std::filesystem::path& path) {
    return shownText(path.filename().string());
}

std::string reason(FileStore::ReadFailure why) {
    switch (why) {
    case FileStore::ReadFailure::Missing:
        return lookUp("het bestaat niet");
    case FileStore::ReadFailure::TooLarge:
        return lookUp("het is te groot");
    case FileStore::ReadFailure::Unreadable:
        break;
    }
    return lookUp("je mag het niet lezen, of het is geen gewoon bestand");
}

} // namespace

void tellSaved(const Services& services, const std::filesystem::path& path, const FileResult& result) {
    if (!result) {
        tell(services, Notice::Kind::Error,
             lookUp("%1 is niet bewaard: %2", {nameOf(path), reasonInWords(*result.failure)}));
        return;
    }
    const auto opens = [&urls = services.urls](const std::filesystem::path& what) {
        return [&urls, what] { urls.openPage(what); };
    };
    tell(services, Notice::Kind::Done, lookUp("Bewaard in %1", {shownText(path.string())}),
         {{lookUp("Openen"), opens(path)}, {lookUp("Map openen"), opens(path.parent_path())}});
}

void tellUnreadable(const Services& services, const std::filesystem::path& path, FileStore::ReadFailure why) {
    tell(services, Notice::Kind::Error,
         lookUp("%1 kan niet gelezen worden: %2", {nameOf(path), reason(why)}));
}

void tellNoUtf8(const Services& services, const std::filesystem::path& path) {
    tell(services, Notice::Kind::Error,
         lookUp("%1 kan niet gelezen worden: het is geen tekst in UTF-8", {nameOf(path)}));
}

void tellTooLongForCode(const Services& services) {
    tell(services, Notice::Kind::Error, lookUp("De tekst past niet in een QR-code"));
}

} // namespace vantor::ui
