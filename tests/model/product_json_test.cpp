#include "model/product_json.h"
#include "tests/support/differences.h"
#include "tests/support/examples.h"
#include "tests/support/generators.h"
#include "tests/support/table.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

namespace vantor {
namespace {

using testing::differences;
using testing::TextCase;

constexpr auto kExample =
    R"({"products":[{"id":"00000000-0000-4000-8000-000000000021","name":"jeans",)"
    R"("colors":["black","blue"],"brand":"Nike"}],"clients":["Puma"],"brands":["Marvis"]})";

CatalogData example() {
    return {{{testing::numberedId(21), "jeans", {"black", "blue"}, "Nike"}}, {"Puma"}, {"Marvis"}};
}

std::string written(const CatalogData& catalog) {
    JsonWriter out(JsonWriter::Layout::Compact);
    writeCatalog(out, catalog);
    return std::string(out.written());
}

// A product of the given members, besides id, name and colors.
std::string product(std::string_view more) {
    return R"({"id":"00000000-0000-4000-8000-000000000021","name":"jeans","colors":[])" + std::string(more) +
           "}";
}

std::string catalog(std::string_view products) {
    return R"({"products":[)" + std::string(products) + R"(],"clients":[],"brands":[]})";
}

TEST(CatalogJson, IsWrittenToTheLetterAndEveryFieldRead) {
    EXPECT_EQ(written(example()), kExample);
    EXPECT_EQ(differences(readCatalog(kExample).value(), example()), "");
    // With an empty brand, and never a key of an earlier version's.
    EXPECT_EQ(written({{{testing::numberedId(21), "jeans", {}, ""}}, {}, {}}),
              catalog(product(R"(,"brand":"")")));
}

TEST(LegacyProduct, TakesItsBrandFromItsClientOnlyWhenItHasNone) {
    for (const auto& [behaviour, members, brand] : testing::tableOf(
             TextCase{"NeitherKey", "", ""}, TextCase{"ClientAlone", R"(,"client":"Nike")", "Nike"},
             TextCase{"EmptyBrand", R"(,"brand":"","client":"Nike")", "Nike"},
             TextCase{"EmptyBrandBehindClient", R"(,"client":"Nike","brand":"")", "Nike"},
             TextCase{"NullBrand", R"(,"brand":null,"client":"Nike")", "Nike"},
             TextCase{"Brand", R"(,"brand":"Puma","client":"Nike")", "Puma"},
             TextCase{"BrandBehindClient", R"(,"client":"Nike","brand":"Puma")", "Puma"},
             TextCase{"NullClient", R"(,"client":null)", ""},
             TextCase{"BrandAndNullClient", R"(,"brand":"Puma","client":null)", "Puma"},
             TextCase{"EmptyClient", R"(,"client":"")", ""},
             TextCase{"BrandBehindAClientThatIsNone", R"(,"client":[1e309],"brand":"Puma")", "Puma"},
             TextCase{"BrandAndAClientThatIsNoText", R"(,"brand":"Puma","client":"\udc00")", "Puma"},
             TextCase{"LastClientHolds", R"(,"client":1,"client":"Nike")", "Nike"})) {
        SCOPED_TRACE(behaviour);
        const auto read = readCatalog(catalog(product(members)));
        ASSERT_TRUE(read);
        EXPECT_EQ(read->products[0].brand, brand);
        EXPECT_EQ(readProducts("[" + product(members) + "]")->at(0).brand, brand);
    }
}

TEST(CatalogJson, WithoutBrandsHasNoneAndOfEqualKeysTheLastHolds) {
    const auto read = readCatalog(R"({"clients":["a","b"],"products":[],"clients":["c"]})").value();
    EXPECT_TRUE(read.brands.empty());
    EXPECT_THAT(read.clients, ::testing::ElementsAre("c"));
    EXPECT_TRUE(readCatalog(R"({"products":[],"clients":[],"brands":null})"));
}

TEST(UnreadableCatalog, IsAbsentInBothForms) {
    for (const auto& json : testing::tableOf<std::string>(
             "", "null", "{}", "7", R"({"products":[]})", R"({"clients":[]})",
             R"({"products":null,"clients":[]})", R"({"products":[],"clients":null})",
             R"({"products":{},"clients":[]})", R"({"products":[],"clients":"x"})",
             R"({"products":[],"clients":[1]})", R"({"products":[],"clients":[null]})",
             R"({"products":[],"clients":[["x"]]})", R"({"products":[],"clients":[],"brands":{}})",
             R"({"products":[],"clients":[],"brands":[],})", R"({"products":[],"clients":[]} x)",
             catalog("{}"), catalog("null"), catalog("\"jeans\""), catalog(product(R"(,"brand":1)")),
             catalog(product(R"(,"client":1)")), catalog(product(R"(,"client":"\udc00")")),
             catalog(product(R"(,"brand":"","client":[])")), catalog(product(R"(,"brand":["x"])")),
             catalog(R"({"name":"jeans","colors":[]})"),
             catalog(R"({"id":"00000000-0000-4000-8000-000000000021","colors":[]})"),
             catalog(R"({"id":"00000000-0000-4000-8000-000000000021","name":"jeans"})"),
             catalog(R"({"id":null,"name":"jeans","colors":[]})"),
             catalog(R"({"id":"1","name":"jeans","colors":[]})"), catalog(product(R"(,"name":null)")),
             catalog(product(R"(,"colors":null)")), catalog(product(R"(,"colors":"red")")),
             catalog(product(R"(,"colors":[1])")), catalog(product(R"(,"colors":[null])")),
             catalog(product(",\"brand\":\"\xFF\"")), catalog(product(R"(,"brand":"\udc00")")), "[{}]",
             "[null]", "[1]", "[[]]", "[,]", std::string(1'000'000, '['),
             R"({"products":)" + std::string(1'000'000, '['), R"({"x":)" + std::string(1'000'000, '['),
             R"({"products":[],"clients":)" + std::string(1'000'000, '[') + std::string(1'000'000, ']') +
                 "}")) {
        EXPECT_FALSE(readCatalog(json)) << json.substr(0, 80);
        EXPECT_FALSE(readProducts(json)) << json.substr(0, 80);
    }
}

TEST(CatalogJson, IsUnreadableWhereverItIsCutOff) {
    const std::string_view json = kExample;
    for (std::size_t length = 0; length < json.size(); ++length)
        EXPECT_FALSE(readCatalog(json.substr(0, length))) << length;
}

TEST(ProductsJson, IsNothingButAList) {
    const auto read = readProducts("\uFEFF [" + product(R"(,"client":"Nike")") + "," + product("") + "] ");
    ASSERT_TRUE(read);
    EXPECT_EQ(read->size(), 2U);
    EXPECT_EQ(read->at(0).name, "jeans");
    EXPECT_TRUE(readProducts("[]")->empty());
    EXPECT_FALSE(readProducts(kExample));
    EXPECT_FALSE(readCatalog("[]"));
}

RC_GTEST_PROP(CatalogJsonProperty, ReadsBackWhatItWrites, ()) {
    const auto catalog = *testing::generated<CatalogData>();
    const auto back = readCatalog(written(catalog));
    RC_ASSERT(back.has_value());
    RC_ASSERT(differences(*back, catalog) == "");
}

RC_GTEST_PROP(CatalogJsonProperty, NoBytesAreACrashAndWhatIsReadCanBeWritten, ()) {
    const auto json = *rc::gen::oneOf(testing::bytes(), testing::text(), testing::damaged(kExample));
    static_cast<void>(readProducts(json));
    if (const auto catalog = readCatalog(json)) {
        const auto back = readCatalog(written(*catalog));
        RC_ASSERT(back.has_value());
        RC_ASSERT(differences(*back, *catalog) == "");
    }
}

} // namespace
} // namespace vantor
