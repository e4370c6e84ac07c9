// What reading a user's files may do to the window: nothing but add what was read, whatever the files are.

#include "formats/shoot_file.h"
#include "platform/posix/posix_file_store.h"
#include "tests/support/temporary_folder.h"
#include "tests/ui/ui_fixture.h"
#include "ui/frame/beside_window.h"
#include "ui/frame/shell.h"
#include "ui/sheets/catalog_import_sheet.h"
#include "ui/sheets/import_sheet.h"
#include "ui/widgets/large_text_edit.h"

#include <sys/stat.h>

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QSemaphore>
#include <QThread>
#include <QUrl>
#include <atomic>
#include <fstream>
#include <optional>
#include <utility>

namespace vantor::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Paths = std::vector<std::filesystem::path>;

// A disk whose reads wait until they are let on, one by one. Those that would hold the windows up are counted instead.
class SlowFileStore final : public MemoryFileStore {
public:
    void letOn(int count = 1) const { m_mayRead.release(count); }
    [[nodiscard]] int begun() const { return m_begun; }
    [[nodiscard]] int heldUpTheWindow() const { return m_heldUpTheWindow; }

    [[nodiscard]] ReadResult read(const std::filesystem::path& path, std::uint64_t mostBytes) const override {
        ++m_begun;
        if (QThread::currentThread() == QCoreApplication::instance()->thread())
            ++m_heldUpTheWindow;
        else
            m_mayRead.acquire();
        return PosixFileStore().read(path, mostBytes);
    }

private:
    mutable QSemaphore m_mayRead;
    mutable std::atomic<int> m_begun = 0;
    mutable std::atomic<int> m_heldUpTheWindow = 0;
};

class FileReading : public UiTest {
protected:
    ~FileReading() override {
        m_slowDisk.letOn(100);
        ui::readingThreads().waitForDone();
    }

    static ui::PrepMainView& openWindow(ui::Shell& shell) {
        auto& window = shell.openMain();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        settle();
        return window;
    }

    static std::string shootFile(const std::string& name) {
        auto shoot = ibiza();
        shoot.name = name;
        return writeShootFile(shoot);
    }

    // Opens it with the window's own question.
    void choose(ui::PrepMainView& window, const std::filesystem::path& file) {
        m_dialogs.whatToOpen = file;
        QTest::keyClick(&window, Qt::Key_O, Qt::ControlModifier);
    }

    static std::vector<std::string> shootsOf(ui::PrepMainView& window) {
        std::vector<std::string> names;
        for (const auto& shoot : window.manager().shoots())
            names.push_back(shoot.name);
        return names;
    }

    static void drop(QWidget& onto, const QByteArray& addresses) {
        QMimeData data;
        data.setData("text/uri-list", addresses);
        const QPoint middle = onto.rect().center();
        QDragEnterEvent enter(middle, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(&onto, &enter);
        EXPECT_TRUE(enter.isAccepted());
        QDropEvent event(middle, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(&onto, &event);
    }

    std::filesystem::path write(const std::string& name, const std::string& bytes) const {
        std::ofstream(m_folder / name, std::ios::binary) << bytes;
        return m_folder / name;
    }

    // Files that are none to be read, each of its own kind.
    [[nodiscard]] Paths hostileFiles() const {
        const auto large = write("groot.vantor", "x");
        std::filesystem::resize_file(large, 200U << 20U);
        const auto pipe = m_folder / "pijp.vantor";
        EXPECT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
        const auto folder = m_folder / "map.vantor";
        std::filesystem::create_directory(folder);
        const auto endless = m_folder / "eindeloos.vantor";
        std::filesystem::create_symlink("/dev/zero", endless);
        const auto loop = m_folder / "lus.vantor";
        std::filesystem::create_symlink(loop, loop);
        return {large, pipe, folder, endless, loop, m_folder / "weg.vantor"};
    }

    static QByteArray addressOf(const std::filesystem::path& file) {
        return QUrl::fromLocalFile(QString::fromStdString(file.string())).toEncoded();
    }

    TemporaryFolder m_folder;
    PosixFileStore m_disk;
    const ui::Services m_onDisk = servicesOn(m_disk, m_encoder);
    SlowFileStore m_slowDisk;
    const ui::Services m_onSlowDisk = servicesOn(m_slowDisk, m_encoder);
};

// --- shoot files

TEST_F(FileReading, AddsHandedShootsInTheirOrder) {
    ui::Shell shell(m_onDisk);
    Paths files;
    // The larger the earlier, so that the later ones would be read first.
    for (int i = 0; i < 8; ++i) {
        auto shoot = ibiza();
        shoot.name = std::to_string(i);
        for (int sets = 0; sets < 400 * (8 - i); ++sets)
            shoot.sets.push_back(shoot.sets.front());
        files.push_back(write(shoot.name, writeShootFile(shoot)));
    }
    shell.openFiles({files, {}, {}, {}});
    settleReads();
    EXPECT_THAT(shootsOf(shell.openMain()), ElementsAre("7", "6", "5", "4", "3", "2", "1", "0"));
}

TEST_F(FileReading, SaysWhenHandedFilesAreOpenedAndSaved) {
    ui::Shell shell(m_onDisk);
    const auto file = write("a.vantor", shootFile("Texel"));
    std::optional<bool> opened;
    std::string saved;
    shell.openFiles({{file, m_folder / "weg", file}, {}, {}, [&](bool all) {
                         opened = all;
                         saved = m_files.files["/data/Vantor/shoots.json"];
                     }});
    EXPECT_FALSE(opened);
    settleReads();
    EXPECT_EQ(opened, true);
    EXPECT_EQ(saved, m_files.files["/data/Vantor/shoots.json"]);
    EXPECT_THAT(shootsOf(shell.openMain()), ElementsAre("Texel", "Texel"));

    opened.reset();
    shell.openFiles({{}, {}, {}, [&](bool all) { opened = all; }});
    EXPECT_EQ(opened, true);
}

TEST_F(FileReading, SaysOnceThatHandedFilesAreNoShoots) {
    ui::Shell shell(m_onDisk);
    shell.openFiles({hostileFiles(), {}, {}, {}});
    settleReads();
    EXPECT_THAT(shootsOf(shell.openMain()), IsEmpty());
    QTest::keyClick(&sheet("alert"), Qt::Key_Escape);
    settle();
    EXPECT_FALSE(isOpen("alert"));
    // And once more for the next.
    shell.openFiles({{m_folder / "weg"}, {}, {}, {}});
    settleReads();
    EXPECT_TRUE(isOpen("alert"));
}

TEST_F(FileReading, PassesOverAChosenFileThatCannotBeRead) {
    ui::Shell shell(m_onDisk);
    auto& window = openWindow(shell);
    auto files = hostileFiles();
    files.push_back(write("kapot.vantor", "kapot"));
    for (const auto& file : files) {
        choose(window, file);
        settleReads();
        EXPECT_EQ(isOpen("alert"), file == files.back()) << file;
    }
    EXPECT_THAT(shootsOf(window), IsEmpty());
}

TEST_F(FileReading, TakesDroppedFilesOfAnyName) {
    ui::Shell shell(m_onDisk);
    auto& window = shell.openMain();
    write("a\xFF\n.vantor", shootFile("Texel"));
    write(".vantor", shootFile("Vlieland"));
    const auto folder = addressOf(m_folder.path());
    drop(window, folder + "/a%FF%0A.vantor\r\n" + folder + "/.vantor\r\n" + folder + "/a.csv\r\n");
    settleReads();
    EXPECT_THAT(shootsOf(window), ElementsAre("Vlieland", "Texel"));
    EXPECT_FALSE(isOpen("alert"));
}

TEST_F(FileReading, KeepsTheWindowGoingWhileADiskDoesNotAnswer) {
    ui::Shell shell(m_onSlowDisk);
    const auto file = write("a.vantor", shootFile("Texel"));
    auto& window = openWindow(shell);
    shell.openFiles({{file}, {}, {}, {}});
    choose(window, file);
    drop(window, addressOf(file));
    EXPECT_TRUE(runUntil([&] { return m_slowDisk.begun() == 3; }));
    EXPECT_THAT(shootsOf(shell.openMain()), IsEmpty());
    m_slowDisk.letOn(3);
    settleReads();
    EXPECT_THAT(shootsOf(shell.openMain()), ElementsAre("Texel", "Texel", "Texel"));
    const auto files = hostileFiles();
    for (const auto& each : files) {
        choose(window, each);
        drop(window, addressOf(each));
    }
    m_slowDisk.letOn(100);
    settleReads();
    EXPECT_GE(m_slowDisk.begun(), 3 + static_cast<int>(files.size()));
    EXPECT_EQ(m_slowDisk.heldUpTheWindow(), 0);
}

TEST_F(FileReading, GivesUpWhatIsUnreadWhenTheWindowCloses) {
    ui::Shell shell(m_onSlowDisk);
    const auto file = write("a.vantor", shootFile("Texel"));
    std::optional<bool> opened;
    shell.openFiles({{file, file}, {}, {}, [&](bool all) { opened = all; }});
    m_slowDisk.letOn();
    ASSERT_TRUE(runUntil([&] { return m_slowDisk.begun() == 2; }));
    EXPECT_FALSE(opened);
    shell.openMain().close();
    settle();
    EXPECT_EQ(opened, false);
    m_slowDisk.letOn();
    settleReads();
    EXPECT_THAT(shootsOf(shell.openMain()), ElementsAre("Texel"));
}

TEST_F(FileReading, StoresNothingThatNobodyWaitsForAnyMore) {
    ui::Shell shell(m_onSlowDisk);
    const auto file = write("a.vantor", shootFile("Texel"));
    std::optional<bool> opened;
    bool isWanted = true;
    shell.openFiles({{file, file, file}, {}, [&] { return isWanted; }, [&](bool all) { opened = all; }});
    m_slowDisk.letOn();
    ASSERT_TRUE(runUntil([&] { return m_slowDisk.begun() == 2; }));
    isWanted = false;
    m_slowDisk.letOn();
    settleReads();
    EXPECT_EQ(opened, false);
    EXPECT_THAT(shootsOf(shell.openMain()), ElementsAre("Texel"));
    EXPECT_EQ(m_slowDisk.begun(), 2);
}

TEST_F(FileReading, AddsNoShootThatAnEndedProcessStored) {
    ui::Shell shell(m_onDisk);
    const auto texel = write("a.vantor", shootFile("Texel"));
    const auto vlieland = write("b.vantor", shootFile("Vlieland"));
    // One from long before, and one of two that were handed over.
    shell.openFiles({{texel, vlieland}, {}, {}, {}});
    settleReads();
    const Timestamp handedAt{m_clock.now().secondsSinceReference + 60};
    m_clock.set({handedAt.secondsSinceReference + 1});
    shell.openFiles({{texel}, {}, {}, {}});
    settleReads();
    ASSERT_THAT(shootsOf(shell.openMain()), ElementsAre("Texel", "Vlieland", "Texel"));
    shell.openMain().close();
    settle();
    shell.openFiles({{texel, texel, vlieland}, handedAt, {}, {}});
    settleReads();
    EXPECT_THAT(shootsOf(shell.openMain()), ElementsAre("Vlieland", "Texel", "Texel", "Vlieland", "Texel"));
}

// --- sets and products

class CsvReading : public FileReading {
protected:
    template <typename Sheet, typename... More>
    Sheet& openSheet(const ui::Services& services, More&&... more) {
        auto* const opened = new Sheet(m_main.get(), std::forward<More>(more)..., services);
        opened->open();
        settle();
        return *opened;
    }

    void refusesHostileFiles(QDialog& over) {
        auto& editor = find<ui::LargeTextEdit>(over, "csvText");
        editor.setText("oud");
        const auto files = hostileFiles();
        settle();
        for (const auto& file : files) {
            m_dialogs.whatToOpen = file;
            QTest::mouseClick(&find<QAbstractButton>(over, "chooseFileButton"), Qt::LeftButton);
            drop(over, addressOf(file));
        }
        m_slowDisk.letOn(100);
        settleReads();
        EXPECT_EQ(m_slowDisk.heldUpTheWindow(), 0);
        EXPECT_EQ(editor.text(), "oud");
    }
};

TEST_F(CsvReading, RefusesHostileFiles) {
    openMainWithSets(1);
    refusesHostileFiles(openSheet<ui::ImportSheet>(m_onSlowDisk, manager()));
    std::filesystem::remove_all(m_folder.path());
    std::filesystem::create_directory(m_folder.path());
    refusesHostileFiles(openSheet<ui::CatalogImportSheet>(m_onSlowDisk, catalog(), std::string()));
}

TEST_F(CsvReading, ShowsTheFileThatWasChosenLastAndNoneOnceItClosed) {
    openMainWithSets(1);
    auto& over = openSheet<ui::ImportSheet>(m_onSlowDisk, manager());
    int dropped = 0;
    for (const auto* const text : {"eerst", "laatst"}) {
        drop(over, addressOf(write(text + std::string("\n.csv"), text)));
        ASSERT_TRUE(runUntil([&] { return m_slowDisk.begun() == dropped + 1; }));
        ++dropped;
    }
    m_slowDisk.letOn(dropped);
    settleReads();
    EXPECT_EQ(find<ui::LargeTextEdit>(over, "csvText").text(), "laatst");
    drop(over, addressOf(write("a.csv", "1;Nike")));
    ASSERT_TRUE(runUntil([&] { return m_slowDisk.begun() == dropped + 1; }));
    over.reject();
    settle();
    m_slowDisk.letOn();
    settleReads();
    EXPECT_FALSE(isOpen("importSheet"));
}

} // namespace
} // namespace vantor::testing
