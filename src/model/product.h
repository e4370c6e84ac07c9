// Product: a garment of the catalogue, with the colours it comes in, under one brand or under none.
#pragma once

#include "base/uuid.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace vantor {

struct Product {
    Uuid id;
    std::string name;
    // In the user's order; may be empty.
    std::vector<std::string> colors;
    // Empty for a product that belongs to no brand in particular.
    std::string brand;

    // A product with a fresh id.
    [[nodiscard]] static Product make(std::string name, std::vector<std::string> colors, std::string brand);

    friend bool operator==(const Product&, const Product&) = default;
};

// What the catalogue remembers from one start to the next.
struct CatalogData {
    std::vector<Product> products;
    std::vector<std::string> clients;
    std::vector<std::string> brands;

    friend bool operator==(const CatalogData&, const CatalogData&) = default;
};

} // namespace vantor

template <>
struct std::hash<vantor::Product> {
    std::size_t operator()(const vantor::Product& product) const noexcept;
};
