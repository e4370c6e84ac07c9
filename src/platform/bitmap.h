// Bitmap: a picture of black and white pixels, such as a QR code.
//
// Rows run from top to bottom, pixels from left to right, eight to a byte with the leftmost in the highest bit;
// a set bit is black. Every row starts at a byte of its own; the bits behind its last pixel are clear.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace vantor {

class Bitmap {
public:
    // All white; both lengths in pixels, 0 or more.
    Bitmap(int width, int height)
        : m_width(width),
          m_height(height),
          m_rowBytes((static_cast<std::size_t>(width) + 7) / 8),
          m_bytes(m_rowBytes * static_cast<std::size_t>(height)) {}

    [[nodiscard]] int width() const { return m_width; }
    [[nodiscard]] int height() const { return m_height; }

    [[nodiscard]] bool isBlack(int x, int y) const {
        return ((row(y)[static_cast<std::size_t>(x) / 8] << (x % 8)) & 0x80) != 0;
    }
    void setBlack(int x, int y) {
        row(y)[static_cast<std::size_t>(x) / 8] |= static_cast<std::uint8_t>(0x80 >> (x % 8));
    }

    [[nodiscard]] std::span<const std::uint8_t> row(int y) const {
        return std::span(m_bytes).subspan(m_rowBytes * static_cast<std::size_t>(y), m_rowBytes);
    }
    [[nodiscard]] std::span<std::uint8_t> row(int y) {
        return std::span(m_bytes).subspan(m_rowBytes * static_cast<std::size_t>(y), m_rowBytes);
    }

private:
    int m_width;
    int m_height;
    std::size_t m_rowBytes;
    std::vector<std::uint8_t> m_bytes;
};

} // namespace vantor
