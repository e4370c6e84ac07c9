#include "tests/ui/ui_fixture.h"

#include <QMenu>
#include <QTimer>
#include <initializer_list>

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

class ProductPickerTest : public UiTest {
protected:
    ProductPickerTest() {
        openMain();
        addShoot("Texel", "NIKE");
    }
    ~ProductPickerTest() override { closeMenus(); }

    static void closeMenus() {
        while (auto* const popup = QApplication::activePopupWidget())
            popup->close();
        settle();
    }
    [[nodiscard]] QWidget& form() {
        return isOpen("newSetSheet") ? sheet("newSetSheet") : openWindow("newSetSheet");
    }
    QMenu& openPicker() { return opened(find<QMenu>(form(), "catalogPickerMenu")); }

    // By the entries that lead there.
    void pick(std::initializer_list<const char*> path) {
        QMenu* menu = &openPicker();
        for (const auto* const text : path) {
            auto& chosen = entry(*menu, text);
            if (chosen.menu() == nullptr)
                chosen.trigger();
            else
                menu = &opened(*chosen.menu());
        }
        closeMenus();
    }

    [[nodiscard]] std::vector<std::string> pickedLines() {
        auto lines = textsOf(form(), "itemName");
        const auto colors = textsOf(form(), "itemColor");
        for (std::size_t i = 0; i < lines.size(); ++i)
            lines[i] += "/" + colors.at(i);
        return lines;
    }
};

TEST_F(ProductPickerTest, ShowsTheCatalogueAsItIsAtEachOpening) {
    // A brand without products is no entry.
    catalog().addBrand("Leeg");
    const auto& picker = openPicker();
    EXPECT_THAT(texts(picker), ElementsAre("Catalogus is leeg"));
    EXPECT_FALSE(picker.actions().front()->isEnabled());
    closeMenus();
    addProduct("riem");
    EXPECT_THAT(texts(opened(*entry(openPicker(), "Algemeen").menu())), ElementsAre("riem"));
    closeMenus();
    addProduct("sok", {}, "Adidas");
    addProduct("shirt", {}, "marvis");
    addProduct("pet");
    addProduct("sweater", {"rood", "blauw", "groen"}, "Nike");
    addProduct("cap", {}, "Nike");
    EXPECT_THAT(texts(openPicker()), ElementsAre("Nike >", "Adidas >", "marvis >", "Algemeen >"))
        << "the client's brand first, in any case";
    EXPECT_THAT(texts(opened(*entry(picker, "Algemeen").menu())), ElementsAre("pet", "riem"));
    auto& brand = opened(*entry(picker, "Nike").menu());
    EXPECT_THAT(texts(brand), ElementsAre("cap", "sweater >"));
    EXPECT_THAT(texts(opened(*entry(brand, "sweater").menu())),
                ElementsAre("rood", "blauw", "groen", "Geen kleur"));
}

TEST_F(ProductPickerTest, FillsTheBlankLineThenAddsLines) {
    addProduct("sweater", {"rood", "blauw"}, "Nike");
    addProduct("riem");
    pick({"Nike", "sweater", "blauw"});
    EXPECT_THAT(pickedLines(), ElementsAre("sweater/blauw"));
    EXPECT_TRUE(find(form(), "confirmButton").isEnabled());
    pick({"Algemeen", "riem"});
    pick({"Nike", "sweater", "Geen kleur"});
    EXPECT_THAT(pickedLines(), ElementsAre("sweater/blauw", "riem/", "sweater/"));
}

TEST_F(ProductPickerTest, TakesNamesToTheByteHoweverTheyLookInAMenu) {
    const SetItem item = SetItem::make("jas & broek\t\xE2\x80\xAE", "rood & wit");
    addProduct(item.name, {item.color}, "H&M");
    auto& brand = opened(*entry(openPicker(), "H&&M").menu());
    auto& product = opened(*brand.actions().front()->menu());
    EXPECT_EQ(product.actions().front()->text(), "rood && wit");
    product.actions().front()->trigger();
    closeMenus();
    click(form(), "confirmButton");
    ASSERT_THAT(shoot().sets.front().items, SizeIs(1));
    EXPECT_EQ(shoot().sets.front().items[0].name, item.name);
    EXPECT_EQ(shoot().sets.front().items[0].color, item.color);
}

TEST_F(ProductPickerTest, IsWorkedWithKeysAlone) {
    addProduct("riem");
    addProduct("sweater", {"rood", "blauw"}, "Nike");
    auto& picker = find(form(), "catalogPicker");
    picker.setFocus();
    QTimer::singleShot(0, &picker, [] {
        for (const auto key : {Qt::Key_Down, Qt::Key_Right, Qt::Key_Right, Qt::Key_Down, Qt::Key_Return})
            QTest::keyClick(QApplication::activePopupWidget(), key);
    });
    press(Qt::Key_Space);
    EXPECT_THAT(pickedLines(), ElementsAre("sweater/blauw"));
}

TEST_F(ProductPickerTest, MakesOnlyTheMenusThatAreLookedInto) {
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
        closeMenus();
    }
}

} // namespace
} // namespace vantor::testing
