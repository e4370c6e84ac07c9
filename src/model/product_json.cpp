#include "model/product_json.h"

#include "model/record_json.h"

#include <utility>

namespace vantor {
namespace {

// Earlier versions kept products per client; such a product's client is its brand.
struct StoredProduct : Product {
    std::string client;
};

struct StoredCatalog {
    std::vector<StoredProduct> products;
    std::vector<std::string> clients;
    std::vector<std::string> brands;
};

template <typename Visit>
void visitMembers(Visit& visit, StoredProduct& product) {
    visit.required("id", product.id);
    visit.required("name", product.name);
    visit.required("colors", product.colors);
    visit.optional("brand", product.brand);
    visit.optional("client", product.client);
}

template <typename Visit>
void visitMembers(Visit& visit, StoredCatalog& catalog) {
    visit.required("products", catalog.products);
    visit.required("clients", catalog.clients);
    visit.optional("brands", catalog.brands);
}

std::vector<Product> productsOf(std::vector<StoredProduct> stored) {
    std::vector<Product> products;
    products.reserve(stored.size());
    for (auto& each : stored) {
        if (each.brand.empty())
            each.brand = std::move(each.client);
        products.push_back(std::move(each));
    }
    return products;
}

} // namespace

template <typename Visit>
void visitMembers(Visit& visit, const Product& product) {
    visit.required("id", product.id);
    visit.required("name", product.name);
    visit.required("colors", product.colors);
    visit.required("brand", product.brand);
}

template <typename Visit>
void visitMembers(Visit& visit, const CatalogData& catalog) {
    visit.required("products", catalog.products);
    visit.required("clients", catalog.clients);
    visit.required("brands", catalog.brands);
}

void writeCatalog(JsonWriter& out, const CatalogData& catalog) {
    RecordWriter(out, DateForm::SecondsSinceReference).write(catalog);
}

std::optional<CatalogData> readCatalog(std::string_view json) {
    auto stored = readDocument<StoredCatalog>(json, DateForm::SecondsSinceReference);
    if (!stored)
        return std::nullopt;
    return CatalogData{productsOf(std::move(stored->products)), std::move(stored->clients),
                       std::move(stored->brands)};
}

std::optional<std::vector<Product>> readProducts(std::string_view json) {
    auto stored = readDocument<std::vector<StoredProduct>>(json, DateForm::SecondsSinceReference);
    if (!stored)
        return std::nullopt;
    return productsOf(*std::move(stored));
}

} // namespace vantor
