#include "tests/support/lone_stores.h"
#include "view/brand_choice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
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

TEST_F(BrandChoiceTest, OrdersBrandsByNameWithoutAClient) {
    m_catalog.setBrands({"Nike", "adidas", "Marvis"});
    EXPECT_THAT(orderedBrands(m_catalog, ""), ElementsAre("adidas", "Marvis", "Nike"));
    EXPECT_THAT(orderedBrands(m_catalog, "Zeeman"), ElementsAre("adidas", "Marvis", "Nike"));
}

TEST_F(BrandChoiceTest, PutsTheClientsBrandFirstInWhateverCaseItIsWritten) {
    m_catalog.setBrands({"Nike", "adidas", "Marvis", "Élan"});
    EXPECT_THAT(orderedBrands(m_catalog, "nike"), ElementsAre("Nike", "adidas", "Élan", "Marvis"));
    EXPECT_THAT(orderedBrands(m_catalog, "ÉLAN"), ElementsAre("Élan", "adidas", "Marvis", "Nike"));
    EXPECT_THAT(orderedBrands(m_catalog, "adidas"), ElementsAre("adidas", "Élan", "Marvis", "Nike"));
}

TEST_F(BrandChoiceTest, MovesOnlyTheFirstOfTwoSpellings) {
    m_catalog.setBrands({"Anna", "nike", "NIKE"});
    const auto brands = m_catalog.allBrandNames();
    const auto ordered = orderedBrands(m_catalog, "Nike");
    EXPECT_THAT(ordered, ElementsAre(brands[1], "Anna", brands[2]));
}

TEST_F(BrandChoiceTest, AClientOfSpacesIsNoBrand) {
    m_catalog.setBrands({"Nike"});
    EXPECT_EQ(brandOfClient(m_catalog, " nike "), "");
    EXPECT_EQ(brandOfClient(m_catalog, ""), "");
}

TEST_F(BrandChoiceTest, OpensTheCatalogueOnTheClientsBrandInItsOwnSpelling) {
    setProducts({{"cap", "Mr Marvis"}});
    EXPECT_EQ(brandOfClient(m_catalog, "mr marvis"), "Mr Marvis");
    EXPECT_EQ(brandOfClient(m_catalog, "Marvis"), "");
}

TEST_F(BrandChoiceTest, GroupsProductsByBrandInTheCataloguesOrder) {
    m_catalog.setBrands({"Zeeman", "Empty"});
    setProducts({{"a", "Nike"}, {"b", "Zeeman"}, {"c", "Nike"}, {"d", "Marvis"}});
    EXPECT_THAT(groups(""), ElementsAre("Marvis: d", "Nike: a c", "Zeeman: b"));
}

TEST_F(BrandChoiceTest, PutsProductsWithoutABrandInALastGroup) {
    setProducts({{"a", ""}, {"b", "Nike"}, {"c", ""}});
    EXPECT_THAT(groups(""), ElementsAre("Nike: b", ": a c"));
}

TEST_F(BrandChoiceTest, GroupsTheClientsBrandFirst) {
    setProducts({{"a", "Adidas"}, {"b", "Nike"}, {"c", ""}});
    EXPECT_THAT(groups("NIKE"), ElementsAre("Nike: b", "Adidas: a", ": c"));
}

TEST_F(BrandChoiceTest, KeepsBrandsThatDifferInCaseApart) {
    setProducts({{"a", "Nike"}, {"b", "nike"}});
    EXPECT_THAT(groups(""), ::testing::UnorderedElementsAre("Nike: a", "nike: b"));
}

TEST_F(BrandChoiceTest, HasNoGroupsWithoutProducts) {
    m_catalog.setBrands({"Nike"});
    EXPECT_THAT(groups("Nike"), IsEmpty());
}

TEST_F(BrandChoiceTest, ListsEveryProductUnderAllBrands) {
    setProducts({{"a", "Nike"}, {"b", ""}, {"c", "Marvis"}});
    EXPECT_THAT(filtered(BrandFilter::all()), ElementsAre("a", "b", "c"));
}

TEST_F(BrandChoiceTest, ListsProductsWithoutABrandUnderGeneral) {
    setProducts({{"a", "Nike"}, {"b", ""}, {"c", " "}});
    EXPECT_THAT(filtered(BrandFilter::general()), ElementsAre("b"));
}

TEST_F(BrandChoiceTest, ListsABrandsProductsToTheLetter) {
    setProducts({{"a", "Nike"}, {"b", "nike"}, {"c", "Nike "}});
    EXPECT_THAT(filtered(BrandFilter::brand("Nike")), ElementsAre("a"));
    EXPECT_THAT(filtered(BrandFilter::brand("NIKE")), IsEmpty());
}

TEST_F(BrandChoiceTest, ABrandThatIsCalledLikeTheMarkForAllIsABrand) {
    setProducts({{"a", "__alle__"}, {"b", ""}});
    EXPECT_THAT(filtered(BrandFilter::brand("__alle__")), ElementsAre("a"));
}

TEST(BrandFilter, NewProductsAreGeneralUnlessABrandIsChosen) {
    EXPECT_EQ(BrandFilter::all().brandForNew(), "");
    EXPECT_EQ(BrandFilter::general().brandForNew(), "");
    EXPECT_EQ(BrandFilter::brand("Nike").brandForNew(), "Nike");
}

TEST(BrandFilter, OnlyANamedBrandCanBeDeleted) {
    EXPECT_FALSE(BrandFilter::all().isNamed());
    EXPECT_FALSE(BrandFilter::general().isNamed());
    EXPECT_FALSE(BrandFilter::brand("").isNamed());
    EXPECT_TRUE(BrandFilter::brand("Nike").isNamed());
}

TEST(BrandFilter, AllAndGeneralDiffer) {
    EXPECT_NE(BrandFilter::all(), BrandFilter::general());
    EXPECT_EQ(BrandFilter::brand(""), BrandFilter::general());
    EXPECT_TRUE(BrandFilter::all().isAll());
    EXPECT_FALSE(BrandFilter::general().isAll());
}

} // namespace
} // namespace vantor
