// PngWriter: pictures to PNG files (ISO/IEC 15948).
#pragma once

#include "platform/bitmap.h"

#include <optional>
#include <string>

namespace vantor {

class PngWriter {
public:
    virtual ~PngWriter() = default;

    // The file's bytes: 1-bit greyscale, not interlaced, no further chunks. Absent on lack of memory or for a
    // picture without pixels, which PNG does not know.
    [[nodiscard]] virtual std::optional<std::string> encode(const Bitmap& picture) const = 0;
};

} // namespace vantor
