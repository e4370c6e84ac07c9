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

namespace {

// The pixels of a row from `begin` to `end`, of which there is at least one.
void blacken(std::span<std::uint8_t> row, std::size_t begin, std::size_t end) {
    constexpr unsigned kAll = 0xFF;
    const auto first = static_cast<std::uint8_t>(kAll >> (begin % 8));
    const auto last = static_cast<std::uint8_t>(kAll << (7 - (end - 1) % 8));
    const std::size_t lastByte = (end - 1) / 8;
    if (begin / 8 == lastByte) {
        row[lastByte] |= first & last;
        return;
    }
    row[begin / 8] |= first;
    std::ranges::fill(row.subspan(begin / 8 + 1, lastByte - begin / 8 - 1), kAll);
    row[lastByte] |= last;
}

} // namespace

Bitmap stretched(const Bitmap& square, int size) {
    // The first pixel whose centre lies in each module, and the end; the same for columns and rows.
    const std::int64_t width = square.width();
    std::vector<int> first;
    first.reserve(static_cast<std::size_t>(width) + 1);
    for (std::int64_t module = 0; module <= width; ++module)
        first.push_back(static_cast<int>((2 * module * size + width - 1) / (2 * width)));

    Bitmap out(size, size);
    for (int line = 0; line < square.height(); ++line) {
        const int top = first[static_cast<std::size_t>(line)];
        const int bottom = first[static_cast<std::size_t>(line) + 1];
        if (top == bottom)
            continue;
        const auto row = out.row(top);
        for (int module = 0; module < square.width(); ++module) {
            const auto begin = static_cast<std::size_t>(first[static_cast<std::size_t>(module)]);
            const auto end = static_cast<std::size_t>(first[static_cast<std::size_t>(module) + 1]);
            if (begin < end && square.isBlack(module, line))
                blacken(row, begin, end);
        }
        for (int y = top + 1; y < bottom; ++y)
            std::ranges::copy(row, out.row(y).begin());
    }
    return out;
}

} // namespace vantor
