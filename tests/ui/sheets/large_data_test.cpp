#include "tests/ui/sheets/sheet_test.h"
#include "ui/beside_window.h"

#include <QClipboard>
#include <QMenu>
#include <iostream>

namespace vantor::testing {
namespace {

// The limits are those of a program built for its users; one with checks compiled in may take longer.
#if defined(__SANITIZE_ADDRESS__)
constexpr double kAllowance = 10;
#elif defined(NDEBUG)
constexpr double kAllowance = 1;
#else
constexpr double kAllowance = 2;
#endif

void expectWithin(const char* what, double milliseconds, double limit) {
    ::testing::Test::RecordProperty(what, std::to_string(milliseconds));
    std::cout << "             " << what << ": " << milliseconds << " ms of " << limit << '\n';
    EXPECT_LE(milliseconds, limit * kAllowance) << what;
}

class LargeDataTest : public SheetTest {
protected:
    LargeDataTest() {
        openMain();
        addShoot("Texel", "merk 7");
    }

    // Spread over so many brands, each product with four colours.
    void fillCatalog(unsigned products, unsigned brands) {
        std::vector<Product> all;
        for (unsigned i = 0; i < products; ++i) {
            all.push_back(Product::make("product " + std::to_string(100000 + i),
                                        {"rood", "blauw", "groen", "zwart"},
                                        "Merk " + std::to_string(i % brands)));
        }
        catalog().setProducts(std::move(all));
        settle();
    }

    static void closeMenus() {
        while (auto* const popup = QApplication::activePopupWidget())
            popup->close();
    }
};

TEST_F(LargeDataTest, TheCatalogueOfTenThousandProductsOpensAtOnce) {
    fillCatalog(10000, 200);
    expectWithin("opening the catalogue", quickest([this] {
                     if (isOpen("catalogSheet"))
                         sheet("catalogSheet").close();
                     openCatalog();
                     sheet("catalogSheet").repaint();
                 }),
                 200);
}

TEST_F(LargeDataTest, TheCatalogueOfTenThousandProductsAnswersKeysAndDeletesAtOnce) {
    fillCatalog(10000, 200);
    auto& shown = openCatalog();
    choose(find<QComboBox>(shown, "brandPicker"), "Alle merken");
    auto& name = find<QLineEdit>(shown, "newProductNameField");
    name.setFocus();
    expectWithin("a key in a field", quickest([&] {
                     QTest::keyClicks(&name, "a");
                     shown.repaint();
                     QApplication::processEvents();
                 }),
                 50);
    EXPECT_EQ(name.text(), "aaa");
    expectWithin("deleting a product", quickest([&] {
                     QTest::mouseClick(allVisible<QAbstractButton>(shown, "deleteProductButton").at(2),
                                       Qt::LeftButton);
                     QApplication::processEvents();
                     QApplication::processEvents();
                     shown.repaint();
                 }),
                 50);
    EXPECT_EQ(catalog().products().size(), 9997U);
    EXPECT_EQ(find<ui::RecyclingList>(shown, "productList").rowCount(), 9997);
}

TEST_F(LargeDataTest, ScrollingThroughTenThousandProductsMakesFewRows) {
    fillCatalog(10000, 200);
    auto& shown = openCatalog();
    choose(find<QComboBox>(shown, "brandPicker"), "Alle merken");
    auto& list = find<ui::RecyclingList>(shown, "productList");
    list.setFocus(Qt::TabFocusReason);
    press(Qt::Key_End);
    EXPECT_EQ(list.currentRow(), 9999);
    EXPECT_EQ(rowTexts(shown, "productName").back(), "product 109999");
    EXPECT_LE(list.findChildren<QWidget*>("productRow").size(), 40);
}

TEST_F(LargeDataTest, ThePickerOfFiveThousandProductsOpensAtOnce) {
    fillCatalog(5000, 50);
    auto& menu = find<QMenu>(openNewSet(), "catalogPickerMenu");
    expectWithin("opening the picker", quickest([&] {
                     menu.popup(QPoint(5, 5));
                     QApplication::processEvents();
                     closeMenus();
                 }),
                 100);
    menu.popup(QPoint(5, 5));
    EXPECT_EQ(menu.actions().size(), 50);
    EXPECT_EQ(menu.actions().front()->text(), "Merk 7");
    closeMenus();
}

TEST_F(LargeDataTest, OneBrandOfFiveThousandProductsOpensAtOnce) {
    fillCatalog(5000, 1);
    auto& menu = find<QMenu>(openNewSet(), "catalogPickerMenu");
    expectWithin("opening a brand", quickest([&] {
                     menu.popup(QPoint(5, 5));
                     auto* const brand = menu.actions().front()->menu();
                     brand->popup(QPoint(100, 5));
                     QApplication::processEvents();
                     EXPECT_EQ(brand->actions().size(), 5000);
                     closeMenus();
                 }),
                 100);
}

// About ten megabytes in a hundred thousand lines.
QString pastedText(int& sets) {
    QString text("Set;Merk;Items;Model;Locatie\n");
    sets = 100000;
    for (int i = 0; i < sets; ++i) {
        text += QStringLiteral("%1;Merk;jas met een lange naam en veel letters/een kleur met een lange naam, "
                               "broek/blauw;Anna de Vries;Studio A\n")
                    .arg(i);
    }
    return text;
}

TEST_F(LargeDataTest, TenMegabytesOfTextDoNotHoldTheWindowUp) {
    int sets = 0;
    const auto text = pastedText(sets);
    ASSERT_GE(text.size(), 10 << 20);
    auto& shown = openSetImport();
    auto& editor = find<QPlainTextEdit>(shown, "csvText");
    QApplication::clipboard()->setText(text);
    expectWithin("pasting", quickest([&] {
                     editor.clear();
                     QTest::keyClick(&editor, Qt::Key_V, Qt::ControlModifier);
                     QApplication::processEvents();
                     shown.repaint();
                 }),
                 300);
    m_files.files["/tmp/in.csv"] = text.toStdString();
    m_dialogs.whatToOpen = "/tmp/in.csv";
    expectWithin("showing a file", quickest([&] {
                     editor.clear();
                     QTest::mouseClick(&find(shown, "chooseFileButton"), Qt::LeftButton);
                     ui::readingThreads().waitForDone();
                     QApplication::processEvents();
                     shown.repaint();
                 }),
                 300);
    click(shown, "importButton");
    EXPECT_EQ(shoot().sets.size(), static_cast<std::size_t>(sets));
}

} // namespace
} // namespace vantor::testing
