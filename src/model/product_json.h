// The JSON form of the catalogue, as its store keeps it.
//
// Writing: one object of products, clients and brands; a product has the keys id, name, colors and brand.
// Reading also takes what earlier versions wrote: products under the key "client" instead of "brand" (looked at
// only where there is no brand), no brands, or nothing but an array of products. Nothing is read in part: absent means unreadable.
#pragma once

#include "base/json.h"
#include "model/product.h"

#include <optional>
#include <string_view>
#include <vector>

namespace vantor {

void writeCatalog(JsonWriter& out, const CatalogData& catalog);

[[nodiscard]] std::optional<CatalogData> readCatalog(std::string_view json);
[[nodiscard]] std::optional<std::vector<Product>> readProducts(std::string_view json);

} // namespace vantor
