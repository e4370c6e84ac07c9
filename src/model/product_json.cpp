#include "model/product_json.h"

#include "model/record_json.h"

#include <utility>

namespace vantor {
namespace {

// Earlier versions kept products per client; such a product's client is its brand. Where a product has a brand of its
// own, the old key is one like any other that is not known.
struct StoredProduct {
    Product product;
    UnreadJson client;

    std::optional<Product> record() && {
        if (product.brand.empty() && !client.json.empty() && !JsonReader(client.json).readText(product.brand))
            return std::nullopt;
        return std::move(product);
    }
};

template <typename Visit>
void visitMembers(Visit& visit, StoredProduct& stored) {
    visit.required("id", stored.product.id);
    visit.required("name", stored.product.name);
    visit.required("colors", stored.product.colors);
    visit.optional("brand", stored.product.brand);
    visit.optional("client", stored.client);
}

} // namespace

template <>
struct StoredForm<Product> {
    using Type = StoredProduct;
};

template <typename Visit>
void visitMembers(Visit& visit, const Product& product) {
    visit.required("id", product.id);
    visit.required("name", product.name);
    visit.required("colors", product.colors);
    visit.required("brand", product.brand);
}

template <typename Visit, MaybeConst<CatalogData> Catalog>
void visitMembers(Visit& visit, Catalog& catalog) {
    visit.required("products", catalog.products);
    visit.required("clients", catalog.clients);
    visit.optional("brands", catalog.brands);
}

void writeCatalog(JsonWriter& out, const CatalogData& catalog) {
    RecordWriter(out, DateForm::SecondsSinceReference).write(catalog);
}

std::optional<CatalogData> readCatalog(std::string_view json) {
    return readDocument<CatalogData>(json, DateForm::SecondsSinceReference);
}

std::optional<std::vector<Product>> readProducts(std::string_view json) {
    return readDocument<std::vector<Product>>(json, DateForm::SecondsSinceReference);
}

} // namespace vantor
