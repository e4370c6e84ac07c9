// DesktopSettings: how the user wants programs to look, as their desktop knows it.
#pragma once

#include "base/color.h"
#include "base/signal.h"

#include <optional>

namespace vantor {

// By default what is known where nobody can be asked: nothing.
struct DesktopLook {
    enum class ColorScheme { Unknown, Light, Dark };

    ColorScheme colorScheme = ColorScheme::Unknown;
    std::optional<Rgb> accent;
    bool highContrast = false;
    bool reducedMotion = false;

    bool operator==(const DesktopLook&) const = default;
};

class DesktopSettings {
public:
    virtual ~DesktopSettings() = default;

    [[nodiscard]] virtual const DesktopLook& look() const = 0;
    // On the user-interface thread, after look() has become another one.
    [[nodiscard]] Signal<>& didChange() { return m_didChange; }

private:
    Signal<> m_didChange;
};

} // namespace vantor
