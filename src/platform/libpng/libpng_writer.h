// LibpngWriter: PngWriter on libpng. Stateless; may be used from any thread.
#pragma once

#include "platform/png_writer.h"

namespace vantor {

class LibpngWriter final : public PngWriter {
public:
    [[nodiscard]] std::optional<std::string> encode(const Bitmap& picture) const override;
};

} // namespace vantor
