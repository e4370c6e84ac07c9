// QrEncoder: bytes to the modules of a QR code.
#pragma once

#include "platform/bitmap.h"

#include <optional>
#include <string_view>

namespace vantor {

class QrEncoder {
public:
    // White modules on each side of the code, which are part of the picture.
    static constexpr int kQuietModules = 1;

    virtual ~QrEncoder() = default;

    // The smallest code (ISO/IEC 18004, Model 2) that holds the bytes in 8-bit mode at error-correction level M:
    // a square picture of one pixel a module, 23 to 179 wide with its quiet modules. No bytes make a code as
    // well. Absent when there are more than 2,331 bytes, or on lack of memory.
    [[nodiscard]] virtual std::optional<Bitmap> encode(std::string_view bytes) const = 0;
};

} // namespace vantor
