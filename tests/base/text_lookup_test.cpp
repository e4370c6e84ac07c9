#include "base/text_lookup.h"

#include <gtest/gtest.h>

namespace vantor {
namespace {

TEST(TextLookup, AsksTheInstalledOneForTheTextWithoutItsValues) {
    setTextLookup([](std::string_view dutch) { return "[" + std::string(dutch) + "]"; });
    EXPECT_EQ(lookUp("Annuleer"), "[Annuleer]");
    EXPECT_EQ(lookUp("Set %1", {"12"}), "[Set 12]");
    setTextLookup({});
    EXPECT_EQ(lookUp("Annuleer"), "Annuleer");
    // Which go into their places whatever they hold.
    EXPECT_EQ(lookUp("%1 van %2", {"3", "10"}), "3 van 10");
    EXPECT_EQ(lookUp("%2 van %1, %1", {"%2", "b"}), "b van %2, %2");
    EXPECT_EQ(lookUp("100 % van %3 %0 %", {"a"}), "100 % van %3 %0 %");
    EXPECT_EQ(lookUp("", {"a"}), "");
}

} // namespace
} // namespace vantor
