#include "formats/shoot_file.h"
#include "platform/qt/qt_file_dialogs.h"
#include "tests/support/temporary_folder.h"
#include "tests/ui/ui_fixture.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QPushButton>
#include <QTimer>
#include <fstream>
#include <ostream>
#include <tuple>
#include <utility>

namespace vantor::testing {
namespace {

// A window that asks for a file: its name, the button that does, and the dialog that opens.
struct Asker {
    const char* window;
    const char* button;
    const char* dialog;
};

constexpr Asker kAskers[] = {
    {"main", "saveButton", "saveDialog"},
    {"main", "saveButton", "replaceQuestion"},
    {"main", "openButton", "openDialog"},
    {"importSheet", "chooseFileButton", "openDialog"},
    {"catalogSheet", "exportButton", "saveDialog"},
    {"catalogSheet", "exportButton", "replaceQuestion"},
    {"catalogImportSheet", "chooseFileButton", "openDialog"},
    {"bulkExportSheet", "exportButton", "saveDialog"},
    {"bulkExportSheet", "exportButton", "replaceQuestion"},
    {"qrSheet", "saveButton", "saveDialog"},
    {"generator", "saveButton", "saveDialog"},
};
// What happens while the dialog is open.
constexpr const char* kEvents[] = {"Cancelled",        "FileHandedOver", "BrokenFileHandedOver",
                                   "AllWindowsClosed", "AskerClosed",    "MainGone"};

void PrintTo(const Asker& each, std::ostream* out) {
    *out << each.window << ' ' << each.dialog;
}

class OpenDialogsTest : public UiTest {
protected:
    OpenDialogsTest() {
        m_dialogs.real = &m_real;
        openMainWithSets(1);
        addProduct("sweater", {"rood"}, "Nike");
        m_files.files["/in/a.vantor"] = writeShootFile(ibiza());
        m_files.files["/in/b.vantor"] = "kapot";
        std::ofstream(m_folder / "er al.png") << "oud";
    }
    ~OpenDialogsTest() override {
        // Before the dialogs that they may still ask.
        m_generator.reset();
        m_main.reset();
    }

    // Saves under this name, in an own folder, as the file dialog that is open does.
    void save(const std::string& fileName) {
        auto& dialog = sheet("saveDialog");
        auto& name = find<QLineEdit>(dialog, "fileNameEdit");
        name.setFocus();
        name.setText(QString::fromStdString((m_folder / fileName).string()));
        dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save)->click();
        settle();
    }

    QWidget& openAsker(const Asker& asker) {
        if (std::string(asker.window) != "generator")
            return openWindow(asker.window);
        auto& generator = openGenerator();
        click(generator, "generateButton");
        return generator;
    }

    void ask(QWidget& window, const Asker& asker) {
        click(window, asker.button);
        if (std::string(asker.dialog) == "replaceQuestion") {
            const auto filter = dynamic_cast<QFileDialog&>(sheet("saveDialog")).nameFilters().front();
            const auto there = "er al." + filter.section(QLatin1String("*."), 1).chopped(1).toStdString();
            std::ofstream(m_folder / there) << "oud";
            save(there);
        }
        ASSERT_TRUE(isOpen(asker.dialog));
    }

    void let(const std::string& event, QWidget& asker, const char* dialog) {
        if (event == "Cancelled")
            sheet(dialog).reject();
        else if (event.ends_with("FileHandedOver"))
            main().openShootFiles(
                {{event == "FileHandedOver" ? "/in/a.vantor" : "/in/b.vantor"}, {}, {}, {}});
        else if (event == "AllWindowsClosed")
            QApplication::closeAllWindows();
        // The two windows go when they are closed, as sheets do.
        else if (event == "MainGone" || &asker == m_main.get())
            m_main.reset();
        else if (&asker == m_generator.get())
            m_generator.reset();
        else
            asker.close();
        settleReads();
    }

    [[nodiscard]] bool anyDialogIsOpen() const {
        return isOpen("saveDialog") || isOpen("openDialog") || isOpen("replaceQuestion");
    }

    TemporaryFolder m_folder;
    QtFileDialogs m_real;
};

class EveryOpenDialogTest : public OpenDialogsTest,
                            public ::testing::WithParamInterface<std::tuple<Asker, const char*>> {};

TEST_P(EveryOpenDialogTest, OutlivesWhatComesOverItAndGoesWithWhatAsked) {
    const auto& [asker, named] = GetParam();
    const std::string event = named;
    auto& window = openAsker(asker);
    ask(window, asker);
    const auto before = m_files.files;
    let(event, window, asker.dialog);
    const bool handedOver = event.ends_with("FileHandedOver");
    const bool goesOn = handedOver || (event == "MainGone" && std::string(asker.window) == "generator");
    // Who does not want to replace a file is asked for another one.
    const bool asksAgain =
        event == "Cancelled" && std::string(asker.dialog) == std::string("replaceQuestion");
    EXPECT_EQ(anyDialogIsOpen(), goesOn || asksAgain);
    if (handedOver) {
        EXPECT_EQ(isOpen("alert"), event == "BrokenFileHandedOver");
        EXPECT_EQ(manager().shoots().size(), event == "FileHandedOver" ? 2U : 1U);
    } else {
        EXPECT_EQ(m_files.files, before);
    }
    closeSheets();
}

INSTANTIATE_TEST_SUITE_P(All, EveryOpenDialogTest,
                         ::testing::Combine(::testing::ValuesIn(kAskers), ::testing::ValuesIn(kEvents)),
                         [](const auto& tested) {
                             const Asker& asker = std::get<0>(tested.param);
                             return std::string(asker.window) + "_" + asker.dialog + "_" +
                                    std::get<1>(tested.param);
                         });

class ClosingImportTest : public OpenDialogsTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(ClosingImportTest, WaitsForItsDialog) {
    auto& importing = openWindow(GetParam());
    find<QPlainTextEdit>(importing, "csvText").setPlainText("Naam;Merk\nriem;Nike");
    click(importing, "importButton");
    settleReads();
    auto& closing = find<QTimer>(importing, "closing");
    ASSERT_TRUE(closing.isActive());
    click(importing, "chooseFileButton");
    closing.start(0);
    EXPECT_TRUE(runUntil([&] { return !closing.isActive(); }));
    settle();
    ASSERT_TRUE(isOpen("openDialog"));
    ASSERT_TRUE(isOpen(GetParam()));
    sheet("openDialog").reject();
    settle();
    EXPECT_FALSE(isOpen("openDialog"));
    EXPECT_FALSE(isOpen(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Both, ClosingImportTest, ::testing::Values("importSheet", "catalogImportSheet"));

TEST_F(OpenDialogsTest, ExportsTheShootThatWasActiveWhenItWasAskedFor) {
    for (const auto* const button : {"exportCsvButton", "exportJsonButton", "saveButton"}) {
        const auto before = manager().activeShootId();
        click(main(), button);
        addShoot("Texel");
        addSet("99", "Zara");
        save(button);
        const auto written = std::ranges::find_if(m_files.files, [&](const auto& file) {
            return file.first.string().find(button) != std::string::npos;
        });
        ASSERT_NE(written, m_files.files.end()) << button;
        EXPECT_NE(written->second.find("Marvis"), std::string::npos) << button;
        EXPECT_EQ(written->second.find("Zara"), std::string::npos) << button;
        manager().setActiveShootId(before);
        settle();
        returnToMain();
    }
}

} // namespace
} // namespace vantor::testing
