// vantor_ui_bench: measures the main window with 10,000 sets, on the real stores and disk, and the sheets with large
// catalogues and texts.
//
// Starting is measured on processes of their own, each ending at the first painting of the window. What a thread waits
// for a processor that others use is left out everywhere.

#include "model/shoot_json.h"
#include "platform/cairo/cairo_pdf_canvas.h"
#include "platform/libpng/libpng_writer.h"
#include "platform/posix/posix_file_store.h"
#include "platform/qrencode/qrencode_encoder.h"
#include "platform/qt/qt_clipboard.h"
#include "platform/qt/qt_file_dialogs.h"
#include "platform/qt/qt_key_value_store.h"
#include "platform/qt/qt_timer.h"
#include "platform/qt/qt_url_opener.h"
#include "ui/frame/shell.h"
#include "ui/frame/style.h"
#include "ui/main/prep_main_view.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QScrollBar>
#include <QStyleFactory>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "bench/sample_data.h"
#include "bench/stopwatch.h"
#include "edit/restore_edits.h"

namespace {

using namespace vantor;
using bench::Stopwatch;

constexpr std::size_t kManySets = 10000;
constexpr std::size_t kFewSets = 10;
constexpr int kRuns = 9;

class NoNetwork final : public HttpClient {
public:
    void get(std::string_view, const HttpLimits&, std::function<void(std::optional<std::string>)>) override {}
};

struct World {
    PosixFileStore files;
    QtTimer savingTimer;
    StoreFolder stores;
    QrencodeEncoder encoder;
    LibpngWriter pngs;
    QtFileDialogs dialogs;
    QtClipboard clipboard;
    QtUrlOpener urls;
    QtKeyValueStore settings;
    NoNetwork http;
    QtTimer timer;
    UpdateChecker updates;
    Document document{&stores.shoots(), &stores.catalog(), Timestamp::now, &stores.points()};
    Notices notices{[] { return std::chrono::milliseconds(0); }};
    ui::Services services;

    explicit World(const std::filesystem::path& folder)
        : stores(
              files, folder, Timestamp::now, [](const std::function<void()>& work) { work(); }, savingTimer),
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
                   document,
                   &stores,
                   notices,
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

template <typename Widget>
Widget& find(const QWidget& within, const char* name) {
    return *within.findChild<Widget*>(QLatin1String(name));
}

void paintedAfter(QWidget& list, const std::function<bool()>& shown) {
    PaintWatch watch;
    list.installEventFilter(&watch);
    for (auto* const child : list.findChildren<QWidget*>())
        child->installEventFilter(&watch);
    while (!watch.painted || !shown())
        QApplication::processEvents(QEventLoop::AllEvents);
}

// What the program does when it is started as its own measure: shows the window, and tells its memory and how long it
// waited for a processor.
int startOnce(const std::filesystem::path& folder) {
    World world(folder);
    ui::Shell shell(world.services);
    auto& window = shell.openMain();
    paintedAfter(*window.findChild<QWidget*>("setList"), [] { return true; });
    std::printf("%ld %f\n", residentKiB(), bench::waitedForProcessor());
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
        const Stopwatch watch;
        process.start(program, {QStringLiteral("--start"), QString::fromStdString(folder.string())});
        process.waitForFinished(-1);
        const double seconds = watch.seconds();
        const auto told = process.readAllStandardOutput().trimmed().split(' ');
        times.push_back((seconds - told.value(1).toDouble()) * 1e3);
        memories.push_back(told.value(0).toDouble() / 1024);
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

// The median of some runs of the work, in milliseconds; each is prepared unmeasured.
double medianOf(const std::function<void(int run)>& prepare, const std::function<void(int run)>& work) {
    std::vector<double> times;
    for (int run = 0; run < kRuns; ++run) {
        prepare(run);
        const Stopwatch watch;
        work(run);
        times.push_back(watch.seconds() * 1e3);
    }
    return median(times);
}

// Pages of the list a second.
double scrollingRate(ui::PrepMainView& window) {
    auto& list = find<QAbstractScrollArea>(window, "setList");
    auto& bar = *list.verticalScrollBar();
    constexpr int kPages = 200;
    const Stopwatch watch;
    for (int page = 0; page < kPages; ++page) {
        bar.setValue(page * bar.pageStep());
        QApplication::processEvents();
        list.repaint();
    }
    return kPages / watch.seconds();
}

// Beside the toolkit's own style, which everything else is the same in; by turns, so that both have the same machine.
void measureScrolling(ui::PrepMainView& window) {
    std::vector<double> ratios;
    for (int run = 0; run < kRuns; ++run) {
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
        QApplication::processEvents();
        const double plain = scrollingRate(window);
        ui::applyLook({});
        QApplication::processEvents();
        ratios.push_back(plain / scrollingRate(window));
    }
    report("scrolling 10,000 sets by the page, plain style's pages a second beside ours", median(ratios), "x",
           1 / 0.9);
}

void measureWindow(const std::filesystem::path& folder) {
    World world(folder);
    ui::Shell shell(world.services);
    auto& window = shell.openMain();
    window.resize(1180, 760);
    auto& list = find<QWidget>(window, "setList");
    auto& search = find<QLineEdit>(window, "searchField");
    auto& scanner = find<QLineEdit>(window, "scannerField");
    paintedAfter(list, [] { return true; });

    const auto clear = [&](int) {
        search.clear();
        QApplication::processEvents();
    };
    report("a key in the search field to the repainted list",
           medianOf(clear,
                    [&](int run) {
                        const QChar letter(QLatin1Char("marvisnoo"[run % 9]));
                        press(search, letter.toUpper().unicode(), QString(letter));
                        paintedAfter(list, [] { return true; });
                    }),
           "ms", 50);
    clear(0);

    Uuid scanned;
    const auto typeCard = [&](int place) {
        const auto set = window.manager().activeShoot()->sets[static_cast<std::size_t>(place)];
        scanned = set.id;
        scanner.setText(QString::fromStdString(set.toQRText()));
    };
    const auto isMarked = [&] { return window.manager().activeSetId() == scanned; };
    report("a scan from its submission to the marked row, saved",
           medianOf([&](int run) { typeCard(run * 1000 + 500); },
                    [&](int) {
                        find<QAbstractButton>(window, "activateScanButton").click();
                        paintedAfter(list, isMarked);
                    }),
           "ms", 100);
    report("a scan from its last key to the marked row, saved",
           medianOf([&](int run) { typeCard(run * 1000 + 700); },
                    [&](int) {
                        press(scanner, Qt::Key_Return, QStringLiteral("\r"));
                        paintedAfter(list, isMarked);
                    }),
           "ms", 250);
    measureScrolling(window);
}

void fillCatalog(Document& document, int products, int brands) {
    CatalogData catalog;
    for (int i = 0; i < products; ++i)
        catalog.products.push_back(Product::make("product " + std::to_string(100000 + i),
                                                 {"rood", "blauw", "groen", "zwart"},
                                                 "Merk " + std::to_string(i % brands)));
    document.perform(restoreAll(document.library(), {std::nullopt, std::move(catalog)}, {}));
    QApplication::processEvents();
}

QDialog& openSheet(QWidget& window, const char* button) {
    find<QAbstractButton>(window, button).click();
    QApplication::processEvents();
    return dynamic_cast<QDialog&>(*QApplication::activeModalWidget());
}

void close(QDialog& sheet) {
    sheet.reject();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
}

void measureCatalog(Document& document, ui::PrepMainView& window) {
    fillCatalog(document, 10000, 200);
    QDialog* sheet = nullptr;
    const auto closeLast = [&](int) {
        if (sheet != nullptr)
            close(*sheet);
    };
    report("opening the catalogue of 10,000 products",
           medianOf(closeLast,
                    [&](int) {
                        sheet = &openSheet(window, "catalogButton");
                        sheet->repaint();
                    }),
           "ms", 200);
    auto& brands = find<QComboBox>(*sheet, "brandPicker");
    brands.setCurrentIndex(brands.findText(QStringLiteral("Alle merken")));
    Q_EMIT brands.activated(brands.currentIndex());
    QApplication::processEvents();
    const auto nothing = [](int) {};
    report("a key in a field of it",
           medianOf(nothing,
                    [&](int) {
                        press(find<QLineEdit>(*sheet, "newProductNameField"), Qt::Key_A, QStringLiteral("a"));
                        sheet->repaint();
                        QApplication::processEvents();
                    }),
           "ms", 50);
    report(
        "deleting a product, saved",
        medianOf(
            nothing,
            [&](int) {
                sheet->findChildren<QAbstractButton*>(QStringLiteral("deleteProductButton")).at(2)->click();
                QApplication::processEvents();
                sheet->repaint();
            }),
        "ms", 150);
    close(*sheet);
}

void measurePicker(Document& document, ui::PrepMainView& window) {
    const auto closeMenus = [](int) {
        while (auto* const popup = QApplication::activePopupWidget())
            popup->close();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QApplication::processEvents();
    };
    // Nearly all of the time of one large brand is the toolkit's, which measures every entry's text.
    for (const int brands : {50, 1}) {
        fillCatalog(document, 5000, brands);
        auto& sheet = openSheet(window, "newSetButton");
        auto& menu = find<QMenu>(sheet, "catalogPickerMenu");
        report(brands > 1 ? "opening the picker of 5,000 products"
                          : "opening a brand of 5,000 products in it",
               medianOf(closeMenus,
                        [&](int) {
                            menu.popup(QPoint(5, 5));
                            if (brands == 1)
                                menu.actions().front()->menu()->popup(QPoint(100, 5));
                            QApplication::processEvents();
                        }),
               "ms", brands > 1 ? 100 : 150);
        closeMenus(0);
        close(sheet);
    }
}

void measureText(ui::PrepMainView& window) {
    QString text(QStringLiteral("Set;Merk;Items;Model;Locatie\n"));
    while (text.size() < 10 << 20)
        text += QStringLiteral("1;Merk;") + QString(200, QLatin1Char('x')) +
                QStringLiteral("/blauw;Anna;Studio\n");
    QApplication::clipboard()->setText(text);
    auto& sheet = openSheet(window, "importButton");
    auto& editor = find<QPlainTextEdit>(sheet, "csvText");
    report("pasting ten megabytes of text",
           medianOf([&](int) { editor.clear(); },
                    [&](int) {
                        editor.paste();
                        QApplication::processEvents();
                        sheet.repaint();
                    }),
           "ms", 300);
    close(sheet);
}

void measureSheets(const std::filesystem::path& folder) {
    World world(folder);
    ui::Shell shell(world.services);
    auto& window = shell.openMain();
    paintedAfter(find<QWidget>(window, "setList"), [] { return true; });
    measureCatalog(world.document, window);
    measurePicker(world.document, window);
    measureText(window);
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    ui::applyLook({});
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
    measureSheets(root / "few");
    return allReached ? 0 : 1;
}
