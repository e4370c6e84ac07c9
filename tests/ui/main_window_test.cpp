#include "base/text.h"
#include "formats/shoot_file.h"
#include "tests/support/read_file.h"
#include "tests/ui/ui_fixture.h"
#include "ui/frame/theme.h"

#include <QDropEvent>
#include <QLabel>
#include <QLayout>
#include <QMessageBox>
#include <QMimeData>
#include <QScrollArea>
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
    [[nodiscard]] QComboBox& picker() { return find<QComboBox>(main(), "shootPicker"); }

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

// What stands in the parts of the window, whatever lines the font makes of it, with the help texts of its buttons and what
// assistive technology is told beyond them, as data/main_window.txt has it.
TEST_F(MainWindow, SaysTheseTextsFromTopToBottom) {
    EXPECT_EQ(openMain().windowTitle(), "Vantor Prep");
    EXPECT_EQ(textOf(main(), "shootName"), "Geen shoot geselecteerd");
    addShoot("Ibiza Zomer 2026");
    announceVersion("2.0", "https://vantor.example/2.0");
    // With help texts, by group, whatever lines the font makes of it.
    std::string said;
    for (const auto* const part : {"logo", "clientsButton", "newSetButton", "searchField", "scannerField"}) {
        const auto lines = linesOf(*find(main(), part).parentWidget());
        said += joined(lines, " / ") + "\n\n";
    }
    // What assistive technology is told besides.
    for (const auto* const button : main().findChildren<QAbstractButton*>()) {
        if (!button->accessibleDescription().isEmpty() && button->window() == &main())
            said += (button->objectName() + ": " + button->accessibleDescription() + "\n").toStdString();
    }
    EXPECT_EQ(said, readFile(VANTOR_TEST_DATA "/main_window.txt"));
}

TEST_F(MainWindow, ShowsTheActiveShootsCountsClientAndActiveSet) {
    openMain();
    for (const auto* const client : {"", "Nike"}) {
        addShoot("Texel", client);
        EXPECT_EQ(isShown(main(), "clientTag"), *client != '\0');
    }
    EXPECT_EQ(textOf(main(), "clientTag"), "Nike");
    for (const auto* const count : {"1", "2"}) {
        addSet(count, "Marvis");
        EXPECT_EQ(textOf(main(), "statValue"), count);
        EXPECT_EQ(textOf(main(), "shootCount"), QString(count) + " sets");
    }
    EXPECT_FALSE(isShown(main(), "activeText"));
    click(*rows().front(), "activateButton");
    EXPECT_TRUE(isShown(main(), "activeText"));
    EXPECT_EQ(textOf(main(), "activeText"), "Actief: Set 2 — Marvis");
    manager().deleteSet(shoot().sets[0].id);
    settle();
    EXPECT_FALSE(isShown(main(), "activeText"));
}

TEST_F(MainWindow, ShowsItsCountsInBlueAndItsClientInWhiteOnPurple) {
    openMainWithSets(1);
    addShoot("Ibiza", "Nike");
    const auto& value = find<QLabel>(main(), "statValue");
    EXPECT_EQ(value.palette().color(QPalette::WindowText), ui::theme::blue(main().palette()));
    const auto picture = find(main(), "clientTag").grab().toImage();
    EXPECT_EQ(picture.pixelColor(3, picture.height() / 2), ui::theme::purple(main().palette()));
    int most = 0;
    for (int x = 10; x < picture.width() - 10; ++x)
        most = std::max(most, picture.pixelColor(x, picture.height() / 2).lightness());
    EXPECT_GT(most, 220) << "white letters";
}

// --- what is there and what can be pressed

TEST_F(MainWindow, OffersWhatCanBeDoneWithoutAShootWithoutSetsAndWithThem) {
    openMain();
    // Each as "-" where it is not there, "off" or "on": without a shoot, without sets, with one, and without it again.
    using Offers = std::vector<std::string>;
    const std::map<std::vector<const char*>, Offers> expected{
        {{"clientsButton", "manualButton", "importButton", "generatorButton", "catalogButton",
          "newShootButton"},
         {"on", "on", "on", "on"}},
        {{"exportCsvButton", "exportJsonButton", "bulkExportButton"}, {"off", "off", "on", "off"}},
        {{"saveButton"}, {"-", "off", "on", "off"}},
        {{"deleteShootButton", "newSetButton", "openButton", "searchField", "scannerField"},
         {"-", "on", "on", "on"}},
        {{"setList"}, {"-", "-", "on", "-"}},
        {{"emptyState", "emptyOpenButton"}, {"on", "-", "-", "-"}},
        {{"noSets", "firstSetButton", "importFirstButton"}, {"-", "on", "-", "on"}}};
    std::map<std::string, Offers> offers;
    for (const auto& step :
         std::vector<std::function<void()>>{[] {}, [&] { addShoot("Leeg"); }, [&] { addSet("1"); },
                                            [&] { manager().deleteSet(shoot().sets[0].id); }}) {
        step();
        settle();
        for (const auto& [names, ignored] : expected) {
            for (const auto* const name : names)
                offers[name].push_back(!isShown(main(), name)           ? "-"
                                       : find(main(), name).isEnabled() ? "on"
                                                                        : "off");
        }
    }
    for (const auto& [names, each] : expected) {
        for (const auto* const name : names)
            EXPECT_EQ(offers[name], each) << name;
    }
}

TEST_F(MainWindow, SaysWhyThereIsNothingAndOffersWhatHelps) {
    openMain();
    const auto expectSays = [&](const char* name, const std::vector<std::string>& lines) {
        EXPECT_EQ(linesOf(find(main(), name)), lines);
    };
    expectSays("emptyState",
               {"Maak een shoot aan om te beginnen",
                "Open...{Open een .vantor-bestand, bijv. een shoot geëxporteerd uit Vantor (Ctrl+O)}",
                "of sleep een .vantor-bestand hierheen"});
    click(main(), "emptyOpenButton");
    EXPECT_THAT(m_dialogs.openedTypes, SizeIs(1));
    addShoot("Leeg");
    expectSays("noSets",
               {"Nog geen sets", "+ Set{Maakt een set aan in deze shoot (Ctrl+T)} / Import CSV{Voegt de "
                                 "sets uit een CSV-bestand toe aan een shoot (Ctrl+I)}"});
    for (const auto& [button, opened] :
         {std::pair("firstSetButton", "newSetSheet"), std::pair("importFirstButton", "importSheet")}) {
        click(main(), button);
        EXPECT_TRUE(isOpen(opened));
        closeSheets();
    }
    addSet("1", "Marvis");
    type(main(), "searchField", " Zout & <b>kreek ");
    expectSays("noHits", {"Geen sets gevonden met \"Zout & <b>kreek\"", "Wis zoekopdracht"});
    click(main(), "clearFruitlessSearch");
    EXPECT_EQ(textOf(main(), "searchField"), "");
    EXPECT_EQ(focused().objectName(), "searchField");
    EXPECT_THAT(rows(), SizeIs(1));
}

// Where a row breaks is a matter of width alone, and where Tab goes is none of it.
TEST_F(MainWindow, BreaksTheShootBarWhereItIsFullAndTabKeepsItsOrder) {
    openMain();
    addShoot("Zomer op Texel", "Noorderlicht");
    addShoot("Zomer op Texel", "Noorderlicht");
    const std::vector<const char*> order{"shootPicker",     "clientsButton",    "manualButton",
                                         "importButton",    "exportCsvButton",  "exportJsonButton",
                                         "generatorButton", "bulkExportButton", "catalogButton",
                                         "newShootButton",  "deleteShootButton"};
    for (const auto& [width, rows] :
         {std::pair(1280, 1), std::pair(1240, 1), std::pair(1000, 2), std::pair(700, 2)}) {
        SCOPED_TRACE(width);
        main().resize(width, 500);
        settle();
        std::map<int, std::vector<QRect>> byRow;
        for (const auto* const name : order) {
            const auto& part = find(main(), name);
            const QRect place(part.mapTo(&main(), QPoint()), part.size());
            const int y = place.center().y();
            const auto row =
                std::ranges::find_if(byRow, [&](const auto& each) { return std::abs(each.first - y) < 8; });
            byRow[row != byRow.end() ? row->first : y].push_back(place);
        }
        EXPECT_THAT(byRow, SizeIs(rows));
        const auto& last = byRow.rbegin()->second;
        EXPECT_EQ(last.back().right(), width - ui::theme::kMargin - 1);
        if (rows == 2) {
            EXPECT_THAT(last, SizeIs(8)) << "the commands";
            EXPECT_EQ(last.front().left(), ui::theme::kMargin);
            std::vector<int> gaps;
            for (std::size_t i = 1; i < last.size(); ++i)
                gaps.push_back(last[i].left() - last[i - 1].right());
            EXPECT_LE(*std::ranges::max_element(gaps) - *std::ranges::min_element(gaps), 1)
                << "evenly spread";
        }
        find(main(), "shootPicker").setFocus();
        auto walked = namesOf(tabWalk());
        // "Export" and its like are off while there are no sets.
        walked.resize(8);
        EXPECT_THAT(walked,
                    ElementsAre("shootPicker", "clientsButton", "manualButton", "importButton",
                                "generatorButton", "catalogButton", "newShootButton", "deleteShootButton"));
    }
}

TEST_F(MainWindow, ShowsTwoWholeRowsAtItsLeastSize) {
    openMainWithSets(5);
    main().resize(1, 1);
    settle();
    EXPECT_EQ(main().size(), QSize(700, 500));
    EXPECT_EQ(find<QScrollArea>(main(), "mainPane").verticalScrollBar()->maximum(), 0) << "all of it fits";
    const auto& list = find<ui::RecyclingList>(main(), "setList");
    EXPECT_GE(list.viewport()->visibleRegion().boundingRect().height(), 2 * list.rowHeight());
    EXPECT_FALSE(find(main(), "scannerField").visibleRegion().isEmpty());
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
    EXPECT_EQ(textOf(*picker().parentWidget()->findChild<QLabel*>()), "Shoot");
    EXPECT_EQ(entries(picker()), QStringList({"Dubbel", "Dubbel", "Oud"}));
    EXPECT_EQ(picker().currentIndex(), 0);
    type(main(), "searchField", "oud");
    for (const auto& [name, count] : {std::pair("Dubbel", "0/1"), std::pair("Oud", "1/1")}) {
        choose(picker(), name);
        EXPECT_EQ(textOf(main(), "shootName"), name);
        EXPECT_EQ(textOf(main(), "searchCount"), count);
    }
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
        for (const auto* const name : {"clearSearchButton", "searchCount"})
            EXPECT_EQ(isShown(main(), name), *text != '\0');
        EXPECT_EQ(textOf(main(), "searchCount"), QString("%1/12").arg(found));
    }
    click(main(), "clearSearchButton");
    EXPECT_EQ(textOf(main(), "searchField"), "");
}

// --- the sheets

TEST_F(MainWindow, OffersTheClientsOfAllShoots) {
    openMain();
    for (const auto* const client : {"Zoé", "Adidas", "", "Zoé", "adidas"})
        addShoot("Shoot", client);
    EXPECT_THAT(textsOf(openWindow("clientsSheet"), "clientName"),
                UnorderedElementsAre("Adidas", "Zoé", "adidas"));
}

TEST_F(MainWindow, OpensTheManual) {
    openMain();
    click(main(), "manualButton");
    EXPECT_THAT(m_urls.addresses, ElementsAre("https://vantor.example/handleiding"));
    // Without a network: the one that came with the program, if one did.
    press(Qt::Key_F1);
    EXPECT_EQ(m_urls.addresses.at(1), "https://vantor.example/handleiding");
    m_services.installedManual = "/usr/share/doc/vantor-prep/handleiding/index.html";
    press(Qt::Key_F1);
    EXPECT_EQ(m_urls.addresses.at(2), "file:///usr/share/doc/vantor-prep/handleiding/index.html");
}

// --- the update notice

TEST_F(MainWindow, NoticesANewerVersionAndForgetsIt) {
    openMain();
    for (const auto* const version : {"1.2.3", "2.0.1", "1.2.3"}) {
        const auto page = std::string("https://vantor.example/downloads/") + version;
        m_clock.set({m_clock.now().secondsSinceReference + 7 * 3600});
        announceVersion(version, page);
        EXPECT_EQ(isShown(main(), "updateButton"), *version == '2');
        if (*version == '2') {
            EXPECT_EQ(textOf(main(), "updateButton"), "v2.0.1 beschikbaar");
            click(main(), "updateButton");
            EXPECT_THAT(m_urls.addresses, ElementsAre(page));
        }
    }
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

TEST_F(MainWindow, ASheetTellsOnlyWhatHappenedSinceItOpened) {
    openMain();
    addShoot("Texel");
    m_notices.show({Notice::Kind::Done, "vóór", {}, {}});
    auto& sheet = openWindow("newSetSheet");
    settle();
    EXPECT_FALSE(isShown(sheet, "noticeStrip"));
    m_notices.show({Notice::Kind::Done, "sindsdien", {}, {}});
    EXPECT_EQ(textOf(sheet, "noticeText"), "sindsdien");
    // Over the title rather than what is pressed next.
    EXPECT_LT(find(sheet, "noticeStrip").y(), find(sheet, "setNumberField").y());
    m_notices.show({Notice::Kind::Error, "schijf vol", {}, {}});
    sheet.close();
    settle();
    auto& next = openWindow("newSetSheet");
    EXPECT_EQ(textOf(next, "noticeText"), "schijf vol") << "an error stays";
}

TEST_F(MainWindow, OpensAShootFile) {
    openMainWithSets(1);
    m_files.files["/in/a.vantor"] = writeShootFile(ibiza());
    for (const bool chooses : {true, false}) {
        m_dialogs.whatToOpen.reset();
        if (chooses)
            m_dialogs.whatToOpen = "/in/a.vantor";
        click(main(), "openButton");
        settleReads();
        EXPECT_THAT(m_dialogs.openedTypes.back(), ElementsAre("vantor"));
        ASSERT_THAT(manager().shoots(), SizeIs(2));
        EXPECT_EQ(manager().activeShootId(), manager().shoots()[0].id);
        EXPECT_EQ(textOf(main(), "clientTag"), "Café Zürich");
        EXPECT_FALSE(isOpen("alert"));
    }
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
    click(*alert.buttons().at(0));
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
    const auto pressDelete = [&] {
        auto& list = find<ui::RecyclingList>(main(), "setList");
        list.setFocus();
        list.setCurrentRow(1);
        QTest::keyClick(&list, Qt::Key_Delete);
    };
    for (const bool ofShoot : {false, true}) {
        for (const auto key : {Qt::Key_Return, Qt::Key_Escape, Qt::Key_Space}) {
            if (ofShoot)
                click(main(), "deleteShootButton");
            else
                pressDelete();
            auto& question = dynamic_cast<QMessageBox&>(awaitSheet("confirmation"));
            EXPECT_EQ(question.text(), ofShoot ? "Shoot \"Ibiza Zomer 2026\" verwijderen?"
                                               : "Set \"Set 2 — Marvis\" verwijderen?");
            EXPECT_EQ(question.informativeText(),
                      ofShoot ? "Dit verwijdert de shoot en alle 3 sets erin." : "");
            ASSERT_THAT(question.buttons(), SizeIs(2));
            EXPECT_EQ(textOf(question, "confirmDeletion"), "Verwijderen");
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
    click(openWindow("confirmation"), "confirmDeletion");
    EXPECT_THAT(manager().shoots(), IsEmpty());
    EXPECT_TRUE(isShown(main(), "emptyState"));
}

// --- shortcuts

TEST_F(MainWindow, ObeysItsShortcutsWhereTheButtonsWould) {
    openMain();
    const auto pressAll = [&](const char* letters) {
        for (; *letters != '\0'; ++letters)
            press(*letters, Qt::ControlModifier);
    };
    pressAll("TS");
    addShoot("Leeg");
    pressAll("S");
    EXPECT_FALSE(isOpen("newSetSheet"));
    EXPECT_THAT(m_dialogs.proposedNames, IsEmpty());
    addSet("1");
    addSet("2");
    pressAll("GSO");
    EXPECT_EQ(m_generatorsAsked, 1);
    EXPECT_THAT(m_dialogs.proposedNames, SizeIs(1));
    EXPECT_THAT(m_dialogs.openedTypes, SizeIs(1));
    for (const auto& [key, field] : {std::pair("F", "searchField"), std::pair("L", "scannerField")}) {
        pressAll(key);
        EXPECT_EQ(focused().objectName(), field);
    }
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
    pressAll("W");
    EXPECT_FALSE(main().isVisible());
}

TEST_F(MainWindow, StartsWhereThereIsSomethingToDo) {
    openMain();
    EXPECT_EQ(focused().objectName(), "newShootButton");
    addShoot("Ibiza");
    EXPECT_EQ(focused().objectName(), "scannerField");
    click(openWindow("confirmation"), "confirmDeletion");
    returnToMain();
    EXPECT_EQ(focused().objectName(), "newShootButton");
}

TEST_F(MainWindow, KeysLeadFromTheSearchToWhatItFound) {
    openMainWithSets(12);
    // All of them may come before the window is redrawn.
    for (const auto& [digit, keys] :
         {std::pair(Qt::Key_8, std::vector{Qt::Key_Down, Qt::Key_Return}),
          std::pair(Qt::Key_7, std::vector{Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Home, Qt::Key_Return})}) {
        press(Qt::Key_F, Qt::ControlModifier);
        QTest::keyClick(&focused(), digit);
        for (const auto key : keys)
            QTest::keyClick(&focused(), key);
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
    auto& button = find<QAbstractButton>(main(), "activateScanButton");
    EXPECT_FALSE(button.isEnabled());
    const auto before = m_files.replacements;
    // What names no set is cleared, and a blank left alone.
    for (const auto& [text, left] : {std::pair(" ", " "), std::pair("https://vantor.example", "")}) {
        type(main(), "scannerField", text);
        click(button);
        EXPECT_EQ(textOf(main(), "scannerField"), left);
        EXPECT_EQ(m_files.replacements, before);
        EXPECT_EQ(manager().activeSet(), nullptr);
    }
    EXPECT_FALSE(button.isEnabled());
    type(main(), "scannerField", "  SET:9  ");
    click(button);
    ASSERT_NE(manager().activeSet(), nullptr);
    EXPECT_EQ(manager().activeSet()->setNumber, "9");
    EXPECT_EQ(textOf(main(), "scannerField"), "");
    EXPECT_THAT(shoot().sets, SizeIs(3));
}

// --- what a scan shows

// Beside the edge of the active one.
[[nodiscard]] QColor groundOf(QWidget& row) {
    return row.grab().toImage().pixelColor(6, 2);
}

TEST_F(MainWindow, ScanLightsItsRowUpForAMoment) {
    openMainWithSets(3);
    auto* const row = rows().at(1);
    const QColor before = groundOf(*row);
    scan("SET:2\nBRAND:Marvis");
    ASSERT_EQ(rows().at(1), row);
    EXPECT_EQ(groundOf(*row), ui::theme::litUp(row->palette()));
    EXPECT_NE(groundOf(*row), before);
    EXPECT_NE(groundOf(*rows().at(0)), groundOf(*row));
    EXPECT_TRUE(runUntil([&] { return groundOf(*row) == ui::theme::activeRow(row->palette()); }));
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
        EXPECT_THAT(rows(), SizeIs(*left == '\0' ? 3 : 1));
    }
    EXPECT_EQ(groundOf(*rows().at(1)), ui::theme::litUp(rows().at(1)->palette()));
}

} // namespace
} // namespace vantor::testing
