#include "tests/support/lone_stores.h"
#include "view/brand_choice.h"

#include <gmock/gmock.h>

#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace vantor {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class BrandChoiceTest : public ::testing::Test {
protected:
    void setProducts(const std::vector<std::pair<std::string, std::string>>& namesAndBrands) {
        std::vector<Product> products;
        for (const auto& [name, brand] : namesAndBrands)
            products.push_back(Product::make(name, {}, brand));
        m_catalog.setProducts(std::move(products));
    }
    // "brand: product, product" a group.
    [[nodiscard]] std::vector<std::string> groups(const std::string& client) const {
        std::vector<std::string> all;
        for (const auto& group : productGroups(m_catalog, client)) {
            std::string line = group.brand + ":";
            for (const auto place : group.products)
                line += " " + m_catalog.products()[place].name;
            all.push_back(line);
        }
        return all;
    }
    [[nodiscard]] std::vector<std::string> filtered(const BrandFilter& filter) const {
        std::vector<std::string> names;
        for (const auto place : filteredProducts(m_catalog.products(), filter))
            names.push_back(m_catalog.products()[place].name);
        return names;
    }

    testing::LoneCatalog m_catalog;
};

TEST_F(BrandChoiceTest, PutsTheClientsBrandFirstInWhateverCaseItIsWritten) {
    m_catalog.setBrands({"Nike", "adidas", "Marvis", "Élan"});
    for (const auto* const nobody : {"", "Zeeman"})
        EXPECT_THAT(orderedBrands(m_catalog, nobody), ElementsAre("adidas", "Élan", "Marvis", "Nike"));
    EXPECT_THAT(orderedBrands(m_catalog, "nike"), ElementsAre("Nike", "adidas", "Élan", "Marvis"));
    EXPECT_THAT(orderedBrands(m_catalog, "ÉLAN"), ElementsAre("Élan", "adidas", "Marvis", "Nike"));
    EXPECT_THAT(orderedBrands(m_catalog, "adidas"), ElementsAre("adidas", "Élan", "Marvis", "Nike"));
    // Only the first of two spellings.
    m_catalog.setBrands({"Anna", "nike", "NIKE"});
    const auto brands = m_catalog.allBrandNames();
    EXPECT_THAT(orderedBrands(m_catalog, "Nike"), ElementsAre(brands[1], "Anna", brands[2]));
}

TEST_F(BrandChoiceTest, OpensTheCatalogueOnTheClientsBrandInItsOwnSpelling) {
    setProducts({{"cap", "Mr Marvis"}});
    EXPECT_EQ(brandOfClient(m_catalog, "mr marvis"), "Mr Marvis");
    for (const auto* const none : {"Marvis", " mr marvis ", ""})
        EXPECT_EQ(brandOfClient(m_catalog, none), "");
}

TEST_F(BrandChoiceTest, GroupsProductsByBrandInTheCataloguesOrderAndThoseWithoutOneLast) {
    m_catalog.setBrands({"Zeeman", "Empty"});
    EXPECT_THAT(groups("Zeeman"), IsEmpty());
    setProducts({{"a", "Nike"}, {"b", "Zeeman"}, {"c", "Nike"}, {"d", "Marvis"}, {"e", ""}, {"f", ""}});
    EXPECT_THAT(groups(""), ElementsAre("Marvis: d", "Nike: a c", "Zeeman: b", ": e f"));
    EXPECT_THAT(groups("NIKE"), ElementsAre("Nike: a c", "Marvis: d", "Zeeman: b", ": e f"));
    setProducts({{"a", "Nike"}, {"b", "nike"}});
    EXPECT_THAT(groups(""), ::testing::UnorderedElementsAre("Nike: a", "nike: b"));
}

TEST_F(BrandChoiceTest, ListsTheProductsOfAFilterToTheLetter) {
    setProducts({{"a", "Nike"}, {"b", ""}, {"c", " "}, {"d", "nike"}, {"e", "Nike "}, {"f", "__alle__"}});
    EXPECT_THAT(filtered(BrandFilter::all()), ElementsAre("a", "b", "c", "d", "e", "f"));
    EXPECT_THAT(filtered(BrandFilter::general()), ElementsAre("b"));
    EXPECT_THAT(filtered(BrandFilter::brand("Nike")), ElementsAre("a"));
    EXPECT_THAT(filtered(BrandFilter::brand("NIKE")), IsEmpty());
    EXPECT_THAT(filtered(BrandFilter::brand("__alle__")), ElementsAre("f")) << "like the mark for all";
}

TEST(BrandFilter, IsAllOrGeneralOrANamedBrand) {
    using Case = std::tuple<BrandFilter, const char*, bool, bool>;
    for (const auto& [filter, brandForNew, isNamed, isAll] :
         {Case{BrandFilter::all(), "", false, true}, Case{BrandFilter::general(), "", false, false},
          Case{BrandFilter::brand(""), "", false, false},
          Case{BrandFilter::brand("Nike"), "Nike", true, false}}) {
        SCOPED_TRACE(brandForNew);
        EXPECT_EQ(filter.brandForNew(), brandForNew);
        EXPECT_EQ(filter.isNamed(), isNamed);
        EXPECT_EQ(filter.isAll(), isAll);
    }
    EXPECT_NE(BrandFilter::all(), BrandFilter::general());
    EXPECT_EQ(BrandFilter::brand(""), BrandFilter::general());
}

} // namespace
} // namespace vantor
