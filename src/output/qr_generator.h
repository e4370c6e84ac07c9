// QRGenerator: texts to square pictures of QR codes (ISO/IEC 18004, 8-bit mode, error-correction level M).
//
// Keeps nothing between calls; borrows the encoder for its lifetime.
#pragma once

#include "platform/bitmap.h"
#include "platform/qr_encoder.h"

#include <optional>
#include <string_view>

namespace vantor {

class QRGenerator {
public:
    explicit QRGenerator(const QrEncoder& encoder) : m_encoder(encoder) {}

    // A picture of exactly `size` × `size` pixels, its modules stretched to fill it, each pixel taking the
    // module under its centre. Absent when the text is not valid UTF-8, takes more than 2,331 bytes, or
    // `size` is under 1.
    [[nodiscard]] std::optional<Bitmap> generate(std::string_view from, int size) const;

    // The modules themselves, one pixel each, with their quiet zone; absent as above.
    [[nodiscard]] std::optional<Bitmap> modules(std::string_view from) const;

private:
    const QrEncoder& m_encoder;
};

// The square picture stretched, or shrunk, to `size` × `size` pixels (at least 1), nearest neighbour.
[[nodiscard]] Bitmap stretched(const Bitmap& square, int size);

} // namespace vantor
