// Rgb: a colour, and how well two of them can be told apart (WCAG 2.1).
#pragma once

#include <cstdint>

namespace vantor {

// Opaque, in sRGB, eight bits a part.
struct Rgb {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    bool operator==(const Rgb&) const = default;
};

// From 1, the same, to 21, black and white; in either order.
[[nodiscard]] double contrast(const Rgb& a, const Rgb& b);

} // namespace vantor
