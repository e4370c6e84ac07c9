#include "store/product_catalog.h"

#include "base/text.h"
#include "formats/catalog_csv.h"

#include <algorithm>
#include <cstddef>
#include <unordered_set>
#include <utility>

#include "edit/catalog_edits.h"

namespace vantor {
namespace {

// Sorts stably by a name, whose collation key is made once for each element.
template <typename Element, typename NameOf>
void sortByName(std::vector<Element>& elements, NameOf nameOf) {
    std::vector<std::pair<std::string, std::size_t>> order;
    order.reserve(elements.size());
    for (std::size_t i = 0; i < elements.size(); ++i)
        order.emplace_back(collationKey(nameOf(elements[i])), i);
    std::ranges::sort(order);
    std::vector<Element> sorted;
    sorted.reserve(elements.size());
    for (const auto& [key, place] : order)
        sorted.push_back(std::move(elements[place]));
    elements = std::move(sorted);
}

void sortNames(std::vector<std::string>& names) {
    sortByName(names, [](const std::string& name) -> std::string_view { return name; });
}

} // namespace

std::vector<std::string> uniqueSortedNames(std::vector<std::string> names) {
    std::ranges::sort(names);
    const auto repeated = std::ranges::unique(names);
    names.erase(repeated.begin(), repeated.end());
    sortNames(names);
    return names;
}

std::vector<std::string> ProductCatalog::allClientNames() const {
    auto names = clients();
    sortNames(names);
    return names;
}

std::vector<std::string> ProductCatalog::allBrandNames() const {
    auto names = brands();
    for (const auto& product : products()) {
        // Products of one brand tend to stand together; most repeats go here rather than in the sort.
        if (!product.brand.empty() && (names.empty() || names.back() != product.brand))
            names.push_back(product.brand);
    }
    return uniqueSortedNames(std::move(names));
}

void ProductCatalog::addClient(std::string_view name) {
    perform(vantor::addClient(library(), name), Aspect::Clients);
}

void ProductCatalog::addBrand(std::string_view name) {
    perform(vantor::addBrand(library(), name), Aspect::Brands);
}

void ProductCatalog::deleteClient(std::string_view name) {
    m_document.perform(vantor::deleteClient(library(), name), Aspect::Clients);
}

void ProductCatalog::deleteBrand(std::string_view name) {
    m_document.perform(vantor::deleteBrand(library(), name), Aspect::Brands);
}

void ProductCatalog::addProduct(std::string_view name, std::vector<std::string> colors, std::string brand) {
    perform(vantor::addProduct(library(), name, std::move(colors), std::move(brand)), Aspect::Products);
}

void ProductCatalog::updateProduct(Uuid id, std::string_view name, std::vector<std::string> colors,
                                   std::string_view brand) {
    perform(vantor::updateProduct(library(), id, name, std::move(colors), brand), Aspect::Products);
}

void ProductCatalog::deleteProduct(Uuid id) {
    m_document.perform(vantor::deleteProduct(library(), id), Aspect::Products);
}

int ProductCatalog::importCSV(std::string_view text, std::string_view defaultBrand) {
    return addImported(readCatalogCSV(text, defaultBrand));
}

int ProductCatalog::addImported(ProductsOfCSV read) {
    auto import = importProducts(library(), std::move(read.products), read.lines, std::move(read.leftOut));
    m_document.perform(std::move(import.change), Aspect::Products);
    return import.count;
}

std::string ProductCatalog::exportCSV() const {
    return writeCatalogCSV(products());
}

void ProductCatalog::perform(std::optional<Change> change, Aspect aspect) {
    if (change)
        m_document.perform(*std::move(change), aspect);
}

} // namespace vantor
