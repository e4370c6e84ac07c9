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

namespace vantor {
namespace {

std::string example(const std::string& name) {
    return testing::readFile(VANTOR_EXAMPLES "/" + name);
}

TEST(Examples, ShootFileAndCsvAreWrittenAsTheyStandAndHoldTogether) {
    const auto bytes = example("zomer-op-texel.vantor");
    const auto shoot = readShootFile(bytes).value();
    EXPECT_EQ(writeShootFile(shoot), bytes);
    EXPECT_EQ(writeSetCSV(shoot), example("zomer-op-texel.csv"));
    std::set<Uuid> ids;
    for (const auto& set : shoot.sets) {
        EXPECT_TRUE(ids.insert(set.id).second) << set.headline();
        EXPECT_LE(set.toQRText().size(), 200U) << set.headline() << " is not easy to scan";
    }
    EXPECT_FALSE(shoot.activationLog.empty());
    for (const auto& activation : shoot.activationLog)
        EXPECT_TRUE(ids.contains(activation.setId)) << activation.setId.text();
}

TEST(Examples, CatalogueImportsWholeAndSorted) {
    const auto text = example("productcatalogus.csv");
    const auto products = readCatalogCSV(text, "unused").products;
    EXPECT_EQ(writeCatalogCSV(products), text);
    EXPECT_TRUE(
        std::ranges::is_sorted(products, {}, [](const Product& each) { return collationKey(each.name); }));
    std::set<std::string> names;
    for (const auto& product : products)
        EXPECT_TRUE(names.insert(caseFolded(product.name)).second) << product.name;
}

} // namespace
} // namespace vantor
