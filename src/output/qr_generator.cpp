#include "output/qr_generator.h"

#include "base/text.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace vantor {

std::optional<Bitmap> QRGenerator::generate(std::string_view from, int size) const {
    if (size < 1)
        return std::nullopt;
    const auto square = modules(from);
    if (!square)
        return std::nullopt;
    return stretched(*square, size);
}

std::optional<Bitmap> QRGenerator::modules(std::string_view from) const {
    return isValidUtf8(from) ? m_encoder.encode(from) : std::nullopt;
}

Bitmap stretched(const Bitmap& square, int size) {
    // The module under the centre of each pixel; the same for columns and rows.
    const auto width = static_cast<std::int64_t>(square.width());
    std::vector<int> module(static_cast<std::size_t>(size));
    for (int pixel = 0; pixel < size; ++pixel)
        module[static_cast<std::size_t>(pixel)] =
            static_cast<int>((2 * std::int64_t{pixel} + 1) * width / (2 * std::int64_t{size}));

    Bitmap out(size, size);
    for (int y = 0; y < size; ++y) {
        const int from = module[static_cast<std::size_t>(y)];
        auto row = out.row(y);
        if (y > 0 && from == module[static_cast<std::size_t>(y) - 1]) {
            std::ranges::copy(out.row(y - 1), row.begin());
            continue;
        }
        const auto modules = square.row(from);
        for (int x = 0; x < size; ++x) {
            const auto column = static_cast<unsigned>(module[static_cast<std::size_t>(x)]);
            const unsigned bit = (static_cast<unsigned>(modules[column / 8]) >> (7 - column % 8)) & 1U;
            row[static_cast<std::size_t>(x) / 8] |=
                static_cast<std::uint8_t>(bit << (7 - static_cast<unsigned>(x) % 8));
        }
    }
    return out;
}

} // namespace vantor
