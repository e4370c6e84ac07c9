#include "view/brand_choice.h"

#include "base/text.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace vantor {
namespace {

auto findClient(const std::vector<std::string>& brands, std::string_view client) {
    const auto folded = caseFolded(client);
    return std::ranges::find_if(brands, [&](const auto& brand) { return caseFolded(brand) == folded; });
}

} // namespace

std::vector<std::size_t> filteredProducts(const std::vector<Product>& products, const BrandFilter& filter) {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < products.size(); ++i) {
        if (filter.admits(products[i]))
            places.push_back(i);
    }
    return places;
}

std::string brandOfClient(const ProductCatalog& catalog, std::string_view client) {
    const auto brands = catalog.allBrandNames();
    const auto found = findClient(brands, client);
    return found != brands.end() ? *found : std::string();
}

std::vector<std::string> orderedBrands(const ProductCatalog& catalog, std::string_view client) {
    auto brands = catalog.allBrandNames();
    const auto place = findClient(brands, client) - brands.cbegin();
    if (static_cast<std::size_t>(place) < brands.size())
        std::rotate(brands.begin(), brands.begin() + place, brands.begin() + place + 1);
    return brands;
}

std::vector<ProductGroup> productGroups(const ProductCatalog& catalog, std::string_view client) {
    std::unordered_map<std::string_view, std::vector<std::size_t>> byBrand;
    for (std::size_t i = 0; i < catalog.products().size(); ++i)
        byBrand[catalog.products()[i].brand].push_back(i);
    std::vector<ProductGroup> groups;
    auto names = orderedBrands(catalog, client);
    names.emplace_back();
    for (auto& name : names) {
        if (auto products = byBrand.extract(name))
            groups.push_back({std::move(name), std::move(products.mapped())});
    }
    return groups;
}

} // namespace vantor
