// The CSV form of the product catalogue: name; colours between commas; brand.
//
// Reading has no quoting, so a name that holds a semicolon does not survive a round trip. A line whose name
// holds "naam" or "name" in any case counts as a header and is passed over, wherever it stands; the first line also when
// it is the header that the text lookup writes.
// Writing: "Naam;Kleuren;Merk" and a line a product, in the given order, joined by line feeds.
#pragma once

#include "model/import_report.h"
#include "model/product.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vantor {

// Calls `onProduct` with every usable line's product, in the order of the lines, each with a fresh id. A line
// without a third column takes `defaultBrand`.
void readCatalogCSV(std::string_view text, std::string_view defaultBrand,
                    const std::function<void(Product)>& onProduct);

// All of them at once, and every other line that is not blank, but for a header in the first.
struct ProductsOfCSV {
    std::vector<Product> products;
    // Where each of them stands.
    std::vector<std::size_t> lines;
    ImportReport leftOut;
};
[[nodiscard]] ProductsOfCSV readCatalogCSV(std::string_view text, std::string_view defaultBrand);

[[nodiscard]] std::string writeCatalogCSV(const std::vector<Product>& products);

} // namespace vantor
