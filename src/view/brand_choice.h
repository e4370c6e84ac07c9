// Which brand a list shows, or puts first.
#pragma once

#include "store/product_catalog.h"

#include <compare>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantor {

// The catalogue's filter: every product, those without a brand, or those of one brand to the letter.
class BrandFilter {
public:
    [[nodiscard]] static BrandFilter all() { return {}; }
    [[nodiscard]] static BrandFilter general() { return BrandFilter(std::string()); }
    // An empty name is general().
    [[nodiscard]] static BrandFilter brand(std::string name) { return BrandFilter(std::move(name)); }

    [[nodiscard]] bool isAll() const { return !m_brand; }
    [[nodiscard]] bool isNamed() const { return m_brand && !m_brand->empty(); }
    [[nodiscard]] bool admits(const Product& product) const { return !m_brand || product.brand == *m_brand; }

    // The brand for what is added while this filter is chosen: none under all() and general().
    [[nodiscard]] std::string brandForNew() const { return m_brand.value_or(std::string()); }

    friend bool operator==(const BrandFilter&, const BrandFilter&) = default;

private:
    BrandFilter() = default;
    explicit BrandFilter(std::string name) : m_brand(std::move(name)) {}

    std::optional<std::string> m_brand;
};

// The places of the admitted products, in the catalogue's order.
[[nodiscard]] std::vector<std::size_t> filteredProducts(const std::vector<Product>& products,
                                                        const BrandFilter& filter);

// The first of the catalogue's brands that equals the client ignoring case; empty when none does.
[[nodiscard]] std::string brandOfClient(const ProductCatalog& catalog, std::string_view client);

// The catalogue's brands in their order, but the client's own first.
[[nodiscard]] std::vector<std::string> orderedBrands(const ProductCatalog& catalog, std::string_view client);

// The products of the picker's submenus: one group a brand that has products, then those without a brand.
struct ProductGroup {
    std::string brand;
    // Places in the catalogue, in its order.
    std::vector<std::size_t> products;
};
[[nodiscard]] std::vector<ProductGroup> productGroups(const ProductCatalog& catalog, std::string_view client);

} // namespace vantor
