#include "base/text.h"
#include "base/text_lookup.h"
#include "formats/catalog_csv.h"
#include "tests/support/differences.h"
#include "tests/support/generators.h"
#include "tests/support/table.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

namespace vantor {
namespace {

using testing::differences;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::TextCase;

std::vector<Product> read(std::string_view text) {
    return readCatalogCSV(text, "Std").products;
}

// name|brand, then |colour for every one.
std::vector<std::string> summaries(std::string_view text) {
    std::vector<std::string> all;
    for (const auto& product : read(text)) {
        all.push_back(product.name + "|" + product.brand);
        for (const auto& color : product.colors)
            all.back() += "|" + color;
    }
    return all;
}

constexpr auto kDocumented = "Naam;Kleuren;Merk\n"
                             "coated pants;brown, navy, black;Mr Marvis\n"
                             "sweater;blue navy;";

TEST(ReadCatalogCsv, ReadsTheDocumentedExample) {
    EXPECT_THAT(summaries(kDocumented),
                ElementsAre("coated pants|Mr Marvis|brown|navy|black", "sweater||blue navy"));
    const auto products = read(kDocumented);
    EXPECT_NE(products[0].id, products[1].id);
    EXPECT_NE(products[0].id, Uuid());
}

TEST(CatalogCsvLine, IsOneProduct) {
    for (const auto& [behaviour, line, summary] : testing::tableOf(
             TextCase{"DefaultBrandWithoutAThirdCell", "sweater;blue navy", "sweater|Std|blue navy"},
             TextCase{"NameAlone", "sweater", "sweater|Std"},
             TextCase{"NoBrandForAnEmptyThirdCell", "sweater;blue;", "sweater||blue"},
             TextCase{"NameAndTwoEmptyCells", "sweater;;", "sweater|"},
             TextCase{"NameAndAnEmptyCell", "sweater;", "sweater|Std"},
             TextCase{"ColoursBetweenCommas", "a;red,, blue ,;x", "a|x|red|blue"},
             TextCase{"SemicolonsInTheBrand", "a;b;c;d", "a|c;d|b"},
             TextCase{"SemicolonAtTheBrandsEnd", "a;b;c;", "a|c;|b"},
             TextCase{"Trimmed", "\t a \u00A0; b ;\u3000c ; d ", "a|c ; d|b"},
             TextCase{"QuotesAsTheyStand", "\"a\";\"b\";\"c\"", "\"a\"|\"c\"|\"b\""},
             TextCase{"SplitInsideQuotes", "\"a;b\"", "\"a|Std|b\""},
             TextCase{"NotSplitWhereASemicolonHasAnAccent", "a;\u0301b;c", "a;\u0301b|Std|c"},
             TextCase{"NotSplitBehindAPrefixOfNumbers", "a\u0600;b;c", "a\u0600;b|Std|c"},
             TextCase{"NotSplitWhereACommaHasAnAccent", "a;b,\u0301c;d", "a|d|b,\u0301c"},
             TextCase{"ByteOrderMarkPassedOver", "\uFEFFjeans;black;", "jeans||black"},
             TextCase{"BytesThatAreNoText", std::string("a\0b;\xFF", 5), std::string("a\0b|Std|\xFF", 9)}))
        EXPECT_THAT(summaries(line), ElementsAre(summary)) << behaviour;
}

TEST(ReadCatalogCsv, PassesOverLinesWithoutANameOrWithOneThatLooksLikeAHeader) {
    EXPECT_THAT(summaries(";red;Nike\n ;red\n;;\n\u00A0\n"), IsEmpty());
    EXPECT_THAT(summaries("a\nNAAM;x\nb\nProductnaam;y\nTour name;z\nSurNAMEs\nc;naam;name\na"),
                ElementsAre("a|Std", "b|Std", "c|name|naam", "a|Std"));
}

TEST(ReadCatalogCsv, TakesAnyLineEnd) {
    for (const std::string end : {"\n", "\r\n", "\r", "\u2028", "\u2029", "\u0085", "\v", "\f"}) {
        for (const auto& last : {end, std::string()})
            EXPECT_THAT(summaries("Naam;Kleuren;Merk" + end + "a;b;c" + end + end + "d" + last),
                        ElementsAre("a|c|b", "d|Std"));
    }
}

TEST(ReadCatalogCsv, TakesAVeryLongLine) {
    const auto products = read(std::string(100'000'000, 'x') + ";red;Nike");
    ASSERT_EQ(products.size(), 1U);
    EXPECT_EQ(products[0].name.size(), 100'000'000U);
    EXPECT_EQ(products[0].brand, "Nike");
}

TEST(WriteCatalogCsv, WritesALineAProductAndQuotesWhatItsReaderDoesNotUnderstand) {
    EXPECT_EQ(writeCatalogCSV({}), "Naam;Kleuren;Merk");
    EXPECT_EQ(writeCatalogCSV({{{}, "jeans", {"black", "blue"}, ""}, {{}, "tee", {}, "Nike"}}),
              "Naam;Kleuren;Merk\njeans;black, blue;\ntee;;Nike");
    EXPECT_EQ(writeCatalogCSV({{{}, "a;b", {"c\"d", "e"}, "f\ng"}}),
              "Naam;Kleuren;Merk\n\"a;b\";\"c\"\"d, e\";\"f\ng\"");
    EXPECT_THAT(summaries(writeCatalogCSV({{{}, "a;b", {"red"}, "Nike"}})), ElementsAre("\"a|red;Nike|b\""));
}

TEST(CatalogCsv, HeaderThatWasTranslatedIsReadBackAsOneInTheFirstFilledLineOnly) {
    setTextLookup([](std::string_view) { return "Titre;Couleurs;Marque"; });
    EXPECT_EQ(writeCatalogCSV({}), "Titre;Couleurs;Marque");
    EXPECT_THAT(summaries("\n Titre ;COULEURS;marque\nTitre;Couleurs;Marque"),
                ElementsAre("Titre|Marque|Couleurs"));
    EXPECT_THAT(summaries("Titre;Couleurs;Marvis"), ElementsAre("Titre|Marvis|Couleurs"));
    EXPECT_THAT(summaries("Naam;Kleuren;Merk"), IsEmpty());
    setTextLookup({});
}

// A product that the format can hold whole.
rc::Gen<Product> writableProduct() {
    const auto pick = [](Product product, const std::vector<std::string>& colors) {
        const auto lower = lowerCased(product.name);
        if (product.name.empty() || lower.find("naam") != std::string::npos ||
            lower.find("name") != std::string::npos)
            product.name = "tee";
        product.colors.clear();
        for (const auto& color : colors) {
            if (!color.empty())
                product.colors.push_back(color);
        }
        return product;
    };
    return rc::gen::apply(pick, testing::generated<Product>({.texts = testing::plainText(";")}),
                          testing::fewOf<std::vector<std::string>>(testing::plainText(";,")));
}

RC_GTEST_PROP(CatalogCsvProperty, ReadsBackWhatItWrites, ()) {
    const auto products = *testing::fewOf<std::vector<Product>>(writableProduct());
    RC_ASSERT(differences(read(writeCatalogCSV(products)), products, testing::Ignoring::Identity) == "");
}

RC_GTEST_PROP(CatalogCsvProperty, NoBytesAreACrash, ()) {
    const auto text = *rc::gen::oneOf(testing::bytes(), testing::text(), testing::damaged(kDocumented));
    for (const auto& product : read(text)) {
        RC_ASSERT(!product.name.empty());
        for (const auto& color : product.colors)
            RC_ASSERT(!color.empty());
    }
}

} // namespace
} // namespace vantor
