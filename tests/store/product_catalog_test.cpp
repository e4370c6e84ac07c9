#include "store/product_catalog.h"
#include "tests/store/store_fixture.h"
#include "tests/support/differences.h"
#include "tests/support/generators.h"
#include "tests/support/lone_stores.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <functional>

namespace vantor {
namespace {

using testing::differences;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Change = Aspect;
using Names = std::vector<std::string>;

class ProductCatalogTest : public testing::StoreFixture {
protected:
    ProductCatalogTest() : StoreFixture("/home/anna/.local/share/Vantor/catalog.json") {}

    [[nodiscard]] Names productNames() const {
        Names all;
        for (const auto& product : m_catalog.products())
            all.push_back(product.name);
        return all;
    }
    [[nodiscard]] CatalogData state() const {
        return {m_catalog.products(), m_catalog.clients(), m_catalog.brands()};
    }
    void loadFrom(const std::string& bytes) {
        m_files.files[m_path] = bytes;
        m_catalog.load();
    }
    std::vector<Change> announcedBy(const std::function<void()>& act) {
        std::vector<Change> all;
        const auto listening = m_catalog.willChange().connect([&](Change change) { all.push_back(change); });
        act();
        return all;
    }

    testing::LoneCatalog m_catalog{&m_file};
};

TEST_F(ProductCatalogTest, NamesAreTrimmedSortedWhateverTheCaseAndStayInTheirFirstSpelling) {
    const Names typed{"zeta", "Beta", " \tNike\u00A0 Co ", "alfa", "Ärm", "beta 2"};
    const Names taken{"BETA", "A\u0308RM", "", " \t\u3000"};
    const Names sorted{"alfa", "Ärm", "Beta", "beta 2", "Nike\u00A0 Co", "zeta"};
    for (const auto& name : typed) {
        EXPECT_EQ(savesOf([&] { m_catalog.addClient(name); }), 1U) << name;
        EXPECT_EQ(savesOf([&] { m_catalog.addBrand(name); }), 1U) << name;
    }
    for (const auto& name : taken) {
        EXPECT_EQ(savesOf([&] { m_catalog.addClient(name); }), 0U) << name;
        EXPECT_EQ(savesOf([&] { m_catalog.addBrand(name); }), 0U) << name;
    }
    EXPECT_EQ(m_catalog.clients(), sorted);
    EXPECT_EQ(m_catalog.brands(), sorted);
    EXPECT_EQ(m_catalog.allClientNames(), sorted);
    m_catalog.addBrand("Arm");
    EXPECT_EQ(m_catalog.brands()[1], "Arm") << "an accent tells names apart";
    EXPECT_EQ(m_catalog.clients(), sorted) << "a list of its own";
}

TEST_F(ProductCatalogTest, DeletesEveryEntryOfExactlyThatName) {
    m_catalog.setClients({"Nike", "nike", "Nike", "Puma"});
    EXPECT_EQ(savesOf([&] { m_catalog.deleteClient("Nike"); }), 1U);
    EXPECT_THAT(m_catalog.clients(), ElementsAre("nike", "Puma"));
    m_catalog.deleteClient(m_catalog.clients()[0]);
    EXPECT_THAT(m_catalog.clients(), ElementsAre("Puma"));
    EXPECT_EQ(savesOf([&] { m_catalog.deleteClient("puma"); }), 1U);
    EXPECT_THAT(m_catalog.clients(), ElementsAre("Puma"));
    m_catalog.setBrands({"Puma"});
    m_catalog.addProduct("jeans", {}, "Puma");
    m_catalog.deleteBrand("Puma");
    EXPECT_THAT(m_catalog.brands(), IsEmpty());
    EXPECT_THAT(m_catalog.allBrandNames(), ElementsAre("Puma")) << "products keep it";
    EXPECT_THAT(m_catalog.clients(), ElementsAre("Puma"));
}

TEST_F(ProductCatalogTest, AddingTrimsTheNameOnlyTakesNoEmptyOneAndKeepsThoseOfOneNameInTheirOrder) {
    EXPECT_EQ(savesOf([&] { m_catalog.addProduct(" jeans ", {" red ", ""}, " Nike "); }), 1U);
    for (const auto* name : {"", " ", "\t\u00A0"})
        EXPECT_EQ(savesOf([&] { m_catalog.addProduct(name, {"red"}, "Nike"); }), 0U) << name;
    ASSERT_THAT(productNames(), ElementsAre("jeans"));
    EXPECT_THAT(m_catalog.products()[0].colors, ElementsAre(" red ", ""));
    for (const auto* brand : {"3", "1", "1"})
        m_catalog.addProduct("Tee", {}, brand);
    m_catalog.addProduct("tee", {}, "0");
    m_catalog.addProduct("a", {}, "9");
    Names brands;
    for (const auto& product : m_catalog.products())
        brands.push_back(product.brand);
    EXPECT_THAT(brands, ElementsAre("9", " Nike ", "3", "1", "1", "0"));
    EXPECT_NE(m_catalog.products()[3].id, m_catalog.products()[4].id) << "the same twice";
}

TEST_F(ProductCatalogTest, UpdateTrimsNameAndBrandAndSortsAgainAndNoProductButTheNamedOneChangesOrGoes) {
    m_catalog.addProduct("a", {}, "");
    m_catalog.addProduct("b", {}, "");
    const auto a = m_catalog.products()[0].id;
    EXPECT_EQ(savesOf([&] { m_catalog.updateProduct(Uuid::random(), "b", {}, ""); }), 0U);
    EXPECT_EQ(savesOf([&] { m_catalog.updateProduct(a, " c ", {"red"}, " Nike "); }), 1U);
    EXPECT_THAT(productNames(), ElementsAre("b", "c"));
    EXPECT_EQ(m_catalog.products()[1], (Product{a, "c", {"red"}, "Nike"}));
    m_catalog.updateProduct(a, " ", {}, " ");
    EXPECT_EQ(m_catalog.products()[0], (Product{a, "", {}, ""})) << "an empty name is stored as it is";
    const std::string longName = "a name that is not kept inside the text object itself";
    m_catalog.updateProduct(a, longName, {"red"}, "");
    const auto& own = m_catalog.products()[0];
    m_catalog.updateProduct(a, own.name, own.colors, own.brand);
    EXPECT_EQ(m_catalog.products()[0], (Product{a, longName, {"red"}, ""})) << "from the very product";
    m_catalog.deleteProduct(Uuid::random());
    EXPECT_THAT(productNames(), ElementsAre(longName, "b"));
    EXPECT_EQ(savesOf([&] { m_catalog.deleteProduct(a); }), 1U);
    EXPECT_THAT(productNames(), ElementsAre("b"));
}

TEST_F(ProductCatalogTest, AllBrandNamesAreThoseOfTheListAndOfProductsOnceEach) {
    m_catalog.setBrands({"Marvis"});
    for (const auto* brand : {"Nike", "Marvis", ""})
        m_catalog.addProduct("x", {}, brand);
    EXPECT_THAT(m_catalog.allBrandNames(), ElementsAre("Marvis", "Nike"));
    m_catalog.addProduct("x", {}, "nike");
    m_catalog.addProduct("x", {}, "Nike");
    EXPECT_EQ(m_catalog.allBrandNames().size(), 3U) << "only exact duplicates go";
    EXPECT_EQ(m_catalog.allBrandNames()[0], "Marvis");
}

TEST_F(ProductCatalogTest, CatalogueWithClientsForBrandsIsReadAndABareListOfProductsLeavesTheOtherLists) {
    loadFrom(data("catalog_legacy.json"));
    auto expected = testing::storedCatalog();
    expected.brands.clear();
    EXPECT_EQ(differences(state(), expected), "");
    m_catalog.setClients({"kept"});
    EXPECT_EQ(savesOf([&] { loadFrom(data("catalog_legacy_products.json")); }), 0U);
    EXPECT_EQ(differences(m_catalog.products(), testing::storedCatalog().products), "");
    EXPECT_THAT(m_catalog.clients(), ElementsAre("kept"));
    EXPECT_THAT(m_catalog.brands(), IsEmpty());
    m_catalog.addBrand("Nike");
    EXPECT_THAT(m_files.renames, IsEmpty()) << "an old file is no unreadable one";
    EXPECT_TRUE(saved().starts_with("{\"products\":[{\"id\":")) << "rewritten in today's form";
    EXPECT_EQ(saved().find("client\":"), std::string::npos);
    // Loaded lists stand as they were read.
    loadFrom(R"({"products":[],"clients":["b","A","b"],"brands":["z","y"]})");
    EXPECT_THAT(m_catalog.clients(), ElementsAre("b", "A", "b"));
    EXPECT_THAT(m_catalog.brands(), ElementsAre("z", "y"));
    EXPECT_THAT(m_catalog.allClientNames(), ElementsAre("A", "b", "b"));
}

TEST_F(ProductCatalogTest, UnreadableFileLeavesTheListsAsTheyWereAndIsSetAsideByTheNextChange) {
    loadFrom(data("catalog.json"));
    for (const auto& bad :
         {std::string(), std::string("[1]"), data("shoots.json"), data("catalog.json") + "x",
          data("catalog.json").substr(1), std::string(1'000'000, '['), std::string("{\"products\":[{}]}")}) {
        m_files.files[m_path] = bad;
        EXPECT_THAT(announcedBy([&] { m_catalog.load(); }), IsEmpty());
        EXPECT_EQ(differences(state(), testing::storedCatalog()), "");
    }
    EXPECT_EQ(saves(), 0U);
    m_catalog.set({{}, {"Nike"}, {}});
    m_catalog.addClient("Puma");
    EXPECT_EQ(saved(), R"({"products":[],"clients":["Nike","Puma"],"brands":[]})");
    EXPECT_EQ(m_files.files.at(aside()), "{\"products\":[{}]}");
    EXPECT_EQ(m_files.renames.size(), 1U);
}

TEST_F(ProductCatalogTest, ImportSortsGivesTheDefaultBrandAndNeverUpdatesWhatIsThereInAnyCaseOrBrand) {
    m_catalog.addProduct("Sweater", {"red"}, "Puma");
    const auto* const text = "sweater;blue;Nike\nTee;x;y\nTEE;z;w\nsok\na;b;c;d";
    EXPECT_EQ(savesOf([&] { EXPECT_EQ(m_catalog.importCSV(text, "Nike"), 3); }), 1U) << "one save for all";
    EXPECT_EQ(savesOf([&] { EXPECT_EQ(m_catalog.importCSV(text, "Nike"), 0); }), 1U);
    EXPECT_THAT(productNames(), ElementsAre("a", "sok", "Sweater", "Tee"));
    EXPECT_EQ(m_catalog.products()[0].brand, "c;d");
    EXPECT_EQ(m_catalog.products()[1].brand, "Nike");
    EXPECT_THAT(m_catalog.products()[1].colors, IsEmpty());
    EXPECT_THAT(m_catalog.products()[2].colors, ElementsAre("red"));
    EXPECT_THAT(m_catalog.products()[3].colors, ElementsAre("x"));
    EXPECT_EQ(m_catalog.importCSV("zebra", m_catalog.products()[0].brand), 1);
    EXPECT_EQ(m_catalog.products()[4].brand, "c;d") << "the brand may be a text of the catalogue itself";
}

TEST_F(ProductCatalogTest, ExportsEveryProduct) {
    EXPECT_EQ(m_catalog.exportCSV(), "Naam;Kleuren;Merk");
    m_catalog.addProduct("tee", {}, "Nike");
    m_catalog.addProduct("jeans", {"black", "blue"}, "");
    EXPECT_EQ(m_catalog.exportCSV(), "Naam;Kleuren;Merk\njeans;black, blue;\ntee;;Nike");
}

TEST_F(ProductCatalogTest, AnnouncesEveryChangeBeforeItTakesEffect) {
    m_catalog.addProduct("a", {}, "");
    m_files.files[m_path] = data("catalog.json");
    CatalogData before;
    std::size_t savesBefore = 0;
    const auto listening = m_catalog.willChange().connect([&](Change change) {
        EXPECT_EQ(saves(), savesBefore);
        const auto now = state();
        EXPECT_TRUE(change == Change::Products  ? now.products == before.products
                    : change == Change::Clients ? now.clients == before.clients
                                                : now.brands == before.brands);
    });
    using C = Change;
    const std::vector<std::pair<std::function<void()>, std::vector<C>>> operations{
        {[&] { m_catalog.load(); }, {C::Products, C::Clients, C::Brands}},
        {[&] { m_catalog.addClient("x"); }, {C::Clients}},
        {[&] { m_catalog.addClient("X"); }, {}},
        {[&] { m_catalog.addBrand("x"); }, {C::Brands}},
        {[&] { m_catalog.deleteClient("x"); }, {C::Clients}},
        {[&] { m_catalog.deleteBrand("x"); }, {C::Brands}},
        {[&] { m_catalog.addProduct("x", {}, ""); }, {C::Products}},
        {[&] { m_catalog.updateProduct(m_catalog.products()[0].id, "y", {}, ""); }, {C::Products}},
        {[&] { m_catalog.importCSV("q\nr\ns", ""); }, {C::Products}},
        {[&] { m_catalog.deleteProduct(m_catalog.products()[0].id); }, {C::Products}},
        {[&] { m_catalog.setProducts({}); }, {C::Products}},
        {[&] { m_catalog.setClients({"z"}); }, {C::Clients}},
        {[&] { m_catalog.setBrands({"z"}); }, {C::Brands}},
    };
    for (const auto& [operation, announced] : operations) {
        before = state();
        savesBefore = saves();
        EXPECT_EQ(announcedBy(operation), announced);
    }
}

TEST(UniqueSortedNames, DropsExactDuplicatesOnly) {
    EXPECT_THAT(uniqueSortedNames({"b", "A", "b", "a", "A"}), ElementsAre("A", "a", "b"));
    EXPECT_THAT(uniqueSortedNames({}), IsEmpty());
    EXPECT_THAT(uniqueSortedNames({"zon", "Ärm", "appel"}), ElementsAre("appel", "Ärm", "zon"));
}

RC_GTEST_PROP(ProductCatalogProperty, ImportingTwiceAddsNothingTheSecondTime, ()) {
    const auto text = *testing::text() + "\n" + *testing::text() + ";a;b\n" + *testing::text();
    testing::LoneCatalog catalog;
    const auto count = catalog.importCSV(text, "Nike");
    RC_ASSERT(catalog.products().size() == static_cast<std::size_t>(count));
    RC_ASSERT(catalog.importCSV(text, "Nike") == 0);
}

} // namespace
} // namespace vantor
