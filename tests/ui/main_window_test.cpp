#include "formats/shoot_file.h"
#include "tests/support/event_loop.h"
#include "tests/ui/ui_fixture.h"
#include "ui/frame/theme.h"

#include <QDropEvent>
#include <QLabel>
#include <QLayout>
#include <QMessageBox>
#include <QMimeData>
#include <QScrollBar>
#include <QUrl>
#include <algorithm>
#include <ostream>

namespace vantor::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::UnorderedElementsAre;

class MainWindow : public UiTest {
protected:
    [[nodiscard]] std::vector<std::string> shownHeadlines() {
        std::vector<std::string> headlines;
        for (const auto* const row : rows())
            headlines.push_back(textOf(*row, "headline").toStdString());
        return headlines;
    }

    [[nodiscard]] QComboBox& picker() { return find<QComboBox>(main(), "shootPicker"); }
    [[nodiscard]] std::size_t saves() const { return m_files.replacements.size(); }

    // Presses keys as the window system hands them over, at times that no scanner would have.
    void press(int key, Qt::KeyboardModifiers modifiers = {}, const QString& text = {}) {
        m_at += 1000;
        pressAt(main(), m_at, key, text, modifiers);
        settle();
    }

    void drop(const QList<QUrl>& urls) {
        QMimeData data;
        data.setUrls(urls);
        // As with the key that proposes to move what is dragged.
        const Qt::DropActions possible = Qt::CopyAction | Qt::MoveAction;
        QDragEnterEvent enter(QPoint(300, 300), possible, &data, Qt::LeftButton, Qt::ShiftModifier);
        QApplication::sendEvent(&main(), &enter);
        m_dropTaken = enter.isAccepted();
        if (!m_dropTaken)
            return;
        QDropEvent dropped(QPointF(300, 300), possible, &data, Qt::LeftButton, Qt::ShiftModifier);
        QApplication::sendEvent(&main(), &dropped);
        EXPECT_EQ(enter.dropAction(), Qt::CopyAction);
        EXPECT_EQ(dropped.dropAction(), Qt::CopyAction);
        settleReads();
    }

    std::uint64_t m_at = 1'000'000;
    bool m_dropTaken = false;
};

// --- what it says

TEST_F(MainWindow, SaysTheseTextsWithoutAShoot) {
    EXPECT_EQ(openMain().windowTitle(), "Vantor Prep");
    EXPECT_THAT(ownTexts(main()),
                UnorderedElementsAre(
                    "Vantor Prep", "v1.2.3",
                    "Gratis. Bereid shoots, sets en QR-kaarten voor — Vantor zelf tagt tijdens de shoot.",
                    "0", "Sets", "Geen shoot geselecteerd", "Klanten", "Handleiding", "Import CSV",
                    "Export CSV", "Export JSON", "QR Generator", "Bulk QR-export", "Productcatalogus",
                    "Nieuwe Shoot", "Maak een shoot aan om te beginnen"));
}

TEST_F(MainWindow, SaysTheseTextsWithAShoot) {
    openMain();
    addShoot("Ibiza Zomer 2026", "Café Zürich");
    addSet("1", "Marvis");
    addSet("2", "Marvis");
    EXPECT_THAT(ownTexts(main()),
                UnorderedElementsAre(
                    "Vantor Prep", "v1.2.3",
                    "Gratis. Bereid shoots, sets en QR-kaarten voor — Vantor zelf tagt tijdens de shoot.",
                    "2", "Sets", "Ibiza Zomer 2026", "Café Zürich", "2 sets", "Klanten", "Handleiding",
                    "Import CSV", "Export CSV", "Export JSON", "QR Generator", "Bulk QR-export",
                    "Productcatalogus", "Nieuwe Shoot", "+ Set", "Open...", "Bewaar...",
                    "[Zoek op naam, model of item...]", "[Scan QR of typ setdata...]", "Activeer"));
}

TEST_F(MainWindow, TellsTheseHelpTextsAndShortcuts) {
    struct Help {
        const char* name;
        const char* text;
        const char* key;
        // Whether the tool tip is the text alone.
        bool isWhole = false;
    };
    openMain();
    addShoot("Ibiza");
    announceVersion("2.0", "https://vantor.example/2.0");
    for (const auto& [name, text, key, isWhole] : {
             Help{"clientsButton", "Klanten beheren, kiesbaar bij een nieuwe shoot en in de productcatalogus",
                  ""},
             Help{"manualButton", "Opent de handleiding op vantor.example in je browser", ""},
             Help{"deleteShootButton", "Shoot verwijderen (inclusief alle sets erin)", ""},
             Help{"openButton", "Open een .vantor-bestand, bijv. een shoot geëxporteerd uit Vantor", "Ctrl+O",
                  true},
             Help{"saveButton",
                  "Bewaar de volledige shoot als .vantor-bestand, te openen in Vantor of Vantor Prep",
                  "Ctrl+S", true},
             Help{"importButton", "Voegt de sets uit een CSV-bestand toe aan een shoot", "Ctrl+I"},
             Help{"generatorButton", "Opent een venster voor losse QR-codes, buiten een shoot om", "Ctrl+G"},
             Help{"bulkExportButton",
                  "Maakt een PDF met de QR-kaarten van de sets die je kiest, om te printen", "Ctrl+P"},
             Help{"newShootButton", "Maakt een shoot aan, die meteen de actieve is", "Ctrl+N"},
             Help{"newSetButton", "Maakt een set aan in deze shoot", "Ctrl+T"},
         }) {
        const QString help = text;
        const QString shortcut = key;
        const auto& button = find(main(), name);
        EXPECT_EQ(button.toolTip(),
                  shortcut.isEmpty() || isWhole ? help : QStringLiteral("%1 (%2)").arg(help, shortcut));
        EXPECT_EQ(button.accessibleDescription(),
                  shortcut.isEmpty() ? help : QStringLiteral("%1. Sneltoets %2").arg(help, shortcut));
    }
    EXPECT_EQ(find(main(), "updateButton").toolTip(),
              "Nieuwe versie van Vantor Prep beschikbaar — klik om de downloadpagina te openen. "
              "Update gebeurt niet automatisch.");
}

TEST_F(MainWindow, HasItsCommandsInOrder) {
    openMain();
    addShoot("A");
    addShoot("B");
    const auto& commands = *find(main(), "clientsButton").parentWidget();
    auto buttons = commands.findChildren<QAbstractButton*>();
    std::ranges::sort(buttons, [](const QWidget* a, const QWidget* b) {
        const auto first = a->geometry();
        const auto second = b->geometry();
        const bool sameLine = first.bottom() >= second.top() && second.bottom() >= first.top();
        return sameLine ? first.left() < second.left() : first.top() < second.top();
    });
    std::vector<std::string> names;
    for (const auto* const button : buttons)
        names.push_back(button->objectName().toStdString());
    EXPECT_THAT(names, ElementsAre("clientsButton", "manualButton", "importButton", "exportCsvButton",
                                   "exportJsonButton", "generatorButton", "bulkExportButton", "catalogButton",
                                   "newShootButton", "deleteShootButton"));
}

TEST_F(MainWindow, CountsTheSetsOfTheActiveShoot) {
    openMainWithSets(3);
    EXPECT_EQ(textOf(main(), "statValue"), "3");
    EXPECT_EQ(textOf(main(), "shootCount"), "3 sets");
    addSet("4");
    EXPECT_EQ(textOf(main(), "statValue"), "4");
    EXPECT_EQ(textOf(main(), "shootCount"), "4 sets");
}

TEST_F(MainWindow, ShowsAClientTagOnlyForAClient) {
    openMain();
    addShoot("Zonder");
    EXPECT_FALSE(isShown(main(), "clientTag"));
    addShoot("Met", "Nike");
    EXPECT_TRUE(isShown(main(), "clientTag"));
    EXPECT_EQ(textOf(main(), "clientTag"), "Nike");
}

TEST_F(MainWindow, ShowsItsCountsInBlueAndItsClientInWhiteOnPurple) {
    openMain();
    addShoot("Ibiza", "Nike");
    const auto& value = find<QLabel>(main(), "statValue");
    EXPECT_EQ(value.palette().color(QPalette::WindowText), ui::theme::blue(main().palette()));
    auto& tag = find(main(), "clientTag");
    const auto picture = tag.grab().toImage();
    EXPECT_EQ(picture.pixelColor(3, picture.height() / 2), ui::theme::purple(main().palette()));
    bool hasWhite = false;
    for (int x = 10; x < picture.width() - 10; ++x)
        hasWhite = hasWhite || picture.pixelColor(x, picture.height() / 2).lightness() > 220;
    EXPECT_TRUE(hasWhite);
}

TEST_F(MainWindow, WritesItsCountsInDigitsOfEvenWidth) {
    openMainWithSets(1);
    for (const auto* const count :
         {&find<QLabel>(main(), "statValue"), &find<QLabel>(*rows().front(), "taggedCount")}) {
        const auto metrics = count->fontMetrics();
        for (char digit = '1'; digit <= '9'; ++digit)
            EXPECT_EQ(metrics.horizontalAdvance(QLatin1Char(digit)),
                      metrics.horizontalAdvance(QLatin1Char('0')));
    }
}

TEST_F(MainWindow, NamesTheActiveSet) {
    openMainWithSets(2);
    EXPECT_FALSE(isShown(main(), "activeText"));
    manager().activateSet(shoot().sets[1].id);
    settle();
    EXPECT_TRUE(isShown(main(), "activeText"));
    EXPECT_EQ(textOf(main(), "activeText"), "Actief: Set 2 — Marvis");
    manager().deleteSet(shoot().sets[1].id);
    settle();
    EXPECT_FALSE(isShown(main(), "activeText"));
}

// --- what is there and what can be pressed

TEST_F(MainWindow, WithoutAShootOffersOnlyWhatNeedsNone) {
    openMain();
    for (const auto* const name : {"clientsButton", "manualButton", "importButton", "generatorButton",
                                   "catalogButton", "newShootButton"})
        EXPECT_TRUE(find(main(), name).isEnabled() && isShown(main(), name)) << name;
    for (const auto* const name : {"exportCsvButton", "exportJsonButton", "bulkExportButton"})
        EXPECT_TRUE(!find(main(), name).isEnabled() && isShown(main(), name)) << name;
    EXPECT_TRUE(isShown(main(), "emptyState"));
    for (const auto* const name : {"deleteShootButton", "newSetButton", "openButton", "saveButton",
                                   "searchField", "setList", "scannerField", "activateScanButton"})
        EXPECT_FALSE(isShown(main(), name)) << name;
}

TEST_F(MainWindow, WithAnEmptyShootKeepsTheExportsDisabled) {
    openMain();
    addShoot("Leeg");
    EXPECT_FALSE(isShown(main(), "emptyState"));
    EXPECT_TRUE(isShown(main(), "deleteShootButton"));
    EXPECT_THAT(rows(), IsEmpty());
    for (const auto* const name : {"saveButton", "exportCsvButton", "exportJsonButton", "bulkExportButton"})
        EXPECT_TRUE(!find(main(), name).isEnabled() && isShown(main(), name)) << name;
    EXPECT_TRUE(find(main(), "newSetButton").isEnabled());
    EXPECT_TRUE(find(main(), "openButton").isEnabled());

    const auto added = addSet("1");
    for (const auto* const name : {"saveButton", "exportCsvButton", "exportJsonButton", "bulkExportButton"})
        EXPECT_TRUE(find(main(), name).isEnabled()) << name;
    EXPECT_THAT(rows(), SizeIs(1));
    manager().deleteSet(added);
    settle();
    EXPECT_FALSE(find(main(), "saveButton").isEnabled());
}

TEST_F(MainWindow, HidesThePickerBelowTwoShootsAndKeepsItsPlace) {
    openMain();
    const auto widthOfPlace = [&] { return picker().parentWidget()->width(); };
    const auto clientsAt = [&] {
        const auto& button = find(main(), "clientsButton");
        return button.mapTo(&main(), QPoint());
    };
    EXPECT_FALSE(picker().isVisible());
    EXPECT_GE(widthOfPlace(), 200);
    addShoot("Eén");
    EXPECT_FALSE(picker().isVisible());
    EXPECT_GE(widthOfPlace(), 200);
    const auto before = clientsAt();
    addShoot("Twee");
    EXPECT_TRUE(picker().isVisible());
    EXPECT_GE(picker().width(), 200);
    EXPECT_EQ(clientsAt(), before) << "the other commands have moved";
    manager().deleteShoot(*manager().activeShootId());
    settle();
    EXPECT_FALSE(picker().isVisible());
}

TEST_F(MainWindow, PicksAShootByName) {
    openMain();
    addShoot("Oud");
    addShoot("Dubbel");
    addShoot("Dubbel");
    const auto label = picker().parentWidget()->findChild<QLabel*>();
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->text(), "Shoot");
    EXPECT_EQ(picker().accessibleName(), "Shoot");
    EXPECT_EQ(entries(picker()), QStringList({"Dubbel", "Dubbel", "Oud"}));
    EXPECT_EQ(picker().currentIndex(), 0);

    choose(picker(), "Oud");
    EXPECT_EQ(shoot().name, "Oud");
    EXPECT_EQ(textOf(main(), "shootName"), "Oud");
    QTest::keyClick(&picker(), Qt::Key_Up);
    settle();
    EXPECT_EQ(manager().activeShootId(), manager().shoots()[1].id);
}

TEST_F(MainWindow, LoadsItsStoresWhenItIsFirstShown) {
    m_files.files["/data/Vantor/shoots.json"] = storeOf({ibiza()});
    m_files.files["/data/Vantor/catalog.json"] = R"({"products":[],"clients":["Anna"],"brands":[]})";
    openMain();
    EXPECT_EQ(textOf(main(), "shootName"), QString::fromStdString(ibiza().name));
    EXPECT_THAT(rows(), SizeIs(ibiza().sets.size()));
    EXPECT_THAT(catalog().clients(), ElementsAre("Anna"));
    m_files.reads.clear();
    main().hide();
    main().show();
    EXPECT_THAT(m_files.reads, IsEmpty());
}

// --- searching

TEST_F(MainWindow, SearchesAndCounts) {
    openMain();
    addShoot("Ibiza");
    addSet("1", "Marvis", {SetItem::make("Navy trui", "rood")});
    addSet("2", "Nike", {SetItem::make("broek", "navy")});
    addSet("12", "Marvis");
    EXPECT_FALSE(isShown(main(), "clearSearchButton"));
    EXPECT_FALSE(isShown(main(), "searchCount"));

    type(main(), "searchField", "marv");
    EXPECT_THAT(shownHeadlines(), ElementsAre("Set 12 — Marvis", "Set 1 — Marvis"));
    EXPECT_EQ(textOf(main(), "searchCount"), "2/3");
    EXPECT_TRUE(isShown(main(), "searchCount"));
    EXPECT_TRUE(isShown(main(), "clearSearchButton"));

    type(main(), "searchField", "  navy ");
    EXPECT_THAT(shownHeadlines(), ElementsAre("Set 1 — Marvis"));
    EXPECT_EQ(textOf(main(), "searchCount"), "1/3");

    type(main(), "searchField", "rood");
    EXPECT_THAT(shownHeadlines(), IsEmpty());
    EXPECT_EQ(textOf(main(), "searchCount"), "0/3");

    type(main(), "searchField", "   ");
    EXPECT_THAT(shownHeadlines(), SizeIs(3));
    EXPECT_EQ(textOf(main(), "searchCount"), "3/3");
    EXPECT_TRUE(isShown(main(), "clearSearchButton"));

    click(main(), "clearSearchButton");
    EXPECT_EQ(find<QLineEdit>(main(), "searchField").text(), "");
    EXPECT_FALSE(isShown(main(), "clearSearchButton"));
    EXPECT_FALSE(isShown(main(), "searchCount"));
}

TEST_F(MainWindow, TheSearchStaysWhenTheShootChanges) {
    openMain();
    addShoot("Oud");
    addSet("1", "Marvis");
    addShoot("Nieuw");
    addSet("1", "Nike");
    addSet("2", "Marvis");
    type(main(), "searchField", "marvis");
    EXPECT_THAT(shownHeadlines(), ElementsAre("Set 2 — Marvis"));
    choose(picker(), "Oud");
    EXPECT_THAT(shownHeadlines(), ElementsAre("Set 1 — Marvis"));
    EXPECT_EQ(textOf(main(), "searchCount"), "1/1");
}

// --- the sheets

struct Opening {
    const char* button;
    const char* sheet;
    const char* title;
};

void PrintTo(const Opening& each, std::ostream* out) {
    *out << each.button;
}

class MainWindowOpens : public MainWindow, public ::testing::WithParamInterface<Opening> {};

TEST_P(MainWindowOpens, ASheetThatEscapeCloses) {
    openMainWithSets(2);
    auto& opened = open(GetParam().button, GetParam().sheet);
    EXPECT_EQ(opened.windowTitle(), GetParam().title);
    EXPECT_EQ(opened.windowModality(), Qt::WindowModal);
    QTest::keyClick(&opened, Qt::Key_Escape);
    settle();
    EXPECT_FALSE(isOpen(GetParam().sheet));
    returnToMain();
    EXPECT_EQ(QApplication::focusWidget(), &find(main(), "scannerField"));
}

INSTANTIATE_TEST_SUITE_P(Sheets, MainWindowOpens,
                         ::testing::Values(Opening{"clientsButton", "clientsSheet", "Klanten"},
                                           Opening{"importButton", "importSheet", "Import CSV"},
                                           Opening{"bulkExportButton", "bulkExportSheet", "Bulk QR-export"},
                                           Opening{"catalogButton", "catalogSheet", "Productcatalogus"},
                                           Opening{"newShootButton", "newShootSheet", "Nieuwe Shoot"},
                                           Opening{"newSetButton", "newSetSheet", "Nieuwe Set"}),
                         [](const auto& instance) { return std::string(instance.param.sheet); });

TEST_F(MainWindow, OpensTheCatalogueAtTheBrandOfTheClient) {
    openMain();
    addProduct("broek", {}, "Marvis");
    addProduct("trui", {}, "NIKE");
    addShoot("Ibiza", "nike");
    EXPECT_EQ(find<QComboBox>(open("catalogButton", "catalogSheet"), "brandPicker").currentText(), "NIKE");
}

TEST_F(MainWindow, OffersTheClientsOfAllShoots) {
    openMain();
    for (const auto* const client : {"Zoé", "Adidas", "", "Zoé", "adidas"})
        addShoot("Shoot", client);
    std::vector<std::string> names;
    for (const auto* const name : allVisible(open("clientsButton", "clientsSheet"), "clientName"))
        names.push_back(textOf(*name).toStdString());
    EXPECT_THAT(names, UnorderedElementsAre("Adidas", "Zoé", "adidas"));
}

TEST_F(MainWindow, HandsTheActiveShootToTheBulkExport) {
    openMainWithSets(2);
    std::vector<std::string> headlines;
    for (const auto* const card : allVisible(open("bulkExportButton", "bulkExportSheet"), "cardHeadline"))
        headlines.push_back(textOf(*card).toStdString());
    EXPECT_THAT(headlines, ElementsAre("Set 1 — Marvis", "Set 2 — Marvis"));
}

TEST_F(MainWindow, AsksForTheGeneratorsWindow) {
    openMain();
    click(main(), "generatorButton");
    EXPECT_EQ(m_generatorsAsked, 1);
}

TEST_F(MainWindow, OpensTheManual) {
    openMain();
    click(main(), "manualButton");
    EXPECT_THAT(m_urls.addresses, ElementsAre("https://vantor.example/handleiding"));
    // Without a network: the one that came with the program, if one did.
    press(Qt::Key_F1);
    m_services.installedManual = "/usr/share/doc/vantor-prep/handleiding/index.html";
    press(Qt::Key_F1);
    EXPECT_THAT(m_urls.addresses,
                ElementsAre("https://vantor.example/handleiding", "https://vantor.example/handleiding",
                            "file:///usr/share/doc/vantor-prep/handleiding/index.html"));
}

// --- the update notice

TEST_F(MainWindow, NoticesANewerVersionAndForgetsIt) {
    openMain();
    EXPECT_FALSE(isShown(main(), "updateButton"));
    announceVersion("2.0.1", "https://vantor.example/downloads/2.0.1");
    EXPECT_TRUE(isShown(main(), "updateButton"));
    EXPECT_EQ(textOf(main(), "updateButton"), "v2.0.1 beschikbaar");
    click(main(), "updateButton");
    EXPECT_THAT(m_urls.addresses, ElementsAre("https://vantor.example/downloads/2.0.1"));

    m_clock.set({m_clock.now().secondsSinceReference + 7 * 3600});
    announceVersion("1.2.3", "https://vantor.example/downloads/1.2.3");
    EXPECT_FALSE(isShown(main(), "updateButton"));
}

// --- exporting and importing

TEST_F(MainWindow, ExportsCsv) {
    openMainWithSets(2);
    m_dialogs.whereToSave = "/out/a.csv";
    click(main(), "exportCsvButton");
    EXPECT_THAT(m_dialogs.proposedNames, ElementsAre("Ibiza Zomer 2026.csv"));
    EXPECT_THAT(m_dialogs.savedTypes, ElementsAre(ElementsAre("csv")));
    EXPECT_EQ(m_files.files["/out/a.csv"], manager().exportCSV(shoot().id));
}

TEST_F(MainWindow, ExportsJson) {
    openMainWithSets(2);
    m_dialogs.whereToSave = "/out/a.json";
    click(main(), "exportJsonButton");
    EXPECT_THAT(m_dialogs.proposedNames, ElementsAre("Ibiza Zomer 2026.json"));
    EXPECT_THAT(m_dialogs.savedTypes, ElementsAre(ElementsAre("json")));
    EXPECT_EQ(m_files.files["/out/a.json"], manager().exportJSON(shoot().id));
}

TEST_F(MainWindow, SavesAShootFile) {
    openMainWithSets(2);
    m_dialogs.whereToSave = "/out/a.vantor";
    click(main(), "saveButton");
    EXPECT_THAT(m_dialogs.proposedNames, ElementsAre("Ibiza Zomer 2026.vantor"));
    EXPECT_THAT(m_dialogs.savedTypes, ElementsAre(ElementsAre("vantor")));
    EXPECT_EQ(m_files.files["/out/a.vantor"], manager().exportJSON(shoot().id));
}

TEST_F(MainWindow, WritesNothingWhenAnExportIsCancelled) {
    openMainWithSets(2);
    const auto before = m_files.files;
    for (const auto* const name : {"exportCsvButton", "exportJsonButton", "saveButton"})
        click(main(), name);
    EXPECT_THAT(m_dialogs.proposedNames, SizeIs(3));
    EXPECT_EQ(m_files.files, before);
}

TEST_F(MainWindow, TellsWhatBecameOfAnExportInItsStrip) {
    openMainWithSets(2);
    m_dialogs.whereToSave = "/out/a";
    for (const auto* const name : {"exportCsvButton", "exportJsonButton", "saveButton"}) {
        m_files.failsToReplace = true;
        click(main(), name);
        EXPECT_FALSE(isOpen("alert"));
        EXPECT_FALSE(m_files.files.contains("/out/a"));
        EXPECT_EQ(textOf(main(), "noticeText"), "a is niet bewaard: het lukte niet");
        EXPECT_THAT(allVisible(main(), "noticeAction"), IsEmpty());
        m_files.failsToReplace = false;
        click(main(), name);
        EXPECT_EQ(textOf(main(), "noticeText"), "Bewaard in /out/a");
        m_urls.addresses.clear();
        for (auto* const action : allVisible<QAbstractButton>(main(), "noticeAction"))
            click(*action);
        EXPECT_THAT(m_urls.addresses, ElementsAre("file:///out/a", "file:///out"));
        m_files.files.erase("/out/a");
    }
    click(main(), "dismissNotice");
    EXPECT_FALSE(isShown(main(), "noticeStrip"));
}

TEST_F(MainWindow, OpensAShootFile) {
    openMainWithSets(1);
    m_files.files["/in/a.vantor"] = writeShootFile(ibiza());
    m_dialogs.whatToOpen = "/in/a.vantor";
    click(main(), "openButton");
    settleReads();
    EXPECT_THAT(m_dialogs.openedTypes, ElementsAre(ElementsAre("vantor")));
    ASSERT_THAT(manager().shoots(), SizeIs(2));
    EXPECT_EQ(manager().activeShootId(), manager().shoots()[0].id);
    EXPECT_EQ(textOf(main(), "clientTag"), "Café Zürich");
    EXPECT_FALSE(isOpen("alert"));

    m_dialogs.whatToOpen.reset();
    click(main(), "openButton");
    settleReads();
    EXPECT_THAT(manager().shoots(), SizeIs(2));
    EXPECT_FALSE(isOpen("alert"));
}

TEST_F(MainWindow, SaysThatAFileIsNoShootFile) {
    openMainWithSets(1);
    m_files.files["/in/a.vantor"] = "geen shoot";
    m_dialogs.whatToOpen = "/in/a.vantor";
    click(main(), "openButton");
    settleReads();
    auto& alert = dynamic_cast<QMessageBox&>(sheet("alert"));
    EXPECT_EQ(alert.text(), "Kon .vantor-bestand niet openen");
    EXPECT_EQ(alert.informativeText(),
              "Het bestand kon niet gelezen worden, mogelijk beschadigd of geen geldig .vantor-bestand.");
    ASSERT_THAT(alert.buttons(), SizeIs(1));
    click(*alert.buttons().front());
    EXPECT_FALSE(isOpen("alert"));
    EXPECT_THAT(manager().shoots(), SizeIs(1));
}

TEST_F(MainWindow, SaysThatAHandedFileCannotBeRead) {
    openMain();
    main().openShootFiles({{"/in/weg.vantor"}, {}, {}, {}});
    settleReads();
    EXPECT_TRUE(isOpen("alert"));
    QTest::keyClick(&sheet("alert"), Qt::Key_Escape);
    settle();
    EXPECT_FALSE(isOpen("alert"));
}

TEST_F(MainWindow, TakesDroppedShootFiles) {
    openMain();
    m_files.files["/in/a.vantor"] = writeShootFile(ibiza());
    m_files.files["/in/B.VANTOR"] = writeShootFile(ibiza());
    drop({QUrl::fromLocalFile("/in/a.vantor"), QUrl::fromLocalFile("/in/B.VANTOR")});
    EXPECT_THAT(manager().shoots(), SizeIs(2));
    EXPECT_FALSE(isOpen("alert"));
}

TEST_F(MainWindow, RefusesDroppedFilesOfOtherKinds) {
    openMain();
    drop({QUrl::fromLocalFile("/in/a.csv"), QUrl("https://vantor.example/a.vantor")});
    EXPECT_FALSE(m_dropTaken);
}

TEST_F(MainWindow, PassesOverOtherFilesDroppedBesideAShootFile) {
    openMain();
    m_files.files["/in/a.vantor"] = writeShootFile(ibiza());
    m_files.files["/in/a.csv"] = "set;merk";
    drop({QUrl::fromLocalFile("/in/a.csv"), QUrl::fromLocalFile("/in/a.vantor")});
    EXPECT_THAT(manager().shoots(), SizeIs(1));
    EXPECT_FALSE(isOpen("alert"));
}

// --- deleting the shoot

TEST_F(MainWindow, AsksBeforeItDeletesTheShoot) {
    openMainWithSets(3);
    click(main(), "deleteShootButton");
    auto& question = dynamic_cast<QMessageBox&>(sheet("confirmation"));
    EXPECT_EQ(question.text(), "Shoot \"Ibiza Zomer 2026\" verwijderen?");
    EXPECT_EQ(question.informativeText(), "Dit verwijdert de shoot en alle 3 sets erin.");
    ASSERT_THAT(question.buttons(), SizeIs(2));
    EXPECT_EQ(find<QAbstractButton>(question, "confirmDeletion").text(), "Verwijderen");
    EXPECT_EQ(find<QAbstractButton>(question, "cancelDeletion").text(), "Annuleer");
    EXPECT_TRUE(find<QPushButton>(question, "cancelDeletion").isDefault());
    EXPECT_FALSE(find<QPushButton>(question, "confirmDeletion").isDefault());
    click(question, "confirmDeletion");
    EXPECT_THAT(manager().shoots(), IsEmpty());
    EXPECT_TRUE(isShown(main(), "emptyState"));
}

TEST_F(MainWindow, KeepsTheShootOnReturnEscapeAndAnnuleer) {
    openMainWithSets(1);
    const auto ask = [&]() -> QDialog& { return open("deleteShootButton", "confirmation"); };
    QTest::keyClick(&ask(), Qt::Key_Return);
    settle();
    EXPECT_FALSE(isOpen("confirmation"));
    QTest::keyClick(&ask(), Qt::Key_Escape);
    settle();
    EXPECT_FALSE(isOpen("confirmation"));
    click(ask(), "cancelDeletion");
    EXPECT_FALSE(isOpen("confirmation"));
    EXPECT_THAT(manager().shoots(), SizeIs(1));
}

TEST_F(MainWindow, ShowsTheNextShootAfterDeletingTheActiveOne) {
    openMain();
    addShoot("Oudste");
    addShoot("Middelste");
    addShoot("Nieuwste");
    choose(picker(), "Oudste");
    click(open("deleteShootButton", "confirmation"), "confirmDeletion");
    EXPECT_EQ(textOf(main(), "shootName"), "Nieuwste");
    EXPECT_EQ(entries(picker()), QStringList({"Nieuwste", "Middelste"}));
    EXPECT_EQ(picker().currentIndex(), 0);
}

// --- shortcuts

TEST_F(MainWindow, ObeysItsShortcuts) {
    openMainWithSets(2);
    press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(QApplication::focusWidget(), &find(main(), "searchField"));
    press(Qt::Key_L, Qt::ControlModifier);
    EXPECT_EQ(QApplication::focusWidget(), &find(main(), "scannerField"));
    press(Qt::Key_G, Qt::ControlModifier);
    EXPECT_EQ(m_generatorsAsked, 1);
    press(Qt::Key_F1);
    EXPECT_THAT(m_urls.addresses, SizeIs(1));
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_THAT(m_dialogs.proposedNames, ElementsAre("Ibiza Zomer 2026.vantor"));
    press(Qt::Key_O, Qt::ControlModifier);
    EXPECT_THAT(m_dialogs.openedTypes, SizeIs(1));
    press(Qt::Key_N, Qt::ControlModifier);
    ASSERT_TRUE(isOpen("newShootSheet"));
    sheet("newShootSheet").close();
    settle();
    returnToMain();
    press(Qt::Key_T, Qt::ControlModifier);
    ASSERT_TRUE(isOpen("newSetSheet"));
    sheet("newSetSheet").close();
    settle();
    returnToMain();
    press(Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(main().isVisible());
}

TEST_F(MainWindow, StartsWhereThereIsSomethingToDo) {
    openMain();
    EXPECT_EQ(QApplication::focusWidget(), &find(main(), "newShootButton"));
    addShoot("Ibiza");
    EXPECT_EQ(QApplication::focusWidget(), &find(main(), "scannerField"));
    click(open("deleteShootButton", "confirmation"), "confirmDeletion");
    returnToMain();
    EXPECT_EQ(QApplication::focusWidget(), &find(main(), "newShootButton"));
}

TEST_F(MainWindow, KeysLeadFromTheSearchToWhatItFound) {
    openMainWithSets(12);
    type(main(), "searchField", "2");
    press(Qt::Key_Down);
    EXPECT_EQ(QApplication::focusWidget(), &find(main(), "setList"));
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_EQ(manager().activeSetId(), shoot().sets[11].id);
    press(Qt::Key_F, Qt::ControlModifier);
    press(Qt::Key_Escape);
    EXPECT_EQ(textOf(main(), "searchField"), "");
    EXPECT_THAT(rows(), SizeIs(::testing::Gt(2)));
}

TEST_F(MainWindow, KeysThatComeBeforeTheWindowIsRedrawnChooseAmongWhatIsFound) {
    openMainWithSets(12);
    find(main(), "searchField").setFocus();
    for (const auto key : {Qt::Key_7, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Home, Qt::Key_Return})
        QTest::keyClick(QApplication::focusWidget(), key);
    EXPECT_EQ(manager().activeSetId(), shoot().sets[6].id);
}

TEST_F(MainWindow, ShortcutsDoNothingThatTheButtonsWouldNot) {
    openMain();
    press(Qt::Key_T, Qt::ControlModifier);
    EXPECT_FALSE(isOpen("newSetSheet"));
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_THAT(m_dialogs.proposedNames, IsEmpty());
    addShoot("Leeg");
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_THAT(m_dialogs.proposedNames, IsEmpty());
}

// --- the scanner line, as a person uses it

TEST_F(MainWindow, EnablesActiveerForAnyText) {
    openMainWithSets(1);
    auto& button = find<QAbstractButton>(main(), "activateScanButton");
    EXPECT_FALSE(button.isEnabled());
    type(main(), "scannerField", " ");
    EXPECT_TRUE(button.isEnabled());
    const auto before = saves();
    click(button);
    EXPECT_EQ(find<QLineEdit>(main(), "scannerField").text(), " ");
    EXPECT_EQ(saves(), before);
    type(main(), "scannerField", "");
    EXPECT_FALSE(button.isEnabled());
}

TEST_F(MainWindow, ActiveerSubmitsAtOnce) {
    openMainWithSets(2);
    type(main(), "scannerField", "  SET:9  ");
    click(main(), "activateScanButton");
    ASSERT_NE(manager().activeSet(), nullptr);
    EXPECT_EQ(manager().activeSet()->setNumber, "9");
    EXPECT_EQ(find<QLineEdit>(main(), "scannerField").text(), "");
    EXPECT_THAT(shoot().sets, SizeIs(3));
    EXPECT_EQ(textOf(main(), "activeText"), "Actief: " + QString::fromStdString(shoot().sets[0].headline()));
}

TEST_F(MainWindow, ClearsTextThatNamesNoSet) {
    openMainWithSets(1);
    const auto before = saves();
    type(main(), "scannerField", "https://vantor.example");
    click(main(), "activateScanButton");
    EXPECT_EQ(find<QLineEdit>(main(), "scannerField").text(), "");
    EXPECT_EQ(saves(), before);
    EXPECT_EQ(manager().activeSet(), nullptr);
}

// --- what a scan shows

[[nodiscard]] QColor groundOf(QWidget& row) {
    return row.grab().toImage().pixelColor(2, 2);
}

TEST_F(MainWindow, ScanLightsItsRowUpForAMoment) {
    openMainWithSets(3);
    auto* const row = rows().at(1);
    const QColor before = groundOf(*row);
    type(main(), "scannerField", "SET:2");
    find<QLineEdit>(main(), "scannerField").insert("\nBRAND:Marvis");
    click(main(), "activateScanButton");
    ASSERT_EQ(manager().activeSetId(), shoot().sets[1].id);
    ASSERT_EQ(rows().at(1), row);
    EXPECT_EQ(groundOf(*row), ui::theme::litUp(row->palette()));
    EXPECT_NE(groundOf(*row), before);
    EXPECT_NE(groundOf(*rows().at(0)), groundOf(*row));
    EXPECT_TRUE(runUntil([&] { return groundOf(*row) == before; }, std::chrono::seconds(3)));
}

TEST_F(MainWindow, ScanScrollsItsRowIntoView) {
    openMainWithSets(200);
    auto& list = find<ui::RecyclingList>(main(), "setList");
    ASSERT_EQ(list.rowWidget(149), nullptr);
    find<QLineEdit>(main(), "scannerField").setText("SET:150\nBRAND:Marvis");
    click(main(), "activateScanButton");
    auto* const row = list.rowWidget(149);
    ASSERT_NE(row, nullptr);
    EXPECT_TRUE(list.viewport()->rect().contains(row->geometry()));
    EXPECT_EQ(textOf(*row, "headline"), "Set 150 — Marvis");
}

TEST_F(MainWindow, ScanClearsASearchThatHidesItsRow) {
    openMainWithSets(3);
    type(main(), "searchField", "3");
    find<QLineEdit>(main(), "scannerField").setText("SET:2\nBRAND:Marvis");
    click(main(), "activateScanButton");
    EXPECT_EQ(find<QLineEdit>(main(), "searchField").text(), "");
    EXPECT_THAT(shownHeadlines(), SizeIs(3));
    EXPECT_EQ(groundOf(*rows().at(1)), ui::theme::litUp(rows().at(1)->palette()));
}

TEST_F(MainWindow, ScanLeavesASearchThatShowsItsRow) {
    openMainWithSets(3);
    type(main(), "searchField", "2");
    find<QLineEdit>(main(), "scannerField").setText("SET:2\nBRAND:Marvis");
    click(main(), "activateScanButton");
    EXPECT_EQ(find<QLineEdit>(main(), "searchField").text(), "2");
    EXPECT_THAT(shownHeadlines(), ElementsAre("Set 2 — Marvis"));
}

TEST_F(MainWindow, ScanOfAnUnknownCardShowsTheNewSetFirst) {
    openMainWithSets(200);
    auto& list = find<ui::RecyclingList>(main(), "setList");
    list.scrollToRow(199);
    find<QLineEdit>(main(), "scannerField").setText("SET:x\nBRAND:Nieuw");
    click(main(), "activateScanButton");
    ASSERT_NE(list.rowWidget(0), nullptr);
    EXPECT_EQ(textOf(*list.rowWidget(0), "headline"), "Set x — Nieuw");
    EXPECT_TRUE(list.viewport()->rect().contains(list.rowWidget(0)->geometry()));
}

} // namespace
} // namespace vantor::testing
