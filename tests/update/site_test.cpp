#include "base/web_address.h"
#include "update/site.h"

#include <gtest/gtest.h>

#include <string>

namespace vantor {
namespace {

TEST(Site, IsTheOneOfTheBuildAndHasWebAddresses) {
    const std::string site = VANTOR_TEST_SITE;
    EXPECT_EQ(kSiteHost, site);
    EXPECT_EQ(kUpdateEndpoint, "https://" + site + "/wp-json/vantor/v1/version-prep");
    EXPECT_EQ(kManualPage, "https://" + site + "/handleiding");
    EXPECT_TRUE(isWebAddress(kUpdateEndpoint));
    EXPECT_TRUE(isWebAddress(kManualPage));
}

} // namespace
} // namespace vantor
