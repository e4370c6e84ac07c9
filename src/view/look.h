// Look: which of the program's looks is wanted, whoever says so.
#pragma once

#include "base/color.h"
#include "platform/desktop_settings.h"

#include <optional>
#include <string_view>

namespace vantor {

struct Look {
    bool dark = false;
    bool highContrast = false;
    bool reducedMotion = false;
    // The desktop's; absent where the program's own is to be used.
    std::optional<Rgb> accent;

    bool operator==(const Look&) const = default;
};

// The environment variable VANTOR_COLOR_SCHEME, above all else: "light", "dark", "light-contrast" or
// "dark-contrast". The first two say nothing about contrast; anything else says nothing at all.
//
// Then what the desktop tells, and where it does not tell light from dark, the palette of its toolkit. Its accent
// is taken only where it can be seen on the program's grounds, and what is written on it be read.
[[nodiscard]] Look wantedLook(const DesktopLook& desktop, std::string_view environment, bool platformIsDark);

} // namespace vantor
