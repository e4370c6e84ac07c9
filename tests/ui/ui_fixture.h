// UiTest: the windows on fakes of everything outside the program, driven as a user would.
#pragma once

#include "platform/cairo/cairo_pdf_canvas.h"
#include "platform/libpng/libpng_writer.h"
#include "platform/qrencode/qrencode_encoder.h"
#include "tests/support/event_loop.h"
#include "tests/support/examples.h"
#include "tests/support/fake_file_dialogs.h"
#include "tests/support/manual_timer.h"
#include "tests/support/memory_file_store.h"
#include "tests/support/memory_key_value_store.h"
#include "tests/support/recording_clipboard.h"
#include "tests/support/recording_url_opener.h"
#include "tests/support/scripted_http_client.h"
#include "tests/support/standing_clock.h"
#include "ui/frame/services.h"
#include "ui/generator/qr_generator_view.h"
#include "ui/main/prep_main_view.h"
#include "ui/main/scanner_field.h"
#include "ui/widgets/recycling_list.h"

#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QTest>
#include <array>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace vantor::testing {

// Lets everything that is due happen, the deleting of closed sheets too.
void settle();
// The same, and lets files be read beside the window, up to twenty in a row.
void settleReads();

// All that open from the main window.
inline constexpr std::array kSheets{"newShootSheet",      "newSetSheet",  "editSetSheet",  "importSheet",
                                    "bulkExportSheet",    "clientsSheet", "catalogSheet",  "editProductSheet",
                                    "catalogImportSheet", "qrSheet",      "versionsSheet", "shortcutsSheet"};

// The one widget of that name, shown or not.
template <typename Widget = QWidget>
Widget& find(const QWidget& within, const char* name) {
    const auto found = within.findChildren<Widget*>(QLatin1String(name));
    if (found.size() != 1)
        throw std::runtime_error(std::string(name) + ": found " + std::to_string(found.size()));
    return *found.front();
}

// All of that name that can be seen, from top to bottom and left to right.
template <typename Widget = QWidget>
std::vector<Widget*> allVisible(const QWidget& within, const char* name) {
    std::vector<Widget*> found;
    for (auto* const widget : within.findChildren<Widget*>(QLatin1String(name))) {
        if (widget->isVisible())
            found.push_back(widget);
    }
    std::ranges::sort(found, [](const QWidget* a, const QWidget* b) {
        const auto at = [](const QWidget* widget) { return widget->mapToGlobal(QPoint()); };
        return std::pair(at(a).y(), at(a).x()) < std::pair(at(b).y(), at(b).x());
    });
    return found;
}

// Clicks in the middle of a button that can be seen and pressed.
void click(QAbstractButton& button);
void click(const QWidget& within, const char* name);

// Presses what stands at that point of the window twice, as the window system tells of a double click.
void doubleClick(QWidget& window, const QPoint& at);

// Types into a field that can be seen, in place of what it holds.
void type(QLineEdit& field, const QString& text);
void type(const QWidget& within, const char* name, const QString& text);

// What the focus is on; the test fails when it is on nothing.
[[nodiscard]] QWidget& focused();
void press(int key, Qt::KeyboardModifiers modifiers = {});

// What Tab, or another key, comes to from where the focus is, until it has been there before.
[[nodiscard]] std::vector<QWidget*> tabWalk(Qt::Key key = Qt::Key_Tab);
[[nodiscard]] std::vector<std::string> namesOf(const std::vector<QWidget*>& widgets);

// Chooses an entry of a box by what it says, as a user would with the keyboard.
void choose(QComboBox& box, const QString& text);

[[nodiscard]] QStringList entries(const QComboBox& box);

// Whether it is shown on its window, scrolled into sight or not.
[[nodiscard]] inline bool isShown(const QWidget& within, const char* name) {
    return find(within, name).isVisible();
}

// What a label, a tag or an elided line says.
[[nodiscard]] QString textOf(const QWidget& widget);
[[nodiscard]] inline QString textOf(const QWidget& within, const char* name) {
    return textOf(find(within, name));
}

// Whether anything in it is painted in this colour.
[[nodiscard]] bool hasInk(QWidget& widget, const QColor& color);

// What the widgets of that name say, from top to bottom.
[[nodiscard]] std::vector<std::string> textsOf(const QWidget& within, const char* name);

// What a window, a sheet or a part of one says, line by line from its top, each line from left to right. Fields stand as
// "[placeholder]text", boxes as "<chosen entry>", lists as "(list)", editors as "(text)", buttons with their help texts as
// "text{help}", those that are off as "-text" and those that are checked as "+text". Rows of lists are left out.
[[nodiscard]] std::vector<std::string> linesOf(const QWidget& within);

// A store's file of these shoots.
[[nodiscard]] std::string storeOf(const std::vector<Shoot>& shoots);

// Presses a key at a time of its own (milliseconds from any origin but 0), as the window system hands it over:
// to whatever has the focus, shortcuts first.
void pressAt(QWidget& on, std::uint64_t at, int key, const QString& text = {},
             Qt::KeyboardModifiers modifiers = {});

class UiTest : public ::testing::Test {
protected:
    ~UiTest() override;

    // The main window, shown and active.
    ui::PrepMainView& openMain();
    // The same with an active shoot of sets numbered from 1 at the front.
    ui::PrepMainView& openMainWithSets(unsigned sets);
    ui::QRGeneratorView& openGenerator();

    [[nodiscard]] ui::PrepMainView& main() { return *m_main; }
    [[nodiscard]] ShootManager& manager() { return m_main->manager(); }
    [[nodiscard]] ProductCatalog& catalog() { return m_main->catalog(); }
    [[nodiscard]] const Shoot& shoot() { return *manager().activeShoot(); }

    // The open sheet, question or message of that name.
    [[nodiscard]] QDialog& sheet(const char* name) const;
    [[nodiscard]] bool isOpen(const char* name) const;
    // Goes back to the main window, as a desktop does when a sheet has closed.
    void returnToMain();
    // Closes every sheet and message, and goes back to the main window.
    void closeSheets();
    // The sheet, question or message of that name once it has the window system's attention.
    QDialog& awaitSheet(const char* name);

    // Gives a command of the main window by its name in the table, as its menu does.
    void give(const char* command);

    // What the windows work with, on other files than those in memory or with another encoder; the stores stay in memory.
    ui::Services servicesOn(const FileStore& files, const QrEncoder& encoder);

    // "main", which is opened unless it is, or a sheet, opened as a user would: on the first set in sight, or on the first
    // product; "confirmation" is that of deleting the shoot.
    QWidget& openWindow(const std::string& name);

    // Hands over whatever there is to see around a full main window, one after the other: its sheets, what they say while
    // they work, menus, questions, and the generator with this text in all its fields.
    void visitWindows(const QString& typed, const std::function<void(QWidget&)>& look);

    // Adds a shoot in front and makes it active.
    Uuid addShoot(const std::string& name, const std::string& client = {});
    // Adds a set to the active shoot, at its front.
    Uuid addSet(const std::string& number, const std::string& brand = {}, std::vector<SetItem> items = {});
    void addProduct(const std::string& name, std::vector<std::string> colors = {},
                    const std::string& brand = {});

    // The rows of the main window's list that are in sight.
    [[nodiscard]] std::vector<ui::SetRow*> rows();

    // A newer version comes to be known.
    void announceVersion(const std::string& version, const std::string& url);

    MemoryFileStore m_files;
    FakeFileDialogs m_dialogs;
    RecordingClipboard m_clipboard;
    RecordingUrlOpener m_urls;
    MemoryKeyValueStore m_remembered;
    MemoryKeyValueStore m_defaults;
    ScriptedHttpClient m_http;
    ManualTimer m_timer;
    StandingClock m_clock{kMorning};
    ManualTimer m_savingTimer;
    StoreFolder m_stores{m_files, "/data/Vantor", m_clock.clock(), [](const auto& work) { work(); },
                         m_savingTimer};
    Document m_document{&m_stores.shoots(), &m_stores.catalog(), m_clock.clock(), &m_stores.points()};
    Notices m_notices{[] { return std::chrono::milliseconds(0); }};
    QrencodeEncoder m_encoder;
    LibpngWriter m_pngs;
    UpdateChecker m_updates{
        "https://vantor.example/version", "check", "1.2.3", m_http, m_defaults, m_timer, m_clock.clock()};
    ui::Services m_services = servicesOn(m_files, m_encoder);
    std::unique_ptr<ui::PrepMainView> m_main;
    std::unique_ptr<ui::QRGeneratorView> m_generator;
    int m_generatorsAsked = 0;
};

} // namespace vantor::testing
