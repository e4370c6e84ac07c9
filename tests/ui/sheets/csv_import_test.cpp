#include "tests/ui/ui_fixture.h"
#include "ui/frame/beside_window.h"
#include "ui/frame/theme.h"

#include <QClipboard>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QTimer>
#include <new>

namespace vantor::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* kTwoSets = "Set;Merk;Items;Model;Locatie\n1;Nike;jas/rood;Anna;Studio A\n2;Zara;;;";
constexpr const char* kTwoProducts = "Naam;Kleuren;Merk\njas;rood, blauw;Nike\nriem;;";

constexpr Qt::DropActions kCopyOrMove = Qt::CopyAction | Qt::MoveAction;

class CsvImportTest : public UiTest {
protected:
    CsvImportTest() { openMain(); }

    QWidget& openSets() {
        if (manager().activeShoot() == nullptr)
            addShoot("Texel");
        return openWindow("importSheet");
    }
    QWidget& openProducts() { return openWindow("catalogImportSheet"); }

    static QPlainTextEdit& editor(const QWidget& sheet) { return find<QPlainTextEdit>(sheet, "csvText"); }

    // In place of what is there.
    static void paste(const QWidget& sheet, const QString& text) {
        editor(sheet).setFocus();
        editor(sheet).selectAll();
        if (text.isEmpty()) {
            QTest::keyClick(&editor(sheet), Qt::Key_Delete);
        } else {
            QApplication::clipboard()->setText(text);
            QTest::keyClick(&editor(sheet), Qt::Key_V, Qt::ControlModifier);
        }
        settle();
    }

    // Reads beside the window, so that what comes of it comes later.
    void chooseFile(const QWidget& sheet, const std::string& bytes) {
        m_files.files["/tmp/in.csv"] = bytes;
        m_dialogs.whatToOpen = "/tmp/in.csv";
        click(sheet, "chooseFileButton");
        settleReads();
    }

    // Texts are understood beside the window as well.
    static void import(const QWidget& sheet) {
        click(sheet, "importButton");
        settleReads();
    }
    static void import(const QWidget& sheet, const QString& text) {
        paste(sheet, text);
        import(sheet);
    }

    // Whether it closes by itself, which is let happen now.
    bool closes(const QWidget& sheet) {
        const auto name = sheet.objectName().toStdString();
        auto* const closing = sheet.findChild<QTimer*>("closing");
        if (closing == nullptr || !closing->isActive())
            return false;
        EXPECT_EQ(closing->interval(), 1500);
        closing->start(0);
        return runUntil([&] { return !isOpen(name.c_str()); });
    }

    // As with the key that proposes to move what is dragged; whether it is taken.
    static bool drop(QWidget& onto, const QList<QUrl>& urls, Qt::DropActions possible = kCopyOrMove) {
        QMimeData data;
        data.setUrls(urls);
        const QPoint middle = onto.rect().center();
        QDragEnterEvent enter(middle, possible, &data, Qt::LeftButton, Qt::ShiftModifier);
        QApplication::sendEvent(&onto, &enter);
        if (!enter.isAccepted())
            return false;
        EXPECT_EQ(enter.dropAction(), Qt::CopyAction);
        QDropEvent event(middle, possible, &data, Qt::LeftButton, Qt::ShiftModifier);
        QApplication::sendEvent(&onto, &event);
        EXPECT_TRUE(event.isAccepted());
        EXPECT_EQ(event.dropAction(), Qt::CopyAction);
        settleReads();
        return true;
    }
};

TEST_F(CsvImportTest, ShowsTextsOfTablesInEvenWidth) {
    const auto& sheet = openSets();
    for (const auto* const name : {"csvText", "example"})
        EXPECT_TRUE(QFontInfo(find(sheet, name).font()).fixedPitch()) << name;
    EXPECT_GE(editor(sheet).height(), 150);
    EXPECT_EQ(find(sheet, "example").palette().color(QPalette::WindowText),
              ui::theme::secondaryText(sheet.palette()));
}

TEST_F(CsvImportTest, NeedsOnlyTextThatIsNotEmpty) {
    const auto& sheet = openSets();
    for (const auto* const text : {" ", "\n", "", "a"}) {
        paste(sheet, text);
        EXPECT_EQ(find(sheet, "importButton").isEnabled(), *text != '\0') << '"' << text << '"';
    }
    QTest::keyClick(&editor(sheet), Qt::Key_Backspace);
    EXPECT_FALSE(find(sheet, "importButton").isEnabled());
}

TEST_F(CsvImportTest, TellsInGreenHowManyItImportedAndClosesAfterAMoment) {
    for (const bool ofSets : {true, false}) {
        const auto& sheet = ofSets ? openSets() : openProducts();
        import(sheet, ofSets ? kTwoSets : kTwoProducts);
        ASSERT_TRUE(isShown(sheet, "importResult"));
        EXPECT_EQ(textOf(sheet, "importResult"), ofSets ? "2 sets geïmporteerd" : "2 producten geïmporteerd");
        EXPECT_EQ(find(sheet, "importResult").palette().color(QPalette::WindowText),
                  ui::theme::green(main().palette()));
        EXPECT_TRUE(find(sheet, "importButton").isEnabled());
        EXPECT_TRUE(closes(sheet));
    }
    EXPECT_THAT(shoot().sets, SizeIs(2));
    EXPECT_THAT(textsOf(sheet("catalogSheet"), "productName"), ElementsAre("jas", "riem"));
}

TEST_F(CsvImportTest, StaysOpenWhenNothingWasImported) {
    addProduct("JAS");
    addProduct("riem");
    for (const bool ofSets : {true, false}) {
        const auto& sheet = ofSets ? openSets() : openProducts();
        import(sheet, ofSets ? "Set;Merk;Items;Model;Locatie" : kTwoProducts);
        EXPECT_EQ(textOf(sheet, "importResult"), ofSets ? "0 sets geïmporteerd" : "0 producten geïmporteerd");
        EXPECT_FALSE(closes(sheet));
        closeSheets();
    }
    EXPECT_THAT(shoot().sets, IsEmpty());
    EXPECT_THAT(catalog().products(), SizeIs(2));
}

TEST_F(CsvImportTest, PressingTwiceImportsTwiceAndTheMomentIsItsSheetsOwn) {
    const auto& sheet = openSets();
    paste(sheet, kTwoSets);
    click(sheet, "importButton");
    import(sheet);
    EXPECT_THAT(shoot().sets, SizeIs(4));
    EXPECT_EQ(textOf(sheet, "importResult"), "2 sets geïmporteerd");
    click(sheet, "cancelButton");
    EXPECT_FALSE(isOpen("importSheet"));
    const auto& next = openSets();
    EXPECT_FALSE(isShown(next, "importResult"));
    EXPECT_FALSE(closes(next));
}

TEST_F(CsvImportTest, ImportsIntoTheShootItWasOpenedForOrSaysThatItIsGone) {
    const auto id = addShoot("Texel");
    const auto& sheet = openSets();
    addShoot("Ibiza");
    import(sheet, kTwoSets);
    EXPECT_THAT(manager().shoot(id)->sets, SizeIs(2));
    manager().deleteShoot(id);
    import(sheet);
    EXPECT_EQ(textOf(sheet, "importResult"), "Deze shoot bestaat niet meer.");
    EXPECT_EQ(find(sheet, "importResult").palette().color(QPalette::WindowText),
              ui::theme::red(main().palette()));
    EXPECT_EQ(editor(sheet).toPlainText(), kTwoSets);
    EXPECT_TRUE(isOpen("importSheet"));
    EXPECT_THAT(shoot().sets, IsEmpty());
}

TEST_F(CsvImportTest, DoesNothingWithoutAShoot) {
    const auto& sheet = openWindow("importSheet");
    import(sheet, kTwoSets);
    EXPECT_FALSE(isShown(sheet, "importResult"));
    EXPECT_TRUE(isOpen("importSheet"));
}

TEST_F(CsvImportTest, WhatIsStillBeingReadWhenItClosesIsNotImported) {
    const auto& sheet = openSets();
    paste(sheet, kTwoSets);
    QTest::mouseClick(&find(sheet, "importButton"), Qt::LeftButton);
    // Understood, but not taken yet.
    ui::readingThreads().waitForDone();
    QTest::mouseClick(&find(sheet, "cancelButton"), Qt::LeftButton);
    settleReads();
    EXPECT_THAT(shoot().sets, IsEmpty());
}

TEST_F(CsvImportTest, ALackOfMemoryEndsTheImportAndNothingElse) {
    m_services.clock = []() -> Timestamp { throw std::bad_alloc(); };
    const auto& sheet = openSets();
    m_services.clock = m_clock.clock();
    import(sheet, kTwoSets);
    EXPECT_EQ(textOf(sheet, "importResult"), "Er is te weinig geheugen voor deze lijst");
    EXPECT_EQ(editor(sheet).toPlainText(), kTwoSets);
    EXPECT_THAT(shoot().sets, IsEmpty());
}

TEST_F(CsvImportTest, RefusesAListOfMoreThanAHundredThousandLines) {
    for (const bool ofSets : {true, false}) {
        const auto& sheet = ofSets ? openSets() : openProducts();
        import(sheet, "Set;Merk\n" + QString("1;B\n \n").repeated(100'000));
        EXPECT_EQ(textOf(sheet, "importResult"), "De lijst heeft 100.001 regels; meer dan 100.000 kan niet");
        EXPECT_TRUE(find(sheet, "importButton").isEnabled());
        closeSheets();
    }
    EXPECT_THAT(shoot().sets, IsEmpty());
    EXPECT_THAT(catalog().products(), IsEmpty());
}

TEST_F(CsvImportTest, ShowsTheChosenFileInPlaceOfWhatWasThere) {
    const auto& sheet = openSets();
    paste(sheet, "oud");
    chooseFile(sheet, "\xEF\xBB\xBFSet;Merk\r\n1;Café\u00A0Zürich");
    EXPECT_EQ(editor(sheet).toPlainText(), QString::fromUtf8("Set;Merk\n1;Café Zürich"));
    EXPECT_THAT(m_dialogs.openedTypes, ElementsAre(ElementsAre("csv", "txt")));
    import(sheet);
    ASSERT_THAT(shoot().sets, SizeIs(1));
    EXPECT_EQ(shoot().sets.front().brand, "Café\u00A0Zürich") << "spaces that must not break are kept";
    chooseFile(sheet, "");
    EXPECT_EQ(editor(sheet).toPlainText(), "");
    EXPECT_FALSE(find(sheet, "importButton").isEnabled());
}

TEST_F(CsvImportTest, AFileThatCannotBeReadChangesNothing) {
    const auto& sheet = openSets();
    paste(sheet, "oud");
    chooseFile(sheet, "1;Zo\xE9;jas");
    EXPECT_EQ(editor(sheet).toPlainText(), "oud");
    m_files.unreadable.insert("/tmp/in.csv");
    chooseFile(sheet, "goed");
    EXPECT_EQ(editor(sheet).toPlainText(), "oud");
    m_dialogs.whatToOpen.reset();
    click(sheet, "chooseFileButton");
    EXPECT_EQ(editor(sheet).toPlainText(), "oud");
    EXPECT_FALSE(isShown(sheet, "importResult"));
}

TEST_F(CsvImportTest, TakesADroppedFile) {
    auto& sheet = openSets();
    const auto file = QUrl::fromLocalFile("/tmp/mijn sets.csv");
    m_files.files["/tmp/mijn sets.csv"] = kTwoSets;
    EXPECT_TRUE(drop(sheet, {file}));
    EXPECT_EQ(editor(sheet).toPlainText(), kTwoSets);
    for (const auto& urls : {QList<QUrl>(), QList<QUrl>{QUrl("https://vantor.example/sets.csv")}})
        EXPECT_FALSE(drop(sheet, urls));
    EXPECT_FALSE(drop(sheet, {file}, Qt::MoveAction)) << "a file that could only be moved";
}

// Lines of a set for each number from 1 on, twenty characters long.
QString numberedSets(int count) {
    QString text;
    for (int i = 1; i <= count; ++i)
        text += QStringLiteral("%1;M\n").arg(i, 17, 10, QLatin1Char('0'));
    return text;
}

TEST_F(CsvImportTest, ShowsTheBeginningOfAVeryLongTextAndImportsAllOfIt) {
    const auto& sheet = openSets();
    for (const auto* const text : {"", "Set;Merk\n1;Nike"}) {
        paste(sheet, numberedSets(90000));
        EXPECT_TRUE(isShown(sheet, "onlyBeginning"));
        // Emptying or replacing what is shown forgets the rest.
        paste(sheet, text);
        EXPECT_FALSE(isShown(sheet, "onlyBeginning"));
        EXPECT_EQ(find(sheet, "importButton").isEnabled(), *text != '\0');
    }
    paste(sheet, "Set;Merk\n" + numberedSets(90000));
    EXPECT_EQ(textOf(sheet, "onlyBeginning"), "Alleen het begin is te zien");
    EXPECT_LE(editor(sheet).document()->characterCount(), 1000001);
    EXPECT_GE(editor(sheet).document()->characterCount(), 900000);
    // What is shown can still be changed, and more be pasted into it.
    editor(sheet).moveCursor(QTextCursor::Start);
    QTest::keyClick(&editor(sheet), Qt::Key_Down);
    QApplication::clipboard()->setText("extra;M\n");
    QTest::keyClick(&editor(sheet), Qt::Key_V, Qt::ControlModifier);
    QTest::keyClicks(&editor(sheet), "typed;M");
    QTest::keyClick(&editor(sheet), Qt::Key_Return);
    EXPECT_TRUE(editor(sheet).toPlainText().startsWith("Set;Merk\nextra;M\ntyped;M\n00000000000000001;M\n"));
    import(sheet);
    EXPECT_EQ(textOf(sheet, "importResult"), "90002 sets geïmporteerd");
    EXPECT_EQ(std::ranges::count(shoot().sets, "00000000000090000", &SetData::setNumber), 1);
}

TEST_F(CsvImportTest, ALineWithoutEndIsNotShownWholeButImportedWhole) {
    const auto& sheet = openSets();
    const std::string brand(200001, 'x');
    chooseFile(sheet, "Set;Merk\n1;" + brand + "\n2;Zara");
    ASSERT_TRUE(isShown(sheet, "onlyBeginning"));
    EXPECT_LE(editor(sheet).document()->characterCount(), 60000);
    import(sheet);
    ASSERT_THAT(shoot().sets, SizeIs(2));
    EXPECT_EQ(std::ranges::count(shoot().sets, brand, &SetData::brand), 1);
}

TEST_F(CsvImportTest, LinesWithoutABrandColumnGetTheOneThatIsChosen) {
    catalog().addBrand("Nike");
    auto& below = openWindow("catalogSheet");
    for (const auto& [chosen, brand] :
         {std::pair("Alle merken", ""), std::pair("Algemeen", ""), std::pair("Nike", "Nike")}) {
        choose(find<QComboBox>(below, "brandPicker"), chosen);
        auto& sheet = openProducts();
        import(sheet, QString("Naam;Kleuren\njas voor %1;rood").arg(chosen));
        const auto made =
            std::ranges::find(catalog().products(), std::string("jas voor ") + chosen, &Product::name);
        ASSERT_NE(made, catalog().products().end()) << chosen;
        EXPECT_EQ(made->brand, brand) << chosen;
        sheet.close();
        settle();
    }
}

} // namespace
} // namespace vantor::testing
