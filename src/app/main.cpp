// vantor-prep: builds the objects that the program is made of, hands each what it needs, and runs.

#include "app/desktop_colors.h"
#include "app/first_process.h"
#include "platform/cairo/cairo_pdf_canvas.h"
#include "platform/libpng/libpng_writer.h"
#include "platform/posix/posix_file_store.h"
#include "platform/qrencode/qrencode_encoder.h"
#include "platform/qt/qt_clipboard.h"
#include "platform/qt/qt_dutch_texts.h"
#include "platform/qt/qt_file_dialogs.h"
#include "platform/qt/qt_http_client.h"
#include "platform/qt/qt_key_value_store.h"
#include "platform/qt/qt_timer.h"
#include "platform/qt/qt_url_opener.h"
#include "store/store_folder.h"
#include "ui/shell.h"
#include "update/site.h"
#include "update/update_checker.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QStandardPaths>
#include <QThreadPool>
#include <QUrl>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>

namespace {

namespace fs = std::filesystem;

// The folder of the stores' files: $XDG_DATA_HOME/Vantor.
fs::path dataFolder() {
    const auto folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return fs::path(folder.toStdString()) / "Vantor";
}

// One name a data folder, so that starts with other data do not meet.
QString processName(const fs::path& folder) {
    const auto hash =
        QCryptographicHash::hash(QByteArray::fromStdString(folder.string()), QCryptographicHash::Sha1);
    return QStringLiteral("vantor-prep-") + QString::fromLatin1(hash.toHex().left(16));
}

// Files as the desktop names them: as paths, or as file addresses.
std::vector<fs::path> filesOf(const QStringList& arguments) {
    std::vector<fs::path> files;
    for (qsizetype i = 1; i < arguments.size(); ++i) {
        const auto& argument = arguments[i];
        const bool isAddress = argument.startsWith(QLatin1String("file://"));
        const auto path = isAddress ? QUrl(argument).toLocalFile() : argument;
        files.push_back(fs::absolute(path.toStdString()));
    }
    return files;
}

std::string updateEndpoint() {
    const auto other = qEnvironmentVariable("VANTOR_UPDATE_ENDPOINT");
    return other.isEmpty() ? std::string(vantor::kUpdateEndpoint) : other.toStdString();
}

} // namespace

int main(int argc, char** argv) {
    using namespace vantor;
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Vantor Prep"));
    QApplication::setApplicationVersion(QStringLiteral(VANTOR_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("example.vantor.Prep"));
    applyColorScheme(application);
    useDutchTexts(application);

    const auto folder = dataFolder();
    const auto files = filesOf(QApplication::arguments());
    FirstProcess process(processName(folder));
    if (process.handOver(files))
        return 0;

    const PosixFileStore fileStore;
    QThreadPool background;
    background.setMaxThreadCount(1);
    StoreFolder stores(fileStore, folder, Timestamp::now,
                       [&background](std::function<void()> work) { background.start(std::move(work)); });
    const QrencodeEncoder encoder;
    const LibpngWriter pngs;
    QtFileDialogs dialogs;
    QtClipboard clipboard;
    QtUrlOpener urls;
    QtKeyValueStore settings("Vantor", "Vantor Prep");
    QtHttpClient http;
    QtTimer timer;
    UpdateChecker updates(updateEndpoint(), "vantorprep.updateChecker", VANTOR_VERSION, http, settings,
                          timer);
    updates.start();

    const ui::Services services{fileStore,
                                dialogs,
                                clipboard,
                                urls,
                                settings,
                                encoder,
                                pngs,
                                CairoPdfCanvas::make,
                                updates,
                                Timestamp::now,
                                &stores,
                                std::string(kSiteHost),
                                std::string(kManualPage)};
    ui::Shell shell(services);
    shell.openFiles(files);
    process.listen([&shell](const auto& handedOver) { shell.openFiles(handedOver); });
    return QApplication::exec();
}
