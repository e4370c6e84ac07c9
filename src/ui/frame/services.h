// Services: what the windows and sheets work with. All of it outlives them.
#pragma once

#include "base/text_lookup.h"
#include "base/timestamp.h"
#include "platform/clipboard.h"
#include "platform/file_dialogs.h"
#include "platform/file_store.h"
#include "platform/key_value_store.h"
#include "platform/pdf_canvas.h"
#include "platform/png_writer.h"
#include "platform/qr_encoder.h"
#include "platform/url_opener.h"
#include "store/document.h"
#include "store/store_folder.h"
#include "update/update_checker.h"
#include "view/notices.h"

#include <QWidget>
#include <filesystem>
#include <string>

namespace vantor::ui {

struct Services {
    const FileStore& files;
    FileDialogs& dialogs;
    Clipboard& clipboard;
    UrlOpener& urls;
    // Where the windows' places and sizes are remembered.
    KeyValueStore& remembered;
    const QrEncoder& encoder;
    const PngWriter& pngs;
    PdfCanvasFactory canvases;
    UpdateChecker& updates;
    Clock clock;
    // All that the user keeps.
    Document& document;
    // Where it is kept; null: nothing is stored.
    StoreFolder* stores;
    // What the windows tell.
    Notices& notices;
    std::string siteHost;
    std::string manualPage;
    // The manual that came with the program; empty where none did.
    std::filesystem::path installedManual{};
};

// The window that a widget stands in, as one that asks.
[[nodiscard]] inline AskingWindow askingWindow(const QWidget* widget) {
    return {widget->window()};
}

inline const FileType& csvType() {
    static const FileType type{toLookUp("CSV-bestanden"), {"csv"}};
    return type;
}
inline const FileType& plainTextType() {
    static const FileType type{toLookUp("Tekstbestanden"), {"txt"}};
    return type;
}
inline const FileType& shootFileType() {
    static const FileType type{toLookUp("Vantor-shootbestanden"), {"vantor"}};
    return type;
}
inline const FileType& jsonType() {
    static const FileType type{toLookUp("JSON-bestanden"), {"json"}};
    return type;
}
inline const FileType& pngType() {
    static const FileType type{toLookUp("PNG-afbeeldingen"), {"png"}};
    return type;
}
inline const FileType& pdfType() {
    static const FileType type{toLookUp("PDF-bestanden"), {"pdf"}};
    return type;
}

} // namespace vantor::ui
