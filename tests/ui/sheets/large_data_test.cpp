// What large catalogues and texts cost, in what is made for them; how long that takes is measured by the benchmarks.

#include "tests/ui/sheets/sheet_test.h"
#include "ui/widgets/large_text_edit.h"

#include <QClipboard>
#include <QMenu>

namespace vantor::testing {
namespace {

constexpr int kMostRows = 40;

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
        catalog().addImported(std::move(all));
        settle();
    }

    static void closeMenus() {
        while (auto* const popup = QApplication::activePopupWidget())
            popup->close();
        settle();
    }
};

TEST_F(LargeDataTest, TheCatalogueOfTenThousandProductsMakesFewRows) {
    fillCatalog(10000, 200);
    auto& shown = openCatalog();
    choose(find<QComboBox>(shown, "brandPicker"), "Alle merken");
    auto& list = find<ui::RecyclingList>(shown, "productList");
    EXPECT_EQ(list.rowCount(), 10000);
    EXPECT_LE(list.findChildren<QWidget*>("productRow").size(), kMostRows);
    click(*allVisible<QAbstractButton>(shown, "deleteProductButton").at(2));
    EXPECT_EQ(list.rowCount(), 9999);
    list.setFocus(Qt::TabFocusReason);
    press(Qt::Key_End);
    EXPECT_EQ(list.currentRow(), 9998);
    EXPECT_EQ(rowTexts(shown, "productName").back(), "product 109999");
    EXPECT_LE(list.findChildren<QWidget*>("productRow").size(), kMostRows);
}

TEST_F(LargeDataTest, ThePickerMakesOnlyTheMenusThatAreLookedInto) {
    fillCatalog(5000, 2);
    auto& menu = find<QMenu>(openNewSet(), "catalogPickerMenu");
    // However often.
    for (int opened = 0; opened < 3; ++opened) {
        menu.popup(QPoint(5, 5));
        EXPECT_EQ(menu.findChildren<QMenu*>().size(), 2);
        auto* const brand = menu.actions().front()->menu();
        brand->popup(QPoint(100, 5));
        EXPECT_EQ(brand->actions().size(), 2500);
        EXPECT_EQ(menu.findChildren<QMenu*>().size(), 2 + 2500);
        closeMenus();
    }
}

TEST_F(LargeDataTest, TenMegabytesOfTextAreShownInPartAndImportedWhole) {
    constexpr int kSets = 50000;
    QString text("Set;Merk;Items;Model;Locatie\n");
    for (int i = 0; i < kSets; ++i)
        text += QStringLiteral("%1;Merk;").arg(i) + QString(200, QLatin1Char('x')) +
                QStringLiteral("/blauw;Anna;\n");
    ASSERT_GE(text.size(), 10 << 20);
    auto& shown = openSetImport();
    auto& editor = find<ui::LargeTextEdit>(shown, "csvText");
    QApplication::clipboard()->setText(text);
    QTest::keyClick(&editor, Qt::Key_V, Qt::ControlModifier);
    EXPECT_TRUE(editor.holdsMoreThanItShows());
    EXPECT_LE(editor.document()->characterCount(), ui::LargeTextEdit::kMostShown + 1);
    click(shown, "importButton");
    EXPECT_TRUE(runUntil([&] { return shoot().sets.size() == std::size_t{kSets}; }));
}

} // namespace
} // namespace vantor::testing
