// vantor_ui_bench: measures the main window with 10,000 sets, on the real stores and disk.
//
// Starting is measured on processes of their own, each ending at the first painting of the window.

#include "model/shoot_json.h"
#include "platform/cairo/cairo_pdf_canvas.h"
#include "platform/libpng/libpng_writer.h"
#include "platform/posix/posix_file_store.h"
#include "platform/qrencode/qrencode_encoder.h"
#include "platform/qt/qt_clipboard.h"
#include "platform/qt/qt_file_dialogs.h"
#include "platform/qt/qt_http_client.h"
#include "platform/qt/qt_key_value_store.h"
#include "platform/qt/qt_timer.h"
#include "platform/qt/qt_url_opener.h"
#include "ui/prep_main_view.h"
#include "ui/shell.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLineEdit>
#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "bench/sample_data.h"

namespace {

using namespace vantor;

constexpr std::size_t kManySets = 10000;
constexpr std::size_t kFewSets = 10;
constexpr int kRuns = 9;

struct World {
    PosixFileStore files;
    StoreFolder stores;
    QrencodeEncoder encoder;
    LibpngWriter pngs;
    QtFileDialogs dialogs;
    QtClipboard clipboard;
    QtUrlOpener urls;
    QtKeyValueStore settings;
    QtHttpClient http;
    QtTimer timer;
    UpdateChecker updates;
    ui::Services services;

    explicit World(const std::filesystem::path& folder)
        : stores(files, folder, Timestamp::now, [](const std::function<void()>& work) { work(); }),
          settings(folder / "settings"),
          updates("https://127.0.0.1:9/", "vantorprep.updateChecker", "0.1.0", http, settings, timer),
          services{files,
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
                   "vantor.example",
                   "https://vantor.example/"} {}
};

// Calls back when a widget of the window's list has been painted.
class PaintWatch : public QObject {
public:
    bool painted = false;

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        painted = painted || event->type() == QEvent::Paint;
        return false;
    }
};

long residentKiB() {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.starts_with("VmRSS:"))
            return std::stol(line.substr(6));
    }
    return 0;
}

void writeStore(const std::filesystem::path& folder, std::size_t sets) {
    JsonWriter out(JsonWriter::Layout::Compact);
    writeShoots(out, bench::sampleShoots(sets), DateForm::SecondsSinceReference);
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "shoots.json", std::ios::binary) << out.written();
}

double median(std::vector<double> values) {
    std::ranges::sort(values);
    return values[values.size() / 2];
}

void paintedAfter(QWidget& list, const std::function<bool()>& shown) {
    PaintWatch watch;
    list.installEventFilter(&watch);
    for (auto* const child : list.findChildren<QWidget*>())
        child->installEventFilter(&watch);
    while (!watch.painted || !shown())
        QApplication::processEvents(QEventLoop::AllEvents);
}

// What the program does when it is started as its own measure: shows the window, and tells its memory.
int startOnce(const std::filesystem::path& folder) {
    World world(folder);
    ui::Shell shell(world.services);
    auto& window = shell.openMain();
    paintedAfter(*window.findChild<QWidget*>("setList"), [] { return true; });
    std::printf("%ld\n", residentKiB());
    return 0;
}

struct Start {
    double milliseconds;
    double residentMiB;
};

Start measureStart(const QString& program, const std::filesystem::path& folder) {
    std::vector<double> times;
    std::vector<double> memories;
    for (int i = 0; i < kRuns; ++i) {
        QProcess process;
        QElapsedTimer timer;
        timer.start();
        process.start(program, {QStringLiteral("--start"), QString::fromStdString(folder.string())});
        process.waitForFinished(60000);
        times.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
        memories.push_back(process.readAllStandardOutput().trimmed().toDouble() / 1024);
    }
    return {median(times), median(memories)};
}

bool allReached = true;

void report(const char* what, double value, const char* unit, double most) {
    const bool reached = value <= most;
    allReached = allReached && reached;
    std::printf("%-78s %9.2f %-4s (most %.2f)%s\n", what, value, unit, most, reached ? "" : "  MISSED");
}

void press(QWidget& widget, int key, const QString& text) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(&widget, &event);
}

void measureWindow(const std::filesystem::path& folder) {
    World world(folder);
    ui::Shell shell(world.services);
    auto& window = shell.openMain();
    window.resize(1180, 760);
    auto& list = *window.findChild<QWidget*>("setList");
    auto& search = *window.findChild<QLineEdit*>("searchField");
    auto& scanner = *window.findChild<QLineEdit*>("scannerField");
    paintedAfter(list, [] { return true; });

    std::vector<double> keys;
    for (int i = 0; i < kRuns; ++i) {
        QElapsedTimer timer;
        timer.start();
        const QChar letter(QLatin1Char("marvisnoo"[i % 9]));
        press(search, letter.toUpper().unicode(), QString(letter));
        paintedAfter(list, [] { return true; });
        keys.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
        search.clear();
        QApplication::processEvents();
    }
    report("a key in the search field to the repainted list", median(keys), "ms", 50);

    std::vector<double> scans;
    for (int i = 0; i < kRuns; ++i) {
        const auto& sets = window.manager().activeShoot()->sets;
        const auto set = sets[static_cast<std::size_t>(i) * 1000 + 500];
        scanner.setText(QString::fromStdString(set.toQRText()));
        auto& button = *window.findChild<QAbstractButton*>("activateScanButton");
        QElapsedTimer timer;
        timer.start();
        button.click();
        paintedAfter(list, [&] { return window.manager().activeSetId() == set.id; });
        scans.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
    report("a scan from its submission to the marked row, saved", median(scans), "ms", 100);

    scans.clear();
    for (int i = 0; i < kRuns; ++i) {
        const auto set = window.manager().activeShoot()->sets[static_cast<std::size_t>(i) * 1000 + 700];
        scanner.setText(QString::fromStdString(set.toQRText()));
        QElapsedTimer timer;
        timer.start();
        press(scanner, Qt::Key_Return, QStringLiteral("\r"));
        paintedAfter(list, [&] { return window.manager().activeSetId() == set.id; });
        scans.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
    report("a scan from its last key to the marked row, saved", median(scans), "ms", 250);
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const auto arguments = QApplication::arguments();
    if (arguments.size() == 3 && arguments[1] == QLatin1String("--start"))
        return startOnce(arguments[2].toStdString());

    const QTemporaryDir folder;
    const auto root = std::filesystem::path(folder.path().toStdString());
    writeStore(root / "few", kFewSets);
    writeStore(root / "many", kManySets);
    const auto few = measureStart(arguments[0], root / "few");
    const auto many = measureStart(arguments[0], root / "many");
    const double data =
        static_cast<double>(std::filesystem::file_size(root / "many" / "shoots.json")) / (1 << 20);
    std::printf("with %zu sets: start %.0f ms, %.1f MiB; with %zu: start %.0f ms, %.1f MiB; data %.1f MiB\n",
                kFewSets, few.milliseconds, few.residentMiB, kManySets, many.milliseconds, many.residentMiB,
                data);
    report("start to the first painted window, 10,000 sets", many.milliseconds, "ms", 1000);
    report("that beside the same with 10 sets", many.milliseconds / few.milliseconds, "x", 3);
    report("resident memory beside twice that with 10 sets and the data's size",
           many.residentMiB / (2 * few.residentMiB + data), "x", 1);
    measureWindow(root / "many");
    return allReached ? 0 : 1;
}
