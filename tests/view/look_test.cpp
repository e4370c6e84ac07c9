#include "view/look.h"

#include <gtest/gtest.h>

#include <optional>

namespace vantor {
namespace {

using enum DesktopLook::ColorScheme;

TEST(Look, IsLightOrDarkByTheVariableThenTheDesktopThenItsToolkit) {
    struct Case {
        DesktopLook::ColorScheme desktop;
        const char* environment;
        bool platformIsDark;
        bool dark;
    };
    for (const auto& [desktop, environment, platformIsDark, dark] : {
             Case{Unknown, "", false, false},
             {Unknown, "", true, true},
             {Light, "", true, false},
             {Dark, "", false, true},
             {Dark, "light", true, false},
             {Dark, "light-contrast", true, false},
             {Light, "dark", false, true},
             {Light, "dark-contrast", false, true},
             {Dark, "Light", false, true},
             {Light, "dark ", false, false},
             {Light, "dark-", false, false},
             {Light, "darker", false, false},
             {Unknown, "-contrast", true, true},
         }) {
        EXPECT_EQ(wantedLook({desktop, {}, false, false}, environment, platformIsDark).dark, dark)
            << static_cast<int>(desktop) << ' ' << environment << ' ' << platformIsDark;
    }
}

TEST(Look, HasMoreContrastWhereTheVariableOrTheDesktopAsksForIt) {
    for (const bool desktop : {false, true}) {
        const DesktopLook asked{Unknown, {}, desktop, false};
        for (const auto* const environment : {"", "light", "dark", "-contrast", "contrast", "dark-contrasts"})
            EXPECT_EQ(wantedLook(asked, environment, false).highContrast, desktop) << environment;
        for (const auto* const environment : {"light-contrast", "dark-contrast"})
            EXPECT_TRUE(wantedLook(asked, environment, false).highContrast) << environment;
    }
}

TEST(Look, MovesLessWhereTheDesktopAsksForIt) {
    EXPECT_FALSE(wantedLook({}, "dark", true).reducedMotion);
    EXPECT_TRUE(wantedLook({Unknown, {}, false, true}, "dark", true).reducedMotion);
}

TEST(Look, TakesTheAccentOnlyWhereItIsSeenAndWhatIsOnItRead) {
    const auto accent = [](const Rgb& color, const char* environment) {
        return wantedLook({Unknown, color, false, false}, environment, false).accent;
    };
    struct Case {
        Rgb color;
        bool inLight;
        bool inDark;
    };
    // White text reads on #767676 and no longer on #777777, dark text on #808080 and no longer on #7F7F7F.
    for (const auto& [color, inLight, inDark] : {
             Case{{0x2B, 0x5F, 0xD9}, true, false},
             {{0x7A, 0xA2, 0xFF}, false, true},
             {{0x76, 0x76, 0x76}, true, false},
             {{0x77, 0x77, 0x77}, false, false},
             {{0x7F, 0x7F, 0x7F}, false, false},
             {{0x80, 0x80, 0x80}, false, true},
             {{0xFF, 0xFF, 0xFF}, false, true},
             {{0x00, 0x00, 0x00}, true, false},
         }) {
        EXPECT_EQ(accent(color, "light"), inLight ? std::optional(color) : std::nullopt) << int{color.red};
        EXPECT_EQ(accent(color, "dark"), inDark ? std::optional(color) : std::nullopt) << int{color.red};
        EXPECT_EQ(accent(color, "light-contrast"), std::nullopt);
        EXPECT_EQ(accent(color, "dark-contrast"), std::nullopt);
    }
    EXPECT_EQ(wantedLook({}, "", false).accent, std::nullopt);
}

} // namespace
} // namespace vantor
