#include "output/qr_generator.h"
#include "tests/output/code_readers.h"
#include "tests/support/gray_picture.h"
#include "tests/ui/ui_fixture.h"
#include "ui/frame/theme.h"

#include <QGroupBox>
#include <QImage>
#include <QScrollArea>
#include <QStackedWidget>

namespace vantor::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

QPalette darkPalette() {
    QPalette palette(QColor(0x34, 0x37, 0x3e), QColor(0x24, 0x26, 0x2b));
    palette.setColor(QPalette::Base, QColor(0x1b, 0x1d, 0x21));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, QColor(0xec, 0xed, 0xef));
    return palette;
}

// The application's colours for the length of a test.
struct Colors {
    explicit Colors(bool dark) {
        if (dark)
            QApplication::setPalette(darkPalette());
    }
    ~Colors() { QApplication::setPalette(before); }
    Colors(const Colors&) = delete;
    Colors& operator=(const Colors&) = delete;

    const QPalette before = QApplication::palette();
};

GrayPicture grayOf(const QImage& image) {
    auto gray = blankPicture(image.width(), image.height());
    auto pixel = gray.pixels.begin();
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            *pixel++ = static_cast<std::uint8_t>(qGray(image.pixel(x, y)));
    }
    return gray;
}

// The window as it is on screen, and where in it the plate of the code lies.
struct Shown {
    QImage image;
    QRect plate;
};

Shown shownCode(QWidget& window) {
    const auto& plate = find(window, "codePlate");
    return {window.grab().toImage(), QRect(plate.mapTo(&window, QPoint()), plate.size())};
}

bool isWhite(const QImage& image, int x, int y) {
    return image.pixelColor(x, y) == QColor(Qt::white);
}

// Where the black modules begin and end.
QRect blackOf(const Shown& shown) {
    QRect black;
    for (int y = shown.plate.top(); y <= shown.plate.bottom(); ++y) {
        for (int x = shown.plate.left(); x <= shown.plate.right(); ++x) {
            if (shown.image.pixelColor(x, y) == QColor(Qt::black))
                black |= QRect(x, y, 1, 1);
        }
    }
    return black;
}

// The code can be read, is sharp, and has white around it that is four modules wide.
void expectReadable(const Shown& shown, const std::string& text) {
    EXPECT_EQ(readByZxing(grayOf(shown.image)), text);
    EXPECT_EQ(readByZbar(grayOf(shown.image)), text);

    auto black = blackOf(shown);
    // The dark corners outside of a rounded plate are no part of the code, and are not pure black.
    ASSERT_FALSE(black.isNull());
    int run = 0;
    while (shown.image.pixelColor(black.left() + run, black.top()) == QColor(Qt::black))
        ++run;
    const double module = run / 7.0;
    ASSERT_GE(module, 1);
    const int four = static_cast<int>(std::ceil(4 * module));
    const auto quiet = black.adjusted(-four, -four, four, four);
    ASSERT_TRUE(shown.plate.contains(quiet))
        << "code " << black.width() << " px, module " << module << " px, plate " << shown.plate.width();
    int notWhite = 0;
    int neither = 0;
    for (int y = quiet.top(); y <= quiet.bottom(); ++y) {
        for (int x = quiet.left(); x <= quiet.right(); ++x) {
            const bool white = isWhite(shown.image, x, y);
            if (!black.contains(x, y))
                notWhite += white ? 0 : 1;
            else
                neither += !white && shown.image.pixelColor(x, y) != QColor(Qt::black) ? 1 : 0;
        }
    }
    EXPECT_EQ(notWhite, 0) << "pixels of the quiet zone are not white";
    EXPECT_EQ(neither, 0) << "pixels of the code are neither black nor white";
}

Bitmap pictureOf(const std::string& text, int size) {
    const QrencodeEncoder encoder;
    return QRGenerator(encoder).generate(text, size).value();
}

void expectSame(const Bitmap& a, const Bitmap& b) {
    ASSERT_EQ(a.width(), b.width());
    ASSERT_EQ(a.height(), b.height());
    for (int y = 0; y < a.height(); ++y)
        ASSERT_TRUE(std::ranges::equal(a.row(y), b.row(y))) << "row " << y;
}

// A large picture of this text's code was saved.
void expectPng(const MemoryFileStore& files, const std::string& text) {
    const auto image = QImage::fromData(QByteArray::fromStdString(files.files["/out/code.png"]), "PNG");
    EXPECT_EQ(image.size(), QSize(600, 600));
    EXPECT_EQ(readByZxing(grayOf(image)), text);
}

QString codeText(const QWidget& within) {
    return find<QPlainTextEdit>(within, "codeText").toPlainText();
}

// --- the sheet

class QrSheet : public UiTest {
protected:
    QDialog& openSheetFor(SetData set) {
        m_set = std::move(set);
        openMain();
        addShoot("Ibiza");
        manager().addSet(shoot().id, m_set);
        settle();
        click(*rows().front(), "qrButton");
        auto& opened = sheet("qrSheet");
        EXPECT_TRUE(QTest::qWaitForWindowActive(&opened));
        settle();
        return opened;
    }

    SetData m_set;
};

TEST_F(QrSheet, SaysTheseTextsAndCopiesALargePicture) {
    auto& opened = openSheetFor(noorderlicht());
    EXPECT_EQ(opened.windowTitle(), "QR-code: Set 12 — Noorderlicht");
    EXPECT_EQ(opened.width(), 400);
    EXPECT_THAT(linesOf(opened),
                ElementsAre("QR-code: Set 12 — Noorderlicht", "(text)", "Kopieer QR / Bewaar als PNG..."));
    EXPECT_EQ(codeText(opened).toStdString(), m_set.toQRText());
    EXPECT_TRUE(find<QPlainTextEdit>(opened, "codeText").isReadOnly());
    EXPECT_LT(find(opened, "codePlate").y(), find(opened, "codeText").parentWidget()->y());
    // The picture is 250 wide with its quiet module on both sides.
    const auto black = blackOf(shownCode(opened));
    const double module = 250.0 / QRGenerator(m_encoder).modules(m_set.toQRText()).value().width();
    EXPECT_NEAR(black.width(), 250 - 2 * module, 1.5);
    EXPECT_NEAR(black.height(), 250 - 2 * module, 1.5);
    click(opened, "copyButton");
    ASSERT_THAT(m_clipboard.pictures, SizeIs(1));
    expectSame(m_clipboard.pictures[0], pictureOf(m_set.toQRText(), 600));
    EXPECT_TRUE(isOpen("qrSheet"));
    EXPECT_TRUE(isShown(opened, "copiedNote"));
}

TEST_F(QrSheet, ShowsACodeThatCanBeReadInLightAndDark) {
    for (const bool dark : {false, true}) {
        const Colors colors(dark);
        // Of the brand, which makes the code larger or smaller.
        for (const std::size_t letters : {1U, 60U, 200U}) {
            SCOPED_TRACE(std::to_string(letters) + (dark ? " in the dark" : " in the light"));
            SetData set;
            set.id = numberedId(1);
            set.brand = std::string(letters, 'x');
            auto& opened = openSheetFor(set);
            const auto shown = shownCode(opened);
            ASSERT_EQ(ui::theme::isDark(opened.palette()), dark);
            EXPECT_EQ(shown.plate.size(), find(opened, "codePlate").sizeHint());
            expectReadable(shown, set.toQRText());
            m_main.reset();
            settle();
        }
    }
}

TEST_F(QrSheet, SavesALargePictureAndTellsInItsOwnStripWhatBecameOfIt) {
    auto& opened = openSheetFor(noorderlicht());
    const auto before = m_files.files;
    click(opened, "saveButton");
    EXPECT_FALSE(isShown(opened, "noticeStrip"));
    EXPECT_THAT(m_dialogs.proposedNames, ElementsAre("SET-12-Noorderlicht.png"));
    EXPECT_THAT(m_dialogs.savedTypes, ElementsAre(ElementsAre("png")));
    m_dialogs.whereToSave = "/out/code.png";
    m_files.failsToReplace = true;
    click(opened, "saveButton");
    EXPECT_EQ(m_files.files, before);
    EXPECT_FALSE(isOpen("alert"));
    EXPECT_EQ(textOf(opened, "noticeText"), "code.png is niet bewaard: het lukte niet");
    EXPECT_THAT(allVisible(main(), "noticeStrip"), SizeIs(1));
    m_files.failsToReplace = false;
    click(opened, "saveButton");
    EXPECT_EQ(textOf(opened, "noticeText"), "Bewaard in /out/code.png");
    expectPng(m_files, m_set.toQRText());
}

TEST_F(QrSheet, LeavesTheCodeOutWhenTheTextIsTooLong) {
    SetData set;
    set.id = numberedId(1);
    set.setNumber = "1";
    set.brand = std::string(3000, 'x');
    auto& opened = openSheetFor(set);
    EXPECT_THAT(allVisible(opened, "codePlate"), IsEmpty());
    EXPECT_EQ(codeText(opened).toStdString(), set.toQRText());
    click(opened, "copyButton");
    EXPECT_THAT(m_clipboard.pictures, IsEmpty());
    EXPECT_FALSE(isShown(opened, "copiedNote"));
    m_dialogs.whereToSave = "/out/code.png";
    click(opened, "saveButton");
    EXPECT_FALSE(m_files.files.contains("/out/code.png"));
    EXPECT_EQ(textOf(opened, "noticeText"), "De tekst past niet in een QR-code");
    EXPECT_TRUE(opened.screen()->availableSize().height() >= opened.height()) << opened.height();
}

// --- the generator

class Generator : public UiTest {
protected:
    [[nodiscard]] ui::QRGeneratorView& view() { return *m_generator; }
    [[nodiscard]] QWidget& right() { return *view().findChild<QStackedWidget*>(); }
    [[nodiscard]] std::string text() { return view().buildSetData().toQRText(); }
    void fill() {
        type(view(), "setNumber", "12");
        type(view(), "brand", "Marvis");
        type(view(), "model", "Anna");
        type(view(), "location", "Studio A");
    }
    QLineEdit& item(const char* name, std::size_t line) {
        return *allVisible<QLineEdit>(view(), name).at(line);
    }
    [[nodiscard]] Shown code() { return shownCode(view()); }
};

TEST_F(Generator, StartsEmptyAndSaysTheseTexts) {
    openGenerator();
    EXPECT_EQ(view().windowTitle(), "QR Generator");
    click(view(), "addItemButton");
    EXPECT_THAT(linesOf(find(view(), "formScroll")),
                ElementsAre("QR Generator", "Set info", "Set nummer", "[1]", "Merk", "[bijv. Marvis]",
                            "Model", "[Naam model]", "Locatie", "[Studio]", "Items",
                            ::testing::StartsWith("[Item naam] / [Kleur] / {"), "+ Item toevoegen",
                            "Genereer QR"));
    EXPECT_THAT(linesOf(right()), ElementsAre("Vul de gegevens in en klik 'Genereer QR'"));
}

TEST_F(Generator, MakesACodeOfEmptyFieldsOnReturnTooUnlessNoneCanBeMade) {
    openGenerator();
    QTest::keyClick(&find(view(), "setNumber"), Qt::Key_Return);
    settle();
    EXPECT_THAT(linesOf(right()), ElementsAre("(text)", "Kopieer QR / Bewaar als PNG..."));
    EXPECT_EQ(text(), "");
    EXPECT_EQ(codeText(view()), "");
    EXPECT_FALSE(blackOf(code()).isNull());
    const auto before = m_files.files;
    click(view(), "saveButton");
    EXPECT_THAT(m_dialogs.proposedNames, ElementsAre("SET--.png"));
    EXPECT_EQ(m_files.files, before);
    find<QLineEdit>(view(), "brand").setText(QString(3000, 'x'));
    click(view(), "generateButton");
    EXPECT_THAT(linesOf(right()), ElementsAre("Vul de gegevens in en klik 'Genereer QR'"));
}

TEST_F(Generator, MakesACodeOfItsFields) {
    openGenerator();
    fill();
    for (std::size_t line = 0; line < 3; ++line) {
        click(view(), "addItemButton");
        type(item("itemName", line), line == 0 ? "broek" : line == 1 ? "" : "trui");
        type(item("itemColor", line), line == 0 ? "bruin" : line == 1 ? "blauw" : "");
    }
    const Colors colors(true);
    click(view(), "generateButton");
    EXPECT_EQ(text(), "SET:12\nBRAND:Marvis\nITEM:broek/bruin\nITEM:trui\nMODEL:Anna\nLOCATION:Studio A");
    EXPECT_EQ(codeText(view()).toStdString(), text());
    expectReadable(code(), text());
}

TEST_F(Generator, PictureStaysWhileTextAndFileFollowTheFieldsAndNothingIsStored) {
    openGenerator();
    fill();
    click(view(), "generateButton");
    const auto generated = text();
    const auto before = code().image.copy(code().plate);
    type(view(), "brand", "Nike");
    EXPECT_EQ(codeText(view()).toStdString(), text());
    EXPECT_NE(text(), generated);
    EXPECT_EQ(code().image.copy(code().plate), before);

    const auto place = find(view(), "copyButton").geometry();
    click(view(), "copyButton");
    ASSERT_THAT(m_clipboard.pictures, SizeIs(1));
    expectSame(m_clipboard.pictures[0], pictureOf(generated, 300));
    EXPECT_EQ(textOf(view(), "copiedNote"), "Gekopieerd");
    EXPECT_TRUE(isShown(view(), "copiedNote"));
    EXPECT_EQ(find(view(), "copyButton").geometry(), place) << "nothing moves";
    EXPECT_TRUE(runUntil([&] { return !isShown(view(), "copiedNote"); })) << "only for a moment";

    m_dialogs.whereToSave = "/out/code.png";
    click(view(), "saveButton");
    EXPECT_THAT(m_dialogs.proposedNames, ElementsAre("SET-12-Nike.png"));
    EXPECT_THAT(m_dialogs.savedTypes, ElementsAre(ElementsAre("png")));
    expectPng(m_files, text());
    view().close();
    settle();
    EXPECT_THAT(m_files.replacements, ElementsAre("/out/code.png"));
}

TEST_F(Generator, RemovesItemLinesDownToNone) {
    openGenerator();
    const auto lines = [&] { return textsOf(view(), "itemName"); };
    for (std::size_t i = 0; i < 3; ++i) {
        click(view(), "addItemButton");
        type(item("itemName", i), QString::number(i));
    }
    // A disc with the bar cut out of it.
    auto& minus = *allVisible<QAbstractButton>(view(), "removeItemButton").at(1);
    const auto symbol = minus.icon().pixmap(24).toImage();
    EXPECT_EQ(symbol.pixelColor(12, 6).alpha(), 255);
    EXPECT_EQ(symbol.pixelColor(12, 12).alpha(), 0);
    // The line that comes up to where the first click was is not meant by the second.
    doubleClick(view(), minus.mapTo(&view(), minus.rect().center()));
    EXPECT_THAT(lines(), ElementsAre("0", "2"));
    while (!lines().empty())
        click(*allVisible<QAbstractButton>(view(), "removeItemButton").at(0));
    EXPECT_TRUE(isShown(view(), "addItemButton"));
}

TEST_F(Generator, ScrollsALineThatHasTheFocusIntoSight) {
    openGenerator();
    for (int i = 0; i < 20; ++i)
        click(view(), "addItemButton");
    auto& form = find<QScrollArea>(view(), "formScroll");
    const auto* const focused = QApplication::focusWidget();
    ASSERT_EQ(focused, &item("itemName", 19));
    EXPECT_TRUE(
        form.viewport()->rect().contains(QRect(focused->mapTo(form.viewport(), QPoint()), focused->size())));
}

} // namespace
} // namespace vantor::testing
