#include "base/color.h"

#include <algorithm>
#include <cmath>

namespace vantor {
namespace {

double luminance(const Rgb& color) {
    const auto linear = [](std::uint8_t part) {
        const double share = part / 255.0;
        return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
}

} // namespace

double contrast(const Rgb& a, const Rgb& b) {
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

} // namespace vantor
