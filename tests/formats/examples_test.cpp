// The example files hold together and are written as the program itself writes them.

#include "base/text.h"
#include "formats/catalog_csv.h"
#include "formats/set_csv.h"
#include "formats/shoot_file.h"
#include "tests/support/read_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace vantor {
namespace {

std::string example(const std::string& name) {
    return testing::readFile(VANTOR_EXAMPLES "/" + name);
}

TEST(Examples, ShootFileAndCsvAreWrittenAsTheyStandAndHoldTogether) {
    const auto bytes = example("zomer-op-texel.vantor");
    const auto shoot = readShootFile(bytes);
    ASSERT_TRUE(shoot);
    EXPECT_EQ(writeShootFile(*shoot), bytes);
    EXPECT_EQ(writeSetCSV(*shoot), example("zomer-op-texel.csv"));
    EXPECT_EQ(shoot->name, "Zomer op Texel");
    EXPECT_EQ(shoot->date.iso8601().substr(0, 10), "2026-06-14");
    EXPECT_EQ(shoot->sets.size(), 28U);
    std::set<Uuid> ids;
    for (const auto& set : shoot->sets) {
        ids.insert(set.id);
        EXPECT_LE(set.toQRText().size(), 200U) << set.headline() << " is not easy to scan";
    }
    EXPECT_EQ(ids.size(), shoot->sets.size());
    EXPECT_GE(shoot->activationLog.size(), 3U);
    for (const auto& activation : shoot->activationLog)
        EXPECT_TRUE(ids.contains(activation.setId)) << activation.setId.text();
}

TEST(Examples, CatalogueImportsWholeAndSorted) {
    const auto text = example("productcatalogus.csv");
    const auto products = readCatalogCSV(text, "unused").products;
    EXPECT_EQ(writeCatalogCSV(products), text);
    EXPECT_GE(products.size(), 44U);
    EXPECT_TRUE(std::is_sorted(products.begin(), products.end(), [](const Product& a, const Product& b) {
        return compareNames(a.name, b.name) < 0;
    }));
    std::set<std::string> names;
    std::set<std::string> brands;
    for (const auto& product : products) {
        EXPECT_TRUE(names.insert(caseFolded(product.name)).second) << product.name;
        brands.insert(product.brand);
    }
    EXPECT_EQ(brands.size(), 6U) << "five brands and the general one";
}

} // namespace
} // namespace vantor
