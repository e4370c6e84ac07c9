#include "model/product.h"
#include "tests/support/generators.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace vantor {
namespace {

TEST(Product, IsMadeWithAFreshIdAndItsTextsAsGiven) {
    const auto product = Product::make(" jeans ", {"black", "", "black"}, " Nike");
    EXPECT_EQ(product.name, " jeans ");
    EXPECT_EQ(product.colors, (std::vector<std::string>{"black", "", "black"}));
    EXPECT_EQ(product.brand, " Nike");
    EXPECT_NE(product.id, Uuid());
    EXPECT_NE(product.id, Product::make(" jeans ", {"black", "", "black"}, " Nike").id);
}

RC_GTEST_PROP(ProductProperty, EqualProductsHashAlikeAndOthersMostlyDoNot, ()) {
    const auto a = *testing::generated<Product>();
    auto b = a;
    RC_ASSERT(std::hash<Product>{}(a) == std::hash<Product>{}(b));
    b.brand += "x";
    RC_ASSERT(std::hash<Product>{}(a) != std::hash<Product>{}(b));
    b = a;
    b.colors.emplace_back("x");
    RC_ASSERT(std::hash<Product>{}(a) != std::hash<Product>{}(b));
    b = a;
    b.name += "x";
    RC_ASSERT(std::hash<Product>{}(a) != std::hash<Product>{}(b));
}

} // namespace
} // namespace vantor
