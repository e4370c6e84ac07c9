#include "base/checksum.h"

#include <zlib.h>

#include <array>
#include <cstdio>

namespace vantor {

std::string checksumOf(std::string_view bytes) {
    const auto sum = ::crc32_z(0, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size());
    std::array<char, 40> text{};
    const auto length =
        std::snprintf(text.data(), text.size(), "%08lx-%zu", static_cast<unsigned long>(sum), bytes.size());
    return {text.data(), static_cast<std::size_t>(length)};
}

} // namespace vantor
