#include "base/text.h"
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
#include <optional>
#include <tuple>

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

    void scan(const QString& card) {
        find<QLineEdit>(main(), "scannerField").setText(card);
        click(main(), "activateScanButton");
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

TEST_F(MainWindow, SaysTheseTextsFromTopToBottom) {
    EXPECT_EQ(openMain().windowTitle(), "Vantor Prep");
    // What stands around a widget, whatever lines the font makes of it.
    const auto around = [&](const char* name) {
        return joined(linesOf(*find(main(), name).parentWidget()), " / ");
    };
    const std::string commands =
        "Klanten / Handleiding / Import CSV / Export CSV / Export JSON / QR Generator / "
        "Bulk QR-export / Productcatalogus / Nieuwe Shoot";
    EXPECT_EQ(around("logo"), "Vantor Prep / v1.2.3 / 0 / Gratis. Bereid shoots, sets en QR-kaarten voor — "
                              "Vantor zelf tagt tijdens de shoot. / Sets");
    EXPECT_EQ(around("clientsButton"), commands);
    EXPECT_EQ(textOf(main(), "shootName"), "Geen shoot geselecteerd");
    EXPECT_THAT(linesOf(find(main(), "emptyState")), ElementsAre("Maak een shoot aan om te beginnen"));
    addShoot("Ibiza Zomer 2026");
    EXPECT_EQ(textOf(main(), "shootName"), "Ibiza Zomer 2026");
    EXPECT_EQ(around("clientsButton"), commands + " / {Shoot verwijderen (inclusief alle sets erin)}");
    EXPECT_THAT(linesOf(*find(main(), "newSetButton").parentWidget()->parentWidget()),
                ElementsAre("+ Set / Open... / Bewaar...", "[Zoek op naam, model of item...]", "(list)",
                            "[Scan QR of typ setdata...] / Activeer"));
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

TEST_F(MainWindow, ShowsTheActiveShootsCountsClientAndActiveSet) {
    openMain();
    addShoot("Zonder");
    EXPECT_FALSE(isShown(main(), "clientTag"));
    addShoot("Met", "Nike");
    EXPECT_TRUE(isShown(main(), "clientTag"));
    EXPECT_EQ(textOf(main(), "clientTag"), "Nike");
    for (const auto* const count : {"1", "2"}) {
        addSet(count, "Marvis");
        EXPECT_EQ(textOf(main(), "statValue"), count);
        EXPECT_EQ(textOf(main(), "shootCount"), QString(count) + " sets");
    }
    EXPECT_FALSE(isShown(main(), "activeText"));
    const auto active = shoot().sets[0].id;
    manager().activateSet(active);
    settle();
    EXPECT_TRUE(isShown(main(), "activeText"));
    EXPECT_EQ(textOf(main(), "activeText"), "Actief: Set 2 — Marvis");
    manager().deleteSet(active);
    settle();
    EXPECT_FALSE(isShown(main(), "activeText"));
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

// --- what is there and what can be pressed

TEST_F(MainWindow, OffersWhatCanBeDoneWithoutAShootWithoutSetsAndWithThem) {
    openMain();
    using Names = std::vector<const char*>;
    const Names needNothing{"clientsButton",   "manualButton",  "importButton",
                            "generatorButton", "catalogButton", "newShootButton"};
    const Names exports{"exportCsvButton", "exportJsonButton", "bulkExportButton"};
    const Names needAShoot{"deleteShootButton", "newSetButton", "openButton",
                           "searchField",       "setList",      "scannerField"};
    const auto expectOffered = [&](const Names& names, bool isThere, bool canBeUsed) {
        for (const auto* const name : names) {
            EXPECT_EQ(isShown(main(), name), isThere) << name;
            EXPECT_EQ(find(main(), name).isEnabled(), canBeUsed) << name;
        }
    };
    const auto expectAll = [&](bool hasShoot, bool hasSets) {
        expectOffered(needNothing, true, true);
        expectOffered(exports, true, hasSets);
        for (const auto* const name : needAShoot)
            EXPECT_EQ(isShown(main(), name), hasShoot) << name;
        EXPECT_EQ(isShown(main(), "emptyState"), !hasShoot);
        EXPECT_EQ(isShown(main(), "saveButton"), hasShoot);
        EXPECT_EQ(find(main(), "saveButton").isEnabled(), hasSets);
    };
    expectAll(false, false);
    addShoot("Leeg");
    expectAll(true, false);
    expectOffered(needAShoot, true, true);
    const auto added = addSet("1");
    expectAll(true, true);
    EXPECT_THAT(rows(), SizeIs(1));
    manager().deleteSet(added);
    settle();
    expectAll(true, false);
}

TEST_F(MainWindow, HidesThePickerBelowTwoShootsAndKeepsItsPlace) {
    openMain();
    const auto clientsAt = [&] { return find(main(), "clientsButton").mapTo(&main(), QPoint()); };
    std::optional<QPoint> before;
    for (const std::size_t shoots : {0U, 1U, 2U, 1U}) {
        SCOPED_TRACE(shoots);
        while (manager().shoots().size() < shoots)
            addShoot("Texel");
        while (manager().shoots().size() > shoots)
            manager().deleteShoot(*manager().activeShootId());
        settle();
        EXPECT_EQ(picker().isVisible(), shoots >= 2);
        EXPECT_GE(picker().parentWidget()->width(), 200);
        if (shoots > 0) {
            EXPECT_EQ(clientsAt(), before.value_or(clientsAt())) << "the other commands have moved";
            before = clientsAt();
        }
        if (shoots >= 2) {
            EXPECT_GE(picker().width(), 200);
        }
    }
}

TEST_F(MainWindow, PicksAShootByNameAndKeepsTheSearch) {
    openMain();
    for (const auto* const name : {"Oud", "Dubbel", "Dubbel"}) {
        addShoot(name);
        addSet("1", name);
    }
    EXPECT_EQ(picker().accessibleName(), "Shoot");
    EXPECT_EQ(textOf(*picker().parentWidget()->findChild<QLabel*>()), "Shoot");
    EXPECT_EQ(entries(picker()), QStringList({"Dubbel", "Dubbel", "Oud"}));
    EXPECT_EQ(picker().currentIndex(), 0);
    type(main(), "searchField", "oud");
    EXPECT_EQ(textOf(main(), "searchCount"), "0/1");
    choose(picker(), "Oud");
    EXPECT_EQ(textOf(main(), "shootName"), "Oud");
    EXPECT_EQ(textOf(main(), "searchCount"), "1/1");
    QTest::keyClick(&picker(), Qt::Key_Up);
    settle();
    EXPECT_EQ(manager().activeShootId(), manager().shoots()[1].id) << "the second of two of one name";
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
    openMainWithSets(12);
    for (const auto& [text, found] :
         {std::pair("", 12), std::pair(" 1 ", 4), std::pair("rood", 0), std::pair("   ", 12)}) {
        SCOPED_TRACE(text);
        type(main(), "searchField", text);
        EXPECT_EQ(find<ui::RecyclingList>(main(), "setList").rowCount(), found);
        EXPECT_EQ(isShown(main(), "clearSearchButton"), *text != '\0');
        EXPECT_EQ(isShown(main(), "searchCount"), *text != '\0');
        EXPECT_EQ(textOf(main(), "searchCount"), QString("%1/12").arg(found));
    }
    click(main(), "clearSearchButton");
    EXPECT_EQ(textOf(main(), "searchField"), "");
    EXPECT_FALSE(isShown(main(), "searchCount"));
}

// --- the sheets

TEST_F(MainWindow, OffersTheClientsOfAllShoots) {
    openMain();
    for (const auto* const client : {"Zoé", "Adidas", "", "Zoé", "adidas"})
        addShoot("Shoot", client);
    std::vector<std::string> names;
    for (const auto* const name : allVisible(open("clientsButton", "clientsSheet"), "clientName"))
        names.push_back(textOf(*name).toStdString());
    EXPECT_THAT(names, UnorderedElementsAre("Adidas", "Zoé", "adidas"));
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

TEST_F(MainWindow, ExportsAndTellsWhatBecameOfIt) {
    openMainWithSets(2);
    struct Export {
        const char* button;
        const char* type;
        std::optional<std::string> bytes;
    };
    for (const auto& [button, type, bytes] :
         {Export{"exportCsvButton", "csv", manager().exportCSV(shoot().id)},
          Export{"exportJsonButton", "json", manager().exportJSON(shoot().id)},
          Export{"saveButton", "vantor", manager().exportJSON(shoot().id)}}) {
        SCOPED_TRACE(button);
        const auto before = m_files.files;
        m_dialogs.whereToSave.reset();
        click(main(), button);
        EXPECT_EQ(m_dialogs.proposedNames.back(), std::string("Ibiza Zomer 2026.") + type);
        EXPECT_THAT(m_dialogs.savedTypes.back(), ElementsAre(type));
        m_dialogs.whereToSave = "/out/a";
        m_files.failsToReplace = true;
        click(main(), button);
        EXPECT_EQ(m_files.files, before);
        EXPECT_EQ(textOf(main(), "noticeText"), "a is niet bewaard: het lukte niet");
        EXPECT_THAT(allVisible(main(), "noticeAction"), IsEmpty());
        m_files.failsToReplace = false;
        click(main(), button);
        EXPECT_EQ(m_files.files["/out/a"], bytes);
        EXPECT_EQ(textOf(main(), "noticeText"), "Bewaard in /out/a");
        m_urls.addresses.clear();
        for (auto* const action : allVisible<QAbstractButton>(main(), "noticeAction"))
            click(*action);
        EXPECT_THAT(m_urls.addresses, ElementsAre("file:///out/a", "file:///out"));
        m_files.files.erase("/out/a");
    }
    EXPECT_FALSE(isOpen("alert"));
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

TEST_F(MainWindow, TakesDroppedShootFilesAndNoOthers) {
    openMain();
    m_files.files["/in/a.vantor"] = writeShootFile(ibiza());
    m_files.files["/in/B.VANTOR"] = writeShootFile(ibiza());
    m_files.files["/in/a.csv"] = "set;merk";
    const auto csv = QUrl::fromLocalFile("/in/a.csv");
    drop({csv, QUrl::fromLocalFile("/in/a.vantor"), QUrl::fromLocalFile("/in/B.VANTOR")});
    EXPECT_THAT(manager().shoots(), SizeIs(2));
    EXPECT_FALSE(isOpen("alert"));
    drop({csv, QUrl("https://vantor.example/a.vantor")});
    EXPECT_FALSE(m_dropTaken);
}

// --- deleting

TEST_F(MainWindow, AsksBeforeItDeletesAShootOrASet) {
    openMainWithSets(3);
    struct Question {
        std::function<void()> ask;
        const char* text;
        const char* more;
    };
    const auto pressDelete = [&] {
        auto& list = find<ui::RecyclingList>(main(), "setList");
        list.setFocus();
        list.setCurrentRow(1);
        QTest::keyClick(&list, Qt::Key_Delete);
    };
    for (const auto& [ask, text, more] :
         {Question{pressDelete, "Set \"Set 2 — Marvis\" verwijderen?", ""},
          Question{[&] { click(main(), "deleteShootButton"); }, "Shoot \"Ibiza Zomer 2026\" verwijderen?",
                   "Dit verwijdert de shoot en alle 3 sets erin."}}) {
        SCOPED_TRACE(text);
        for (const auto key : {Qt::Key_Return, Qt::Key_Escape, Qt::Key_Space}) {
            ask();
            auto& question = dynamic_cast<QMessageBox&>(sheet("confirmation"));
            ASSERT_TRUE(QTest::qWaitForWindowActive(&question));
            EXPECT_EQ(question.text(), text);
            EXPECT_EQ(question.informativeText(), more);
            ASSERT_THAT(question.buttons(), SizeIs(2));
            EXPECT_EQ(find<QAbstractButton>(question, "confirmDeletion").text(), "Verwijderen");
            auto& cancel = find<QPushButton>(question, "cancelDeletion");
            EXPECT_EQ(cancel.text(), "Annuleer");
            EXPECT_TRUE(cancel.isDefault());
            if (key == Qt::Key_Space)
                click(cancel);
            else
                QTest::keyClick(&question, key);
            settle();
            EXPECT_FALSE(isOpen("confirmation"));
            EXPECT_THAT(shoot().sets, SizeIs(3));
        }
    }
    click(*rows().at(1), "deleteButton");
    click(sheet("confirmation"), "confirmDeletion");
    ASSERT_THAT(shoot().sets, SizeIs(2));
    EXPECT_EQ(shoot().sets[1].setNumber, "3");
    click(open("deleteShootButton", "confirmation"), "confirmDeletion");
    EXPECT_THAT(manager().shoots(), IsEmpty());
    EXPECT_TRUE(isShown(main(), "emptyState"));
}

// --- shortcuts

TEST_F(MainWindow, ObeysItsShortcutsWhereTheButtonsWould) {
    openMain();
    press(Qt::Key_T, Qt::ControlModifier);
    EXPECT_FALSE(isOpen("newSetSheet"));
    for (const auto* const shoot : {"", "Leeg"}) {
        if (*shoot != '\0')
            addShoot(shoot);
        press(Qt::Key_S, Qt::ControlModifier);
        EXPECT_THAT(m_dialogs.proposedNames, IsEmpty());
    }
    addSet("1");
    addSet("2");
    for (const auto& [key, field] :
         {std::pair(Qt::Key_F, "searchField"), std::pair(Qt::Key_L, "scannerField")}) {
        press(key, Qt::ControlModifier);
        EXPECT_EQ(QApplication::focusWidget(), &find(main(), field));
    }
    press(Qt::Key_G, Qt::ControlModifier);
    EXPECT_EQ(m_generatorsAsked, 1);
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_THAT(m_dialogs.proposedNames, SizeIs(1));
    press(Qt::Key_O, Qt::ControlModifier);
    EXPECT_THAT(m_dialogs.openedTypes, SizeIs(1));
    find<ui::RecyclingList>(main(), "setList").setCurrentRow(1);
    for (const auto& [key, modifier, name] : {std::tuple(Qt::Key_N, Qt::ControlModifier, "newShootSheet"),
                                              std::tuple(Qt::Key_T, Qt::ControlModifier, "newSetSheet"),
                                              std::tuple(Qt::Key_I, Qt::ControlModifier, "importSheet"),
                                              std::tuple(Qt::Key_P, Qt::ControlModifier, "bulkExportSheet"),
                                              std::tuple(Qt::Key_F2, Qt::NoModifier, "editSetSheet"),
                                              std::tuple(Qt::Key_F4, Qt::NoModifier, "qrSheet")}) {
        press(key, modifier);
        ASSERT_TRUE(isOpen(name)) << name;
        closeSheets();
    }
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
    // All of them may come before the window is redrawn.
    for (const auto& [digit, keys] :
         {std::pair(Qt::Key_8, std::vector{Qt::Key_Down, Qt::Key_Return}),
          std::pair(Qt::Key_7, std::vector{Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Home, Qt::Key_Return})}) {
        press(Qt::Key_F, Qt::ControlModifier);
        QTest::keyClick(QApplication::focusWidget(), digit);
        for (const auto key : keys)
            QTest::keyClick(QApplication::focusWidget(), key);
        EXPECT_EQ(manager().activeSet()->setNumber, std::to_string(digit - Qt::Key_0));
    }
    press(Qt::Key_F, Qt::ControlModifier);
    press(Qt::Key_Escape);
    EXPECT_EQ(textOf(main(), "searchField"), "");
    EXPECT_THAT(rows(), SizeIs(::testing::Gt(2)));
}

// --- the scanner line, as a person uses it

TEST_F(MainWindow, ActiveerSubmitsAnyTextAtOnce) {
    openMainWithSets(2);
    auto& field = find<QLineEdit>(main(), "scannerField");
    auto& button = find<QAbstractButton>(main(), "activateScanButton");
    EXPECT_FALSE(button.isEnabled());
    const auto before = saves();
    // What names no set is cleared, and a blank left alone.
    for (const auto& [text, left] : {std::pair(" ", " "), std::pair("https://vantor.example", "")}) {
        type(field, text);
        click(button);
        EXPECT_EQ(field.text(), left);
        EXPECT_EQ(saves(), before);
        EXPECT_EQ(manager().activeSet(), nullptr);
    }
    EXPECT_FALSE(button.isEnabled());
    type(field, "  SET:9  ");
    click(button);
    ASSERT_NE(manager().activeSet(), nullptr);
    EXPECT_EQ(manager().activeSet()->setNumber, "9");
    EXPECT_EQ(field.text(), "");
    EXPECT_THAT(shoot().sets, SizeIs(3));
}

// --- what a scan shows

[[nodiscard]] QColor groundOf(QWidget& row) {
    return row.grab().toImage().pixelColor(2, 2);
}

TEST_F(MainWindow, ScanLightsItsRowUpForAMoment) {
    openMainWithSets(3);
    auto* const row = rows().at(1);
    const QColor before = groundOf(*row);
    scan("SET:2\nBRAND:Marvis");
    ASSERT_EQ(manager().activeSetId(), shoot().sets[1].id);
    ASSERT_EQ(rows().at(1), row);
    EXPECT_EQ(groundOf(*row), ui::theme::litUp(row->palette()));
    EXPECT_NE(groundOf(*row), before);
    EXPECT_NE(groundOf(*rows().at(0)), groundOf(*row));
    EXPECT_TRUE(runUntil([&] { return groundOf(*row) == before; }));
}

TEST_F(MainWindow, ScanScrollsItsRowOrThatOfTheNewSetIntoView) {
    openMainWithSets(200);
    auto& list = find<ui::RecyclingList>(main(), "setList");
    for (const auto& [card, place, headline] : {std::tuple("SET:150\nBRAND:Marvis", 149, "Set 150 — Marvis"),
                                                std::tuple("SET:x\nBRAND:Nieuw", 0, "Set x — Nieuw")}) {
        ASSERT_EQ(list.rowWidget(place), nullptr);
        scan(card);
        auto* const row = list.rowWidget(place);
        ASSERT_NE(row, nullptr) << headline;
        EXPECT_TRUE(list.viewport()->rect().contains(row->geometry()));
        EXPECT_EQ(textOf(*row, "headline"), headline);
    }
}

TEST_F(MainWindow, ScanClearsASearchOnlyWhereItHidesItsRow) {
    openMainWithSets(3);
    for (const auto& [search, left] : {std::pair("2", "2"), std::pair("3", "")}) {
        type(main(), "searchField", search);
        scan("SET:2\nBRAND:Marvis");
        EXPECT_EQ(textOf(main(), "searchField"), left);
        EXPECT_THAT(shownHeadlines(), SizeIs(*left == '\0' ? 3 : 1));
    }
    EXPECT_EQ(groundOf(*rows().at(1)), ui::theme::litUp(rows().at(1)->palette()));
}

} // namespace
} // namespace vantor::testing
