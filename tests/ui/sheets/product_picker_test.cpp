#include "tests/ui/sheets/sheet_test.h"

#include <QMenu>
#include <QTimer>

namespace vantor::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

std::vector<std::string> texts(const QMenu& menu) {
    std::vector<std::string> found;
    for (const auto* const action : menu.actions())
        found.push_back(action->text().toStdString() + (action->menu() != nullptr ? " >" : ""));
    return found;
}

// Opens a menu, or one within it, as the pointer would.
QMenu& opened(QMenu& menu) {
    menu.popup(QPoint(10, 10));
    QApplication::processEvents();
    return menu;
}

QAction& entry(const QMenu& menu, const QString& text) {
    for (auto* const action : menu.actions()) {
        if (action->text() == text)
            return *action;
    }
    throw std::runtime_error("no entry " + text.toStdString());
}

QMenu& openedWithin(const QMenu& menu, const QString& text) {
    return opened(*entry(menu, text).menu());
}

class ProductPickerTest : public SheetTest {
protected:
    ProductPickerTest() { openMain(); }
    ~ProductPickerTest() override {
        while (auto* const popup = QApplication::activePopupWidget())
            popup->close();
    }

    QMenu& openPicker() { return opened(menu()); }
    [[nodiscard]] QMenu& menu() {
        return find<QMenu>(isOpen("newSetSheet") ? sheet("newSetSheet") : openNewSet(), "catalogPickerMenu");
    }

    void pick(QAction& action) {
        action.trigger();
        while (auto* const popup = QApplication::activePopupWidget())
            popup->close();
        settle();
    }

    [[nodiscard]] std::vector<std::string> pickedLines() {
        std::vector<std::string> found;
        const auto names = sheet("newSetSheet").findChildren<QLineEdit*>("itemName");
        const auto colors = sheet("newSetSheet").findChildren<QLineEdit*>("itemColor");
        for (qsizetype i = 0; i < names.size(); ++i)
            found.push_back((names[i]->text() + "/" + colors[i]->text()).toStdString());
        return found;
    }
};

TEST_F(ProductPickerTest, SaysThatTheCatalogueIsEmpty) {
    addShoot("Texel");
    // A brand without products is no entry.
    catalog().addBrand("Leeg");
    const auto& picker = openPicker();
    ASSERT_THAT(texts(picker), ElementsAre("Catalogus is leeg"));
    EXPECT_FALSE(picker.actions().front()->isEnabled());
    EXPECT_EQ(textOf(sheet("newSetSheet"), "catalogPicker"), "Uit catalogus");
}

TEST_F(ProductPickerTest, PutsTheClientsBrandFirstInAnyCaseAndTheGeneralOnesLast) {
    addShoot("Texel", "NIKE");
    addProduct("sok", {}, "Adidas");
    addProduct("shirt", {}, "marvis");
    addProduct("pet", {}, "Nike");
    addProduct("riem");
    catalog().addBrand("Leeg");
    EXPECT_THAT(texts(openPicker()), ElementsAre("Nike >", "Adidas >", "marvis >", "Algemeen >"));
}

TEST_F(ProductPickerTest, OffersEachColourInItsOrderAndNone) {
    addShoot("Texel");
    addProduct("sweater", {"rood", "blauw", "groen"}, "Nike");
    addProduct("riem", {}, "Nike");
    auto& brand = openedWithin(openPicker(), "Nike");
    EXPECT_THAT(texts(brand), ElementsAre("riem", "sweater >"));
    EXPECT_THAT(texts(openedWithin(brand, "sweater")), ElementsAre("rood", "blauw", "groen", "Geen kleur"));
}

TEST_F(ProductPickerTest, FillsTheBlankLineThenAddsLines) {
    addShoot("Texel");
    addProduct("sweater", {"rood", "blauw"}, "Nike");
    addProduct("riem");
    auto& sweater = openedWithin(openedWithin(openPicker(), "Nike"), "sweater");
    pick(entry(sweater, "blauw"));
    EXPECT_THAT(pickedLines(), ElementsAre("sweater/blauw"));
    EXPECT_TRUE(find(sheet("newSetSheet"), "confirmButton").isEnabled());
    pick(entry(openedWithin(openPicker(), "Algemeen"), "riem"));
    EXPECT_THAT(pickedLines(), ElementsAre("sweater/blauw", "riem/"));
    auto& again = openedWithin(openedWithin(openPicker(), "Nike"), "sweater");
    pick(entry(again, "Geen kleur"));
    EXPECT_THAT(pickedLines(), ElementsAre("sweater/blauw", "riem/", "sweater/"));
    click(sheet("newSetSheet"), "confirmButton");
    ASSERT_THAT(shoot().sets.front().items, SizeIs(3));
    EXPECT_EQ(shoot().sets.front().items[0].color, "blauw");
}

TEST_F(ProductPickerTest, TakesNamesToTheByteHoweverTheyLookInAMenu) {
    addShoot("Texel");
    addProduct("jas & broek\t\xE2\x80\xAE", {"rood & wit"}, "H&M");
    auto& picker = openPicker();
    EXPECT_THAT(texts(picker), ElementsAre("H&&M >"));
    auto& brand = opened(*picker.actions().front()->menu());
    auto& product = opened(*brand.actions().front()->menu());
    EXPECT_EQ(product.actions().front()->text(), "rood && wit");
    pick(*product.actions().front());
    click(sheet("newSetSheet"), "confirmButton");
    ASSERT_THAT(shoot().sets.front().items, SizeIs(1));
    EXPECT_EQ(shoot().sets.front().items[0].name, "jas & broek\t\xE2\x80\xAE");
    EXPECT_EQ(shoot().sets.front().items[0].color, "rood & wit");
}

TEST_F(ProductPickerTest, ShowsTheCatalogueAsItIsAtEachOpening) {
    addShoot("Texel");
    addProduct("riem");
    EXPECT_THAT(texts(openedWithin(openPicker(), "Algemeen")), ElementsAre("riem"));
    menu().close();
    addProduct("pet");
    addProduct("sok", {}, "Nike");
    EXPECT_THAT(texts(openPicker()), ElementsAre("Nike >", "Algemeen >"));
    EXPECT_THAT(texts(openedWithin(menu(), "Algemeen")), ElementsAre("pet", "riem"));
}

TEST_F(ProductPickerTest, IsWorkedWithKeysAlone) {
    addShoot("Texel");
    addProduct("riem");
    addProduct("sweater", {"rood", "blauw"}, "Nike");
    auto& picker = find(openNewSet(), "catalogPicker");
    picker.setFocus();
    QTimer::singleShot(0, &picker, [] {
        for (const auto key : {Qt::Key_Down, Qt::Key_Right, Qt::Key_Right, Qt::Key_Down, Qt::Key_Return})
            QTest::keyClick(QApplication::activePopupWidget(), key);
    });
    QTest::keyClick(&picker, Qt::Key_Space);
    settle();
    EXPECT_THAT(pickedLines(), ElementsAre("sweater/blauw"));
}

TEST_F(ProductPickerTest, MakesOnlyTheMenusThatAreLookedInto) {
    addShoot("Texel");
    std::vector<Product> all;
    for (int i = 0; i < 5'000; ++i)
        all.push_back(
            Product::make("product " + std::to_string(i), {"rood"}, "Merk " + std::to_string(i % 2)));
    catalog().addImported({std::move(all), {}, {}});
    // However often.
    for (int times = 0; times < 3; ++times) {
        auto& picker = openPicker();
        EXPECT_EQ(picker.findChildren<QMenu*>().size(), 2);
        EXPECT_EQ(opened(*picker.actions().front()->menu()).actions().size(), 2'500);
        EXPECT_EQ(picker.findChildren<QMenu*>().size(), 2 + 2'500);
        while (auto* const popup = QApplication::activePopupWidget())
            popup->close();
        settle();
    }
}

} // namespace
} // namespace vantor::testing
