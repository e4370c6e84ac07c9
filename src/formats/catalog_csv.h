// The CSV form of the product catalogue: name; colours between commas; brand.
//
// Reading has no quoting, so a name that holds a semicolon does not survive a round trip. A line whose name
// holds "naam" or "name" in any case counts as a header and is passed over, wherever it stands; the first line also when
// it is the header that the text lookup writes.
// Writing: "Naam;Kleuren;Merk" and a line a product, in the given order, joined by line feeds.
#pragma once

#include "model/import_report.h"
#include "model/product.h"

#include <string>
#include <string_view>
#include <vector>

namespace vantor {

struct ProductsOfCSV {
    // Of every usable line, in the order of the lines, each with a fresh id.
    std::vector<Product> products;
    // Where each of them stands, as editors count lines, from 1.
    std::vector<std::size_t> lines;
    // Every other line that is not blank, but for a header in the first.
    ImportReport leftOut;
};
// A line without a third column takes `defaultBrand`.
[[nodiscard]] ProductsOfCSV readCatalogCSV(std::string_view text, std::string_view defaultBrand);

[[nodiscard]] std::string writeCatalogCSV(const std::vector<Product>& products);

} // namespace vantor
