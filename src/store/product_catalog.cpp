#include "store/product_catalog.h"

#include "base/text.h"
#include "formats/catalog_csv.h"
#include "model/product_json.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <unordered_set>
#include <utility>

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

ProductCatalog::ProductCatalog(StoreFile* file) : m_file(file) {}

void ProductCatalog::setProducts(std::vector<Product> products) {
    m_willChange.emit(Change::Products);
    m_data.products = std::move(products);
}

void ProductCatalog::setClients(std::vector<std::string> clients) {
    m_willChange.emit(Change::Clients);
    m_data.clients = std::move(clients);
}

void ProductCatalog::setBrands(std::vector<std::string> brands) {
    m_willChange.emit(Change::Brands);
    m_data.brands = std::move(brands);
}

std::vector<std::string> ProductCatalog::allClientNames() const {
    auto names = m_data.clients;
    sortNames(names);
    return names;
}

std::vector<std::string> ProductCatalog::allBrandNames() const {
    auto names = m_data.brands;
    for (const auto& product : m_data.products) {
        // Products of one brand tend to stand together; most repeats go here rather than in the sort.
        if (!product.brand.empty() && (names.empty() || names.back() != product.brand))
            names.push_back(product.brand);
    }
    return uniqueSortedNames(std::move(names));
}

void ProductCatalog::addClient(std::string_view name) {
    addName(Change::Clients, m_data.clients, name);
}

void ProductCatalog::addBrand(std::string_view name) {
    addName(Change::Brands, m_data.brands, name);
}

void ProductCatalog::deleteClient(std::string_view name) {
    deleteName(Change::Clients, m_data.clients, name);
}

void ProductCatalog::deleteBrand(std::string_view name) {
    deleteName(Change::Brands, m_data.brands, name);
}

void ProductCatalog::addName(Change list, std::vector<std::string>& names, std::string_view name) {
    const auto wanted = trimmed(name);
    const auto isHeld = [&](const auto& held) { return equalsIgnoringCase(held, wanted); };
    if (wanted.empty() || std::ranges::any_of(names, isHeld))
        return;
    m_willChange.emit(list);
    names.emplace_back(wanted);
    sortNames(names);
    save();
}

void ProductCatalog::deleteName(Change list, std::vector<std::string>& names, std::string_view name) {
    // The name may be a view into the very list it is deleted from.
    const std::string wanted(name);
    m_willChange.emit(list);
    std::erase(names, wanted);
    save();
}

void ProductCatalog::addProduct(std::string_view name, std::vector<std::string> colors, std::string brand) {
    const auto wanted = trimmed(name);
    if (wanted.empty())
        return;
    m_willChange.emit(Change::Products);
    m_data.products.push_back(Product::make(std::string(wanted), std::move(colors), std::move(brand)));
    sortAndSave();
}

void ProductCatalog::updateProduct(Uuid id, std::string_view name, std::vector<std::string> colors,
                                   std::string_view brand) {
    const auto found = std::ranges::find(m_data.products, id, &Product::id);
    if (found == m_data.products.end())
        return;
    Product updated{id, std::string(trimmed(name)), std::move(colors), std::string(trimmed(brand))};
    m_willChange.emit(Change::Products);
    *found = std::move(updated);
    sortAndSave();
}

void ProductCatalog::deleteProduct(Uuid id) {
    m_willChange.emit(Change::Products);
    std::erase_if(m_data.products, [&](const auto& product) { return product.id == id; });
    save();
}

void ProductCatalog::sortAndSave() {
    sortByName(m_data.products, [](const Product& product) -> std::string_view { return product.name; });
    save();
}

int ProductCatalog::importCSV(std::string_view text, std::string_view defaultBrand) {
    return addImported(readCatalogCSV(text, defaultBrand));
}

int ProductCatalog::addImported(std::vector<Product> read) {
    std::unordered_set<std::string> held;
    held.reserve(m_data.products.size() + read.size());
    for (const auto& product : m_data.products)
        held.insert(caseFolded(product.name));
    std::erase_if(read, [&](const auto& product) { return !held.insert(caseFolded(product.name)).second; });
    m_willChange.emit(Change::Products);
    m_data.products.reserve(m_data.products.size() + read.size());
    std::ranges::move(read, std::back_inserter(m_data.products));
    sortAndSave();
    return static_cast<int>(read.size());
}

std::string ProductCatalog::exportCSV() const {
    return writeCatalogCSV(m_data.products);
}

void ProductCatalog::load() {
    if (m_file == nullptr)
        return;
    m_file->load([this](std::string_view bytes) {
        if (auto catalog = readCatalog(bytes)) {
            setProducts(std::move(catalog->products));
            setClients(std::move(catalog->clients));
            setBrands(std::move(catalog->brands));
            return true;
        }
        auto products = readProducts(bytes);
        if (!products)
            return false;
        setProducts(*std::move(products));
        return true;
    });
}

void ProductCatalog::save() {
    if (m_file == nullptr)
        return;
    JsonWriter out(JsonWriter::Layout::Compact);
    writeCatalog(out, m_data);
    m_file->save(out.written());
}

} // namespace vantor
