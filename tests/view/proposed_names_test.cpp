#include "view/proposed_names.h"

#include <gtest/gtest.h>

#include <string>

namespace vantor {
namespace {

SetData setOf(const std::string& number, const std::string& brand) {
    SetData set;
    set.setNumber = number;
    set.brand = brand;
    return set;
}

TEST(ProposedNames, FollowTheirSetOrShoot) {
    EXPECT_EQ(pngName(setOf("12", "Marvis")), "SET-12-Marvis.png");
    EXPECT_EQ(pngName(setOf("", "")), "SET--.png");
    EXPECT_EQ(pngName(setOf("1/2", "H&M: \"Zoé\"")), "SET-1-2-H&M: \"Zoé\".png");
    const auto shoot = Shoot::make("Ibiza & Zomer", "", "", {});
    EXPECT_EQ(shootFileName(&shoot, "sets", ".csv"), "Ibiza & Zomer.csv");
    const auto nameless = Shoot::make("", "", "", {});
    EXPECT_EQ(shootFileName(&nameless, "shoot", ".vantor"), ".vantor");
    EXPECT_EQ(shootFileName(nullptr, "sets", ".json"), "sets.json");
    EXPECT_EQ(cardsName("Zomer op Texel"), "Zomer op Texel-QR-kaarten.pdf");
    EXPECT_EQ(cardsName(""), "-QR-kaarten.pdf");
    EXPECT_EQ(cardsName("a/b"), "a-b-QR-kaarten.pdf");
    EXPECT_EQ(catalogName(), "productcatalogus.csv");
}

TEST(ProposedNames, KeepTheirEndingsWhereTheyAreTooLong) {
    const std::string name(300, 'x');
    const auto shoot = Shoot::make(name, "", "", {});
    for (const auto& [proposed, ending] :
         {std::pair{pngName(setOf(name, "")), "xxx.png"}, std::pair{cardsName(name), "xxx-QR-kaarten.pdf"},
          std::pair{shootFileName(&shoot, "", ".vantor"), "xxx.vantor"}}) {
        EXPECT_EQ(proposed.size(), 255U);
        EXPECT_TRUE(proposed.ends_with(ending)) << proposed;
    }
}

} // namespace
} // namespace vantor
