#include "base/web_address.h"
#include "update/site.h"

#include <gtest/gtest.h>

#include <string>

namespace vantor {
namespace {

TEST(SiteTest, IsTheOneOfTheBuild) {
    const std::string site = VANTOR_TEST_SITE;
    EXPECT_EQ(kSiteHost, site);
    EXPECT_EQ(kUpdateEndpoint, "https://" + site + "/wp-json/vantor/v1/version-prep");
    EXPECT_EQ(kManualPage, "https://" + site + "/handleiding");
}

TEST(SiteTest, HasWebAddresses) {
    EXPECT_TRUE(isWebAddress(kUpdateEndpoint));
    EXPECT_TRUE(isWebAddress(kManualPage));
}

} // namespace
} // namespace vantor
