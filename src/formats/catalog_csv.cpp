#include "formats/catalog_csv.h"

#include "base/text.h"
#include "base/text_lookup.h"
#include "formats/csv_row.h"

#include <optional>
#include <utility>

namespace vantor {
namespace {

constexpr auto kHeader = toLookUp("Naam;Kleuren;Merk");

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

struct Row {
    std::string_view name;
    std::string_view colors;
    std::optional<std::string_view> brand;

    explicit Row(std::string_view line) {
        std::optional rest = line;
        name = takeCell(rest);
        if (rest)
            colors = takeCell(rest);
        if (rest)
            brand = trimmed(*rest);
    }
};

bool isWrittenHeader(const Row& row) {
    const auto text = lookUp(kHeader);
    const Row written(text);
    return lowerCased(row.name) == lowerCased(written.name) &&
           lowerCased(row.colors) == lowerCased(written.colors) &&
           lowerCased(row.brand.value_or("")) == lowerCased(written.brand.value_or(""));
}

} // namespace

ProductsOfCSV readCatalogCSV(std::string_view text, std::string_view defaultBrand) {
    using enum LeftOutLine::Why;
    ProductsOfCSV read;
    Lines lines(withoutByteOrderMark(text));
    bool first = true;
    while (const auto line = nextFilledLine(lines)) {
        const Row row(*line);
        const bool isHeader = isHeaderName(row.name) || (first && isWrittenHeader(row));
        if (!isHeader && !row.name.empty()) {
            read.products.push_back(Product::make(std::string(row.name), splitAtCommas(row.colors),
                                                  std::string(row.brand.value_or(defaultBrand))));
            read.lines.push_back(lines.number());
        } else if (!isHeader || !first) {
            read.leftOut.push_back({lines.number(), isHeader ? ReadsAsHeader : SaysTooLittle});
        }
        first = false;
    }
    return read;
}

std::string writeCatalogCSV(const std::vector<Product>& products) {
    std::string text = lookUp(kHeader);
    for (const auto& product : products) {
        text += '\n' + quotedCell(product.name) + ';' + quotedCell(joined(product.colors, ", ")) + ';' +
                quotedCell(product.brand);
    }
    return text;
}

} // namespace vantor
