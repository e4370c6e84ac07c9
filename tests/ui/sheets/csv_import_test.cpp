#include "tests/ui/sheets/sheet_test.h"
#include "ui/frame/beside_window.h"
#include "ui/frame/theme.h"

#include <QClipboard>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QElapsedTimer>
#include <QMimeData>
#include <new>
#include <ostream>

namespace vantor::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* kTwoSets = "Set;Merk;Items;Model;Locatie\n1;Nike;jas/rood;Anna;Studio A\n2;Zara;;;";
constexpr const char* kTwoProducts = "Naam;Kleuren;Merk\njas;rood, blauw;Nike\nriem;;";

constexpr Qt::DropActions kCopyOrMove = Qt::CopyAction | Qt::MoveAction;

class CsvImportTest : public SheetTest {
protected:
    CsvImportTest() { openMain(); }

    QDialog& openSets() {
        if (manager().activeShoot() == nullptr)
            addShoot("Texel");
        return openSetImport();
    }
    QDialog& openProducts() {
        openCatalog();
        return openCatalogImport();
    }

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

    // As with the key that proposes to move what is dragged.
    void drop(QWidget& onto, const QList<QUrl>& urls, Qt::DropActions possible = kCopyOrMove) {
        QMimeData data;
        data.setUrls(urls);
        const QPoint middle = onto.rect().center();
        QDragEnterEvent enter(middle, possible, &data, Qt::LeftButton, Qt::ShiftModifier);
        QApplication::sendEvent(&onto, &enter);
        m_accepted = enter.isAccepted();
        if (!m_accepted)
            return;
        EXPECT_EQ(enter.dropAction(), Qt::CopyAction);
        QDropEvent event(middle, possible, &data, Qt::LeftButton, Qt::ShiftModifier);
        QApplication::sendEvent(&onto, &event);
        EXPECT_TRUE(event.isAccepted());
        EXPECT_EQ(event.dropAction(), Qt::CopyAction);
        settleReads();
    }

    bool m_accepted = false;
};

TEST_F(CsvImportTest, ImportingSetsSaysWhatItIsFor) {
    const auto& sheet = openSets();
    EXPECT_EQ(sheet.windowTitle(), "Import CSV");
    EXPECT_THAT(linesOf(sheet),
                ElementsAre("Import CSV",
                            "Plak CSV data of kies een bestand. Kolommen: Set, Merk, Items (item/kleur, "
                            "item/kleur), Model, Locatie",
                            "(text)",
                            "Voorbeeld:\nSet;Merk;Items;Model;Locatie\n1;Marvis;coated pants/brown, "
                            "sweater/blue navy;Anna;Studio A",
                            "Kies bestand...", "Annuleer / Importeer"));
    EXPECT_EQ(sheet.size(), QSize(550, 400));
    EXPECT_GE(editor(sheet).height(), 150);
    EXPECT_TRUE(QFontInfo(editor(sheet).font()).fixedPitch());
    EXPECT_TRUE(QFontInfo(find(sheet, "example").font()).fixedPitch());
    EXPECT_EQ(find(sheet, "example").palette().color(QPalette::WindowText),
              ui::theme::secondaryText(sheet.palette()));
    EXPECT_NE(dynamic_cast<ui::ProminentButton*>(&find(sheet, "importButton")), nullptr);
}

TEST_F(CsvImportTest, ImportingProductsSaysWhatItIsFor) {
    const auto& sheet = openProducts();
    EXPECT_EQ(sheet.windowTitle(), "Import Productcatalogus");
    EXPECT_THAT(linesOf(sheet),
                ElementsAre("Import Productcatalogus",
                            "Plak CSV data of kies een bestand. Kolommen: Naam;Kleuren;Merk (kleuren "
                            "komma-gescheiden, merk optioneel — leeg = Algemeen, oudere exports zonder "
                            "Merk-kolom worden aan het huidig geselecteerde merk toegewezen)",
                            "Voorbeeld:\nNaam;Kleuren;Merk\ncoated pants;brown, navy, black;Mr "
                            "Marvis\nsweater;blue navy;",
                            "(text)", "Kies bestand...", "Annuleer / Importeer"));
}

TEST_F(CsvImportTest, StartsInTheEmptyEditorAndTabFollowsTheForm) {
    const auto& sheet = openSets();
    EXPECT_EQ(&focused(), &editor(sheet));
    EXPECT_EQ(editor(sheet).toPlainText(), "");
    EXPECT_FALSE(find(sheet, "importButton").isEnabled());
    EXPECT_FALSE(isShown(sheet, "importResult"));
    paste(sheet, "x");
    EXPECT_THAT(tabWalk(), ElementsAre("csvText", "chooseFileButton", "cancelButton", "importButton"));
}

TEST_F(CsvImportTest, NeedsOnlyTextThatIsNotEmpty) {
    const auto& sheet = openSets();
    paste(sheet, " ");
    EXPECT_TRUE(find(sheet, "importButton").isEnabled());
    paste(sheet, "\n");
    EXPECT_TRUE(find(sheet, "importButton").isEnabled());
    paste(sheet, "");
    EXPECT_FALSE(find(sheet, "importButton").isEnabled());
    QTest::keyClicks(&editor(sheet), "a");
    EXPECT_TRUE(find(sheet, "importButton").isEnabled());
    QTest::keyClick(&editor(sheet), Qt::Key_Backspace);
    EXPECT_FALSE(find(sheet, "importButton").isEnabled());
}

TEST_F(CsvImportTest, ImportsSetsTellsInGreenHowManyAndClosesAfterAMoment) {
    const auto& sheet = openSets();
    paste(sheet, kTwoSets);
    QElapsedTimer since;
    since.start();
    import(sheet);
    ASSERT_TRUE(isShown(sheet, "importResult"));
    EXPECT_EQ(textOf(sheet, "importResult"), "2 sets geïmporteerd");
    EXPECT_EQ(find(sheet, "importResult").palette().color(QPalette::WindowText),
              ui::theme::green(main().palette()));
    EXPECT_TRUE(find(sheet, "importButton").isEnabled());
    EXPECT_THAT(shoot().sets, SizeIs(2));
    ASSERT_TRUE(runUntil([&] { return !isOpen("importSheet"); }));
    EXPECT_GE(since.elapsed(), 1450);
}

TEST_F(CsvImportTest, ImportsProductsTellsHowManyAndClosesAfterAMoment) {
    const auto& sheet = openProducts();
    paste(sheet, kTwoProducts);
    QElapsedTimer since;
    since.start();
    import(sheet);
    ASSERT_TRUE(isShown(sheet, "importResult"));
    EXPECT_EQ(textOf(sheet, "importResult"), "2 producten geïmporteerd");
    EXPECT_THAT(rowTexts(this->sheet("catalogSheet"), "productName"), ElementsAre("jas", "riem"));
    ASSERT_TRUE(runUntil([&] { return !isOpen("catalogImportSheet"); }));
    EXPECT_GE(since.elapsed(), 1450);
    EXPECT_TRUE(isOpen("catalogSheet"));
}

TEST_F(CsvImportTest, StaysOpenWhenNothingWasImported) {
    const auto& sheet = openSets();
    paste(sheet, "Set;Merk;Items;Model;Locatie");
    import(sheet);
    ASSERT_TRUE(isShown(sheet, "importResult"));
    EXPECT_EQ(textOf(sheet, "importResult"), "0 sets geïmporteerd");
    runFor(std::chrono::milliseconds(1800));
    EXPECT_TRUE(isOpen("importSheet"));
    EXPECT_THAT(shoot().sets, IsEmpty());
}

TEST_F(CsvImportTest, StaysOpenWhenAllProductsExist) {
    addProduct("JAS");
    addProduct("riem");
    const auto& sheet = openProducts();
    paste(sheet, kTwoProducts);
    import(sheet);
    EXPECT_EQ(textOf(sheet, "importResult"), "0 producten geïmporteerd");
    runFor(std::chrono::milliseconds(1800));
    EXPECT_TRUE(isOpen("catalogImportSheet"));
    EXPECT_THAT(catalog().products(), SizeIs(2));
}

TEST_F(CsvImportTest, PressingTwiceImportsTwice) {
    const auto& sheet = openSets();
    paste(sheet, kTwoSets);
    click(sheet, "importButton");
    import(sheet);
    EXPECT_THAT(shoot().sets, SizeIs(4));
    EXPECT_EQ(textOf(sheet, "importResult"), "2 sets geïmporteerd");
    EXPECT_TRUE(runUntil([&] { return !isOpen("importSheet"); }));
}

TEST_F(CsvImportTest, ImportsIntoTheShootItWasOpenedFor) {
    const auto id = addShoot("Texel");
    const auto& sheet = openSets();
    paste(sheet, kTwoSets);
    addShoot("Ibiza");
    import(sheet);
    EXPECT_THAT(shoot().sets, IsEmpty());
    EXPECT_THAT(manager().shoot(id)->sets, SizeIs(2));
}

TEST_F(CsvImportTest, SaysThatTheShootIsGoneAndKeepsTheText) {
    const auto& sheet = openSets();
    const auto id = shoot().id;
    addShoot("Ibiza");
    manager().deleteShoot(id);
    paste(sheet, kTwoSets);
    import(sheet);
    EXPECT_EQ(textOf(sheet, "importResult"), "Deze shoot bestaat niet meer.");
    EXPECT_EQ(find(sheet, "importResult").palette().color(QPalette::WindowText),
              ui::theme::red(main().palette()));
    EXPECT_EQ(editor(sheet).toPlainText(), kTwoSets);
    EXPECT_TRUE(isOpen("importSheet"));
    EXPECT_THAT(shoot().sets, IsEmpty());
}

TEST_F(CsvImportTest, DoesNothingWithoutAShoot) {
    const auto& sheet = openSetImport();
    paste(sheet, kTwoSets);
    import(sheet);
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
    paste(sheet, kTwoSets);
    import(sheet);
    EXPECT_EQ(textOf(sheet, "importResult"), "Er is te weinig geheugen voor deze lijst");
    EXPECT_EQ(editor(sheet).toPlainText(), kTwoSets);
    EXPECT_THAT(shoot().sets, IsEmpty());
}

TEST_F(CsvImportTest, RefusesAListOfMoreThanAHundredThousandLines) {
    for (const auto* const name : {"importSheet", "catalogImportSheet"}) {
        const auto& sheet = std::string(name) == "importSheet" ? openSets() : openProducts();
        paste(sheet, "Set;Merk\n" + QString("1;B\n \n").repeated(100'000));
        import(sheet);
        EXPECT_EQ(textOf(sheet, "importResult"), "De lijst heeft 100.001 regels; meer dan 100.000 kan niet");
        EXPECT_TRUE(find(sheet, "importButton").isEnabled());
        const_cast<QDialog&>(sheet).close();
        settle();
    }
    EXPECT_THAT(shoot().sets, IsEmpty());
    EXPECT_THAT(catalog().products(), IsEmpty());
}

TEST_F(CsvImportTest, CancellingDuringTheMomentLeavesTheNextOneOpen) {
    const auto& sheet = openSets();
    paste(sheet, kTwoSets);
    import(sheet);
    click(sheet, "cancelButton");
    EXPECT_FALSE(isOpen("importSheet"));
    const auto& next = openSets();
    EXPECT_EQ(editor(next).toPlainText(), "");
    EXPECT_FALSE(isShown(next, "importResult"));
    runFor(std::chrono::milliseconds(1700));
    EXPECT_TRUE(isOpen("importSheet"));
}

TEST_F(CsvImportTest, ShowsTheChosenFileInPlaceOfWhatWasThere) {
    const auto& sheet = openSets();
    paste(sheet, "oud");
    chooseFile(sheet, "\xEF\xBB\xBFSet;Merk\r\n1;Zoé");
    EXPECT_EQ(editor(sheet).toPlainText(), QString::fromUtf8("Set;Merk\n1;Zoé"));
    EXPECT_THAT(m_dialogs.openedTypes, ElementsAre(ElementsAre("csv", "txt")));
    import(sheet);
    ASSERT_THAT(shoot().sets, SizeIs(1));
    EXPECT_EQ(shoot().sets.front().brand, "Zoé");
}

TEST_F(CsvImportTest, AnEmptyFileEmptiesTheEditor) {
    const auto& sheet = openProducts();
    paste(sheet, "oud");
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
    m_dialogs.whatToOpen = "/tmp/geen.csv";
    click(sheet, "chooseFileButton");
    settleReads();
    EXPECT_EQ(editor(sheet).toPlainText(), "oud");
    m_dialogs.whatToOpen.reset();
    click(sheet, "chooseFileButton");
    EXPECT_EQ(editor(sheet).toPlainText(), "oud");
    EXPECT_FALSE(isShown(sheet, "importResult"));
}

TEST_F(CsvImportTest, TakesADroppedFile) {
    auto& sheet = openSets();
    m_files.files["/tmp/mijn sets.csv"] = kTwoSets;
    drop(sheet, {QUrl::fromLocalFile("/tmp/mijn sets.csv")});
    EXPECT_TRUE(m_accepted);
    EXPECT_EQ(editor(sheet).toPlainText(), kTwoSets);
    drop(sheet, {QUrl("https://vantor.example/sets.csv")});
    EXPECT_FALSE(m_accepted);
    drop(sheet, {});
    EXPECT_FALSE(m_accepted);
    drop(sheet, {QUrl::fromLocalFile("/tmp/mijn sets.csv")}, Qt::MoveAction);
    EXPECT_FALSE(m_accepted) << "a file that could only be moved";
}

TEST_F(CsvImportTest, AFileReadWhileTheSheetClosesIsForgotten) {
    const auto& sheet = openSets();
    m_files.files["/tmp/in.csv"] = kTwoSets;
    m_dialogs.whatToOpen = "/tmp/in.csv";
    QTest::mouseClick(&find<QAbstractButton>(sheet, "chooseFileButton"), Qt::LeftButton);
    click(sheet, "cancelButton");
    settleReads();
    EXPECT_FALSE(isOpen("importSheet"));
    EXPECT_THAT(shoot().sets, IsEmpty());
}

// A line of a set for each number, twenty characters long.
QString numberedSets(int from, int count) {
    QString text;
    for (int i = 0; i < count; ++i)
        text += QStringLiteral("%1;M\n").arg(from + i, 17, 10, QLatin1Char('0'));
    return text;
}

TEST_F(CsvImportTest, ShowsTheBeginningOfAVeryLongTextAndImportsAllOfIt) {
    const auto& sheet = openSets();
    paste(sheet, "Set;Merk\n" + numberedSets(1, 1000));
    EXPECT_FALSE(isShown(sheet, "onlyBeginning"));
    paste(sheet, "Set;Merk\n" + numberedSets(1, 90000));
    ASSERT_TRUE(isShown(sheet, "onlyBeginning"));
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
    EXPECT_TRUE(std::ranges::any_of(shoot().sets,
                                    [](const auto& set) { return set.setNumber == "00000000000090000"; }));
}

TEST_F(CsvImportTest, EmptyingOrReplacingTheShownBeginningForgetsTheRest) {
    const auto& sheet = openSets();
    paste(sheet, numberedSets(1, 90000));
    paste(sheet, "");
    EXPECT_FALSE(isShown(sheet, "onlyBeginning"));
    EXPECT_FALSE(find(sheet, "importButton").isEnabled());
    paste(sheet, numberedSets(1, 90000));
    paste(sheet, "Set;Merk\n1;Nike");
    EXPECT_FALSE(isShown(sheet, "onlyBeginning"));
    import(sheet);
    EXPECT_THAT(shoot().sets, SizeIs(1));
}

TEST_F(CsvImportTest, ALineWithoutEndIsNotShownWholeButImportedWhole) {
    const auto& sheet = openSets();
    const QString brand(200001, 'x');
    chooseFile(sheet, ("Set;Merk\n1;" + brand + "\n2;Zara").toStdString());
    ASSERT_TRUE(isShown(sheet, "onlyBeginning"));
    EXPECT_LE(editor(sheet).document()->characterCount(), 60000);
    import(sheet);
    ASSERT_THAT(shoot().sets, SizeIs(2));
    EXPECT_TRUE(
        std::ranges::any_of(shoot().sets, [&](const auto& set) { return set.brand == brand.toStdString(); }));
}

TEST_F(CsvImportTest, KeepsSpacesThatMustNotBreak) {
    const auto& sheet = openSets();
    paste(sheet, QString::fromUtf8("Set;Merk\n1;Café\u00A0Zürich"));
    import(sheet);
    EXPECT_EQ(shoot().sets.front().brand, "Café\u00A0Zürich");
}

TEST_F(CsvImportTest, ReturnWritesALineAndEscapeCloses) {
    const auto& sheet = openSets();
    QTest::keyClicks(&editor(sheet), "1;Nike");
    QTest::keyClick(&editor(sheet), Qt::Key_Return);
    QTest::keyClicks(&editor(sheet), "2;Zara");
    EXPECT_EQ(editor(sheet).toPlainText(), "1;Nike\n2;Zara");
    press(Qt::Key_Escape);
    EXPECT_FALSE(isOpen("importSheet"));
    EXPECT_THAT(shoot().sets, IsEmpty());
}

struct DefaultBrandCase {
    const char* chosen;
    const char* expected;
};

void PrintTo(const DefaultBrandCase& each, std::ostream* out) {
    *out << each.chosen;
}

class DefaultBrandTest : public CsvImportTest, public ::testing::WithParamInterface<DefaultBrandCase> {};

TEST_P(DefaultBrandTest, LinesWithoutABrandColumnGetTheOneThatIsChosen) {
    catalog().addBrand("Nike");
    auto& below = openCatalog();
    choose(find<QComboBox>(below, "brandPicker"), GetParam().chosen);
    const auto& sheet = openCatalogImport();
    paste(sheet, "Naam;Kleuren\njas;rood");
    import(sheet);
    ASSERT_THAT(catalog().products(), SizeIs(1));
    EXPECT_EQ(catalog().products().front().brand, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Filters, DefaultBrandTest,
                         ::testing::Values(DefaultBrandCase{"Alle merken", ""},
                                           DefaultBrandCase{"Algemeen", ""},
                                           DefaultBrandCase{"Nike", "Nike"}));

} // namespace
} // namespace vantor::testing
