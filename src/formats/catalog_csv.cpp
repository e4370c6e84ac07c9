#include "formats/catalog_csv.h"

#include "base/text.h"
#include "base/text_lookup.h"
#include "formats/csv_row.h"

#include <optional>
#include <utility>

namespace vantor {
namespace {

bool isHeaderName(std::string_view name) {
    const auto lower = lowerCased(name);
    return lower.find("naam") != std::string::npos || lower.find("name") != std::string::npos;
}

// Takes the cell in front of the next semicolon off `rest`; the last one takes all and leaves nothing.
std::string_view takeCell(std::optional<std::string_view>& rest) {
    const auto text = *rest;
    const auto end = findCharacter(text, ';');
    if (end == std::string_view::npos)
        rest.reset();
    else
        rest = text.substr(end + 1);
    return trimmed(text.substr(0, end));
}

} // namespace

void readCatalogCSV(std::string_view text, std::string_view defaultBrand,
                    const std::function<void(Product)>& onProduct) {
    Lines lines(withoutByteOrderMark(text));
    while (const auto line = lines.next()) {
        std::optional<std::string_view> rest = *line;
        const auto name = takeCell(rest);
        if (name.empty() || isHeaderName(name))
            continue;
        const auto colors = rest ? takeCell(rest) : std::string_view();
        const auto brand = rest ? trimmed(*rest) : defaultBrand;
        onProduct(Product::make(std::string(name), splitAtCommas(colors), std::string(brand)));
    }
}

std::vector<Product> readCatalogCSV(std::string_view text, std::string_view defaultBrand) {
    std::vector<Product> products;
    readCatalogCSV(text, defaultBrand, [&](Product product) { products.push_back(std::move(product)); });
    return products;
}

std::string writeCatalogCSV(const std::vector<Product>& products) {
    std::string text = lookUp("Naam;Kleuren;Merk");
    for (const auto& product : products) {
        text += '\n' + quotedCell(product.name) + ';' + quotedCell(joined(product.colors, ", ")) + ';' +
                quotedCell(product.brand);
    }
    return text;
}

} // namespace vantor
