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

TEST(TextLookup, PutsValuesIntoTheirPlacesWhateverTheyHold) {
    EXPECT_EQ(lookUp("%1 van %2", {"3", "10"}), "3 van 10");
    EXPECT_EQ(lookUp("%2 van %1, %1", {"%2", "b"}), "b van %2, %2");
    EXPECT_EQ(lookUp("100 % van %3 %0 %", {"a"}), "100 % van %3 %0 %");
    EXPECT_EQ(lookUp("", {"a"}), "");
}

TEST(TextLookup, LooksUpTheTextAndNotItsValues) {
    setTextLookup([](std::string_view dutch) { return "[" + std::string(dutch) + "]"; });
    EXPECT_EQ(lookUp("Set %1", {"12"}), "[Set 12]");
    setTextLookup({});
}

} // namespace
} // namespace vantor
