// The fields of Product and CatalogData.
#pragma once

#include "model/product.h"
#include "model/record_fields.h"

#include <tuple>

namespace vantor {

template <>
inline constexpr auto kFields<Product> = std::tuple{
    requiredField("id", &Product::id),
    requiredField("name", &Product::name),
    requiredField("colors", &Product::colors),
    optionalField("brand", &Product::brand),
};

template <>
inline constexpr auto kFields<CatalogData> = std::tuple{
    requiredField("products", &CatalogData::products),
    requiredField("clients", &CatalogData::clients),
    optionalField("brands", &CatalogData::brands),
};

} // namespace vantor
