#include "tests/ui/ui_fixture.h"

#include <tuple>

namespace vantor::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* kNone = "Nog geen producten. Voeg er hieronder een toe of importeer een CSV.";
constexpr const char* kNoneOfBrand = "Geen producten voor dit merk.";

class CatalogSheetTest : public UiTest {
protected:
    CatalogSheetTest() { openMain(); }

    void addThree() {
        addProduct("jas", {"rood", "blauw"}, "Nike");
        addProduct("broek", {}, "Zara");
        addProduct("riem");
    }
    static QComboBox& picker(const QWidget& sheet) { return find<QComboBox>(sheet, "brandPicker"); }
    static std::vector<std::string> names(const QWidget& sheet) { return textsOf(sheet, "productName"); }
    static void addTyped(const QWidget& sheet, const QString& name, const QString& colors) {
        type(sheet, "newProductNameField", name);
        type(sheet, "newProductColorsField", colors);
        click(sheet, "addProductButton");
    }
    [[nodiscard]] const Product& product(const std::string& name) {
        return *std::ranges::find(catalog().products(), name, &Product::name);
    }
};

TEST_F(CatalogSheetTest, OpensOnTheBrandOfTheShootsClientOrOnAll) {
    addThree();
    for (const auto& [client, brand, products] :
         {std::tuple("", "Alle merken", 3U), std::tuple("Wehkamp", "Alle merken", 3U),
          std::tuple("nIKE", "Nike", 1U)}) {
        if (*client != '\0')
            addShoot("Texel", client);
        const auto& sheet = openWindow("catalogSheet");
        EXPECT_EQ(picker(sheet).currentText(), brand);
        EXPECT_THAT(names(sheet), SizeIs(products));
        closeSheets();
    }
}

TEST_F(CatalogSheetTest, FiltersByAllGeneralAndOneBrand) {
    addThree();
    catalog().addBrand("adidas");
    const auto& sheet = openWindow("catalogSheet");
    EXPECT_EQ(entries(picker(sheet)), QStringList({"Alle merken", "Algemeen", "adidas", "Nike", "Zara"}));
    EXPECT_THAT(textsOf(sheet, "productColors"), ElementsAre("rood, blauw"));
    using Names = std::vector<std::string>;
    for (const auto& [brand, products, canBeDeleted] :
         {std::tuple("Alle merken", Names{"broek", "jas", "riem"}, false),
          std::tuple("Algemeen", Names{"riem"}, false), std::tuple("Zara", Names{"broek"}, true),
          std::tuple("adidas", Names{}, true)}) {
        SCOPED_TRACE(brand);
        choose(picker(sheet), brand);
        EXPECT_EQ(names(sheet), products);
        EXPECT_EQ(isShown(sheet, "deleteBrandButton"), canBeDeleted);
        EXPECT_EQ(isShown(sheet, "noProducts"), products.empty());
    }
    EXPECT_EQ(textOf(sheet, "noProducts"), kNoneOfBrand);
}

TEST_F(CatalogSheetTest, SaysWhenThereAreNoProductsAtAll) {
    catalog().addBrand("Nike");
    const auto& sheet = openWindow("catalogSheet");
    choose(picker(sheet), "Nike");
    EXPECT_EQ(textOf(sheet, "noProducts"), kNone);
    addTyped(sheet, "jas", "");
    EXPECT_FALSE(isShown(sheet, "noProducts"));
    click(*allVisible<QAbstractButton>(sheet, "deleteProductButton").at(0));
    EXPECT_EQ(textOf(sheet, "noProducts"), kNone);
    EXPECT_TRUE(isShown(sheet, "noProducts"));
}

TEST_F(CatalogSheetTest, AddsABrandByButtonOrReturnAndChoosesItInItsSpelling) {
    addProduct("jas", {}, "Nike");
    const auto& sheet = openWindow("catalogSheet");
    type(sheet, "newBrandField", " Nike \t");
    click(sheet, "addBrandButton");
    EXPECT_THAT(catalog().brands(), ElementsAre("Nike"));
    EXPECT_EQ(picker(sheet).currentText(), "Nike");
    EXPECT_EQ(textOf(sheet, "newBrandField"), "");
    // A blank one is none.
    for (const auto* const name : {"Adidas", "", "  "}) {
        type(sheet, "newBrandField", name);
        press(Qt::Key_Return);
        EXPECT_THAT(catalog().brands(), ElementsAre("Adidas", "Nike"));
        EXPECT_EQ(picker(sheet).currentText(), "Adidas");
    }
    // One in another case is chosen, and not added.
    type(sheet, "newBrandField", "nike");
    press(Qt::Key_Return);
    EXPECT_THAT(catalog().brands(), ElementsAre("Adidas", "Nike"));
    EXPECT_THAT(names(sheet), IsEmpty());
    EXPECT_EQ(textOf(sheet, "noProducts"), kNoneOfBrand);
    EXPECT_TRUE(isShown(sheet, "deleteBrandButton"));
    // What is added now carries the spelling, and makes it a brand of its own.
    addTyped(sheet, "pet", "");
    EXPECT_EQ(product("pet").brand, "nike");
    EXPECT_THAT(names(sheet), ElementsAre("pet"));
    EXPECT_EQ(picker(sheet).currentText(), "nike");
}

TEST_F(CatalogSheetTest, DeletesABrandAtOnceAndKeepsItsProducts) {
    catalog().addBrand("Nike");
    catalog().addBrand("Leeg");
    addThree();
    const auto& sheet = openWindow("catalogSheet");
    choose(picker(sheet), "Nike");
    click(sheet, "deleteBrandButton");
    EXPECT_THAT(catalog().brands(), ElementsAre("Leeg"));
    EXPECT_EQ(picker(sheet).currentText(), "Alle merken");
    EXPECT_EQ(product("jas").brand, "Nike");
    EXPECT_EQ(entries(picker(sheet)), QStringList({"Alle merken", "Algemeen", "Leeg", "Nike", "Zara"}));
    choose(picker(sheet), "Leeg");
    click(sheet, "deleteBrandButton");
    EXPECT_THAT(catalog().brands(), IsEmpty());
    EXPECT_EQ(entries(picker(sheet)), QStringList({"Alle merken", "Algemeen", "Nike", "Zara"}));
    EXPECT_FALSE(isShown(sheet, "deleteBrandButton"));
}

TEST_F(CatalogSheetTest, AddsAProductOfMoreThanBlanksToTheChosenBrand) {
    catalog().addBrand("Nike");
    const auto& sheet = openWindow("catalogSheet");
    for (const auto* const name : {"", " \t"}) {
        type(sheet, "newProductNameField", name);
        EXPECT_FALSE(find(sheet, "addProductButton").isEnabled());
        press(Qt::Key_Return);
        EXPECT_THAT(catalog().products(), IsEmpty());
    }
    addTyped(sheet, "algemeen 1", "red, , blue,");
    EXPECT_THAT(product("algemeen 1").colors, ElementsAre("red", "blue"));
    EXPECT_EQ(product("algemeen 1").brand, "");
    EXPECT_EQ(textOf(sheet, "newProductNameField"), "");
    EXPECT_EQ(textOf(sheet, "newProductColorsField"), "");
    EXPECT_EQ(&focused(), &find(sheet, "newProductNameField"));
    choose(picker(sheet), "Algemeen");
    // Return adds it from either field.
    type(sheet, "newProductNameField", "algemeen 2");
    press(Qt::Key_Return);
    EXPECT_THAT(names(sheet), ElementsAre("algemeen 1", "algemeen 2"));
    choose(picker(sheet), "Nike");
    type(sheet, "newProductNameField", " jas ");
    type(sheet, "newProductColorsField", " ");
    press(Qt::Key_Return);
    EXPECT_THAT(names(sheet), ElementsAre("jas"));
    EXPECT_EQ(product("jas").brand, "Nike");
    EXPECT_THAT(product("jas").colors, IsEmpty());
}

TEST_F(CatalogSheetTest, DeletesProductsAtOnceAndOnlyThoseThatAreListed) {
    for (const auto* const name : {"a1", "b1", "b2", "b3", "b4", "b5"})
        addProduct(name, {}, std::string("b1 b3 b5").find(name) != std::string::npos ? "Nike" : "Ander");
    auto& sheet = openWindow("catalogSheet");
    choose(picker(sheet), "Nike");
    const auto* const button = allVisible<QAbstractButton>(sheet, "deleteProductButton").at(2);
    // One of them, however impatient the click.
    doubleClick(sheet, button->mapTo(&sheet, button->rect().center()));
    EXPECT_THAT(names(sheet), ElementsAre("b1", "b3"));
    EXPECT_EQ(QApplication::activeModalWidget(), &sheet);
    auto& list = find(sheet, "productList");
    list.setFocus(Qt::TabFocusReason);
    // Both keys are there before the window comes to redraw.
    QTest::keyClick(&list, Qt::Key_Delete);
    QTest::keyClick(&list, Qt::Key_Delete);
    settle();
    choose(picker(sheet), "Alle merken");
    EXPECT_THAT(names(sheet), ElementsAre("a1", "b2", "b4"));
}

TEST_F(CatalogSheetTest, ExportsAllUnderItsName) {
    addThree();
    const auto& sheet = openWindow("catalogSheet");
    m_dialogs.whereToSave = "/tmp/uit.csv";
    choose(picker(sheet), "Zara");
    click(sheet, "exportButton");
    EXPECT_THAT(m_dialogs.proposedNames, ElementsAre("productcatalogus.csv"));
    EXPECT_THAT(m_dialogs.savedTypes, ElementsAre(ElementsAre("csv")));
    EXPECT_EQ(m_files.files.at("/tmp/uit.csv"), catalog().exportCSV());
    m_files.failsToReplace = true;
    click(sheet, "exportButton");
    EXPECT_TRUE(isOpen("catalogSheet"));
}

TEST_F(CatalogSheetTest, ShowsAProductAndSavesItByButtonOrReturn) {
    catalog().addBrand("adidas");
    addThree();
    const auto& below = openWindow("catalogSheet");
    choose(picker(below), "Nike");
    const auto id = product("jas").id;
    const auto& sheet = openWindow("editProductSheet");
    EXPECT_EQ(textOf(sheet, "productNameField"), "jas");
    EXPECT_EQ(textOf(sheet, "productColorsField"), "rood, blauw");
    auto& brand = find<QComboBox>(sheet, "productBrandPicker");
    EXPECT_EQ(entries(brand), QStringList({"Algemeen (alle merken)", "adidas", "Nike", "Zara"}));
    EXPECT_EQ(brand.currentText(), "Nike");
    type(sheet, "productNameField", " mantel ");
    type(sheet, "productColorsField", "red, , blue");
    choose(brand, "Zara");
    click(sheet, "confirmButton");
    EXPECT_FALSE(isOpen("editProductSheet"));
    EXPECT_EQ(product("mantel").id, id);
    EXPECT_THAT(product("mantel").colors, ElementsAre("red", "blue"));
    EXPECT_EQ(product("mantel").brand, "Zara");
    // Its brand is gone with its last product, but what is chosen stays chosen.
    EXPECT_EQ(textOf(below, "noProducts"), kNoneOfBrand);
    choose(picker(below), "Zara");
    EXPECT_THAT(names(below), ElementsAre("broek", "mantel"));

    const auto& again = openWindow("editProductSheet");
    choose(find<QComboBox>(again, "productBrandPicker"), "Algemeen (alle merken)");
    type(again, "productColorsField", "");
    press(Qt::Key_Return);
    EXPECT_FALSE(isOpen("editProductSheet"));
    EXPECT_TRUE(isOpen("catalogSheet"));
    EXPECT_EQ(product("broek").brand, "");
    EXPECT_THAT(product("broek").colors, IsEmpty());
}

TEST_F(CatalogSheetTest, AnEditNeedsANameAndCancellingChangesNothing) {
    addThree();
    const auto& sheet = openWindow("editProductSheet");
    type(sheet, "productNameField", "  ");
    EXPECT_FALSE(find(sheet, "confirmButton").isEnabled());
    press(Qt::Key_Return);
    type(sheet, "productNameField", "x");
    EXPECT_TRUE(find(sheet, "confirmButton").isEnabled());
    click(sheet, "cancelButton");
    EXPECT_FALSE(isOpen("editProductSheet"));
    EXPECT_THAT(names(this->sheet("catalogSheet")), ElementsAre("broek", "jas", "riem"));
}

TEST_F(CatalogSheetTest, ShowsTenThousandProductsWithFewRows) {
    std::vector<Product> all;
    for (int i = 0; i < 10'000; ++i)
        all.push_back(Product::make("product " + std::to_string(100'000 + i), {"rood", "blauw"},
                                    "Merk " + std::to_string(i % 200)));
    catalog().addImported({std::move(all), {}, {}});
    auto& shown = openWindow("catalogSheet");
    auto& list = find<ui::RecyclingList>(shown, "productList");
    EXPECT_EQ(list.rowCount(), 10'000);
    click(*allVisible<QAbstractButton>(shown, "deleteProductButton").at(2));
    EXPECT_EQ(list.rowCount(), 9'999);
    list.setFocus(Qt::TabFocusReason);
    press(Qt::Key_End);
    EXPECT_EQ(list.currentRow(), 9'998);
    EXPECT_EQ(names(shown).back(), "product 109999");
    EXPECT_LE(list.findChildren<QWidget*>("productRow").size(), 40);
}

} // namespace
} // namespace vantor::testing
