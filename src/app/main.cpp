// vantor-prep: builds the objects that the program is made of, hands each what it needs, and runs.

#include "app/data_folder.h"
#include "app/first_process.h"
#include "app/look_follower.h"
#include "app/start_arguments.h"
#include "base/text_lookup.h"
#include "base/uuid.h"
#include "platform/cairo/cairo_pdf_canvas.h"
#include "platform/curl/curl_http_client.h"
#include "platform/libpng/libpng_writer.h"
#include "platform/posix/posix_file_store.h"
#include "platform/posix/posix_process_lock.h"
#include "platform/qrencode/qrencode_encoder.h"
#include "platform/qt/qt_clipboard.h"
#include "platform/qt/qt_desktop_settings.h"
#include "platform/qt/qt_dutch_texts.h"
#include "platform/qt/qt_file_dialogs.h"
#include "platform/qt/qt_key_value_store.h"
#include "platform/qt/qt_timer.h"
#include "platform/qt/qt_url_opener.h"
#include "store/document.h"
#include "store/store_folder.h"
#include "ui/frame/beside_window.h"
#include "ui/frame/confirmation.h"
#include "ui/frame/shell.h"
#include "ui/frame/style.h"
#include "ui/widgets/symbol.h"
#include "ui/widgets/text.h"
#include "update/site.h"
#include "update/update_checker.h"
#include "view/document_notices.h"
#include "view/notices.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QThreadPool>
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace {

namespace fs = std::filesystem;

// Where the owner of a data folder can be reached, the best place first; starts with other data do not meet there.
QStringList meetingPlaces(const fs::path& folder) {
    const auto hash =
        QCryptographicHash::hash(QByteArray::fromStdString(folder.string()), QCryptographicHash::Sha1);
    const auto name = QStringLiteral("/vantor-prep-") + QString::fromLatin1(hash.toHex().left(16));
    QStringList places;
    if (const auto runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
        !runtime.isEmpty())
        places += runtime + name;
    const auto temporary = QDir::tempPath() + name;
    // Another user may have claimed the first, but cannot know the second; later starts learn it through the lock.
    return places << temporary << temporary + '-' + QString::fromStdString(vantor::Uuid::random().text());
}

// Beside the program, wherever both were installed.
fs::path installedManual() {
    const auto bin = QFile::encodeName(QCoreApplication::applicationDirPath()).toStdString();
    const auto page = (fs::path(bin) / VANTOR_MANUAL).lexically_normal();
    std::error_code error;
    return fs::is_regular_file(page, error) ? page : fs::path();
}

vantor::StartArguments startArguments(const std::vector<std::string_view>& arguments) {
    std::error_code error;
    const auto folder = fs::current_path(error);
    return vantor::readStartArguments(arguments, error ? fs::path("/") : folder);
}

// The exit status of a start that only says something.
std::optional<int> answered(const vantor::StartArguments& arguments) {
    using Wish = vantor::StartArguments::Wish;
    switch (arguments.wish) {
    case Wish::Help:
        std::cout << vantor::helpText();
        return 0;
    case Wish::Version:
        std::cout << "vantor-prep " VANTOR_VERSION "\n";
        return 0;
    case Wish::UnknownOption:
        std::cerr << vantor::lookUp("Onbekende optie: %1", {arguments.option}) << '\n' << vantor::helpText();
        return 2;
    case Wish::Run:
        break;
    }
    return std::nullopt;
}

void sayThatNobodyAnswers() {
    const auto title = vantor::ui::shown("Vantor Prep reageert niet");
    const auto text =
        vantor::ui::shown("Vantor Prep is al open, maar geeft geen antwoord. Wacht even en probeer "
                          "het opnieuw, of sluit het eerst af.");
    std::cerr << title.toStdString() << ": " << text.toStdString() << std::endl;
    vantor::ui::showMessage(title, text);
}

// A disk that does not answer must not keep the program from ending.
class EndOfReading {
public:
    EndOfReading() = default;
    EndOfReading(const EndOfReading&) = delete;
    EndOfReading& operator=(const EndOfReading&) = delete;
    ~EndOfReading() {
        constexpr int kLongestWait = 1000;
        if (!vantor::ui::readingThreads().waitForDone(kLongestWait))
            std::_Exit(0);
    }
};

std::chrono::milliseconds steadyTime() {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
}

std::string updateEndpoint() {
    const auto other = qEnvironmentVariable("VANTOR_UPDATE_ENDPOINT");
    return other.isEmpty() ? std::string(vantor::kUpdateEndpoint) : other.toStdString();
}

// As the owner of the data, until the last window closes.
int run(QApplication& application, vantor::FirstProcess& process, const vantor::FileStore& fileStore,
        const fs::path& folder, const vantor::StartArguments& start) {
    using namespace vantor;
    QThreadPool background;
    background.setMaxThreadCount(1);
    QtTimer savingTimer;
    StoreFolder stores(
        fileStore, folder, Timestamp::now,
        [&background](std::function<void()> work) { background.start(std::move(work)); }, savingTimer);
    Document document(&stores.shoots(), &stores.catalog(), Timestamp::now, &stores.points());
    Notices notices(steadyTime);
    const DocumentNotices documentNotices(document, &stores, notices);
    const QrencodeEncoder encoder;
    const LibpngWriter pngs;
    QtFileDialogs dialogs;
    QtClipboard clipboard;
    QtUrlOpener urls;
    QtKeyValueStore settings("Vantor", "Vantor Prep");
    CurlHttpClient http([&application](std::function<void()> work) {
        QMetaObject::invokeMethod(&application, std::move(work), Qt::QueuedConnection);
    });
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
                                document,
                                &stores,
                                notices,
                                std::string(kSiteHost),
                                std::string(kManualPage),
                                installedManual()};
    ui::Shell shell(services);
    shell.openFiles({start.files, process.handedBeforeAt(), {}, {}});
    process.serve([&shell](auto handed) { shell.openFiles(std::move(handed)); });
    const int status = QApplication::exec();
    stores.saveAgain();
    return status;
}

} // namespace

int main(int argc, char** argv) {
    using namespace vantor;
    const std::vector<std::string_view> all(argv + std::min(argc, 1), argv + argc);
    // Needs no display.
    if (const auto start = startArguments(all); start.wish != StartArguments::Wish::UnknownOption) {
        if (const auto status = answered(start))
            return *status;
    }

    ignoreRelativeBaseFolders();
    const auto folder = dataFolder();
    const PosixFileStore fileStore;
    PosixProcessLock lock(folder / "lock");
    // The toolkit takes its own options away, but nothing that is the name of a file.
    const auto files = std::ranges::find(all, "--");
    auto count = static_cast<int>(argc - (all.end() - files));
    QApplication application(count, argv);
    const EndOfReading endOfReading;
    QApplication::setApplicationName(QStringLiteral("Vantor Prep"));
    QApplication::setApplicationVersion(QStringLiteral(VANTOR_VERSION));
    QApplication::setDesktopFileName(
        QString::fromUtf8(kApplicationId.data(), static_cast<qsizetype>(kApplicationId.size())));
    QApplication::setWindowIcon(ui::logoIcon());
    QtDesktopSettings desktop;
    useDutchTexts(application);

    std::vector<std::string_view> left(argv + std::min(count, 1), argv + count);
    left.insert(left.end(), files, all.end());
    const auto start = startArguments(left);
    if (const auto status = answered(start))
        return *status;
    FirstProcess process(lock, meetingPlaces(folder));
    const auto role = process.begin(start.files);
    if (role == FirstProcess::Role::HandedOver)
        return 0;
    // So that the first picture is the right one; a desktop that is slower than this is followed when it answers.
    desktop.awaitAnswers(std::chrono::milliseconds(100));
    const LookFollower look(desktop, qEnvironmentVariable("VANTOR_COLOR_SCHEME").toStdString(),
                            ui::applyLook);
    if (role == FirstProcess::Role::Unanswered) {
        sayThatNobodyAnswers();
        return 1;
    }

    return run(application, process, fileStore, folder, start);
}
