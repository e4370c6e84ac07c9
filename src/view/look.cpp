#include "view/look.h"

#include <string>

namespace vantor {
namespace {

// Text on it needs 4.5 : 1 (WCAG 2.1). As text is the colour of the grounds, or nearly, an accent on which it can be read
// stands out from them by more than 4 : 1, where an edge needs 3 : 1.
bool canBeAccent(const Rgb& color, bool onDark) {
    constexpr Rgb kTextInLight{0xFF, 0xFF, 0xFF};
    constexpr Rgb kTextInDark{0x0E, 0x15, 0x30};
    return contrast(color, onDark ? kTextInDark : kTextInLight) >= 4.5;
}

} // namespace

Look wantedLook(const DesktopLook& desktop, std::string_view environment, bool platformIsDark) {
    using ColorScheme = DesktopLook::ColorScheme;
    Look look;
    look.dark = desktop.colorScheme == ColorScheme::Unknown ? platformIsDark
                                                            : desktop.colorScheme == ColorScheme::Dark;
    look.highContrast = desktop.highContrast;
    look.reducedMotion = desktop.reducedMotion;
    for (const bool dark : {false, true}) {
        const std::string scheme = dark ? "dark" : "light";
        const bool withContrast = environment == scheme + "-contrast";
        if (environment == scheme || withContrast) {
            look.dark = dark;
            look.highContrast |= withContrast;
        }
    }
    // Where contrast is wanted, the program's own colours have more of it than an accent has to have.
    if (desktop.accent && !look.highContrast && canBeAccent(*desktop.accent, look.dark))
        look.accent = desktop.accent;
    return look;
}

} // namespace vantor
