#include "model/product_json.h"

#include "model/product_fields.h"
#include "model/record_json.h"

#include <tuple>
#include <utility>

namespace vantor {
namespace {

// Earlier versions kept products per client; such a product's client is its brand. Where a product has a brand of its
// own, the old key is one like any other that is not known.
struct StoredProduct : Product {
    UnreadJson client;

    std::optional<Product> record() && {
        if (brand.empty() && !client.json.empty() && !JsonReader(client.json).readText(brand))
            return std::nullopt;
        Product& product = *this;
        return std::move(product);
    }
};

} // namespace

template <>
inline constexpr auto kFields<StoredProduct> =
    std::tuple_cat(kFields<Product>, std::tuple{optionalField("client", &StoredProduct::client)});

template <>
struct StoredForm<Product> {
    using Type = StoredProduct;
};

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
