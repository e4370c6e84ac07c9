#include "base/text_lookup.h"

#include <gtest/gtest.h>

namespace vantor {
namespace {

TEST(TextLookup, LeavesTheTextAsWrittenWhenNoneIsInstalled) {
    EXPECT_EQ(lookUp("Verwijderen"), "Verwijderen");
}

TEST(TextLookup, AsksTheInstalledOneUntilItIsTakenAway) {
    setTextLookup([](std::string_view dutch) { return "[" + std::string(dutch) + "]"; });
    EXPECT_EQ(lookUp("Annuleer"), "[Annuleer]");
    setTextLookup({});
    EXPECT_EQ(lookUp("Annuleer"), "Annuleer");
}

} // namespace
} // namespace vantor
