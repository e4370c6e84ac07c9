// Checksums: telling whether bytes are the same ones as before, against accidents, not against malice.
#pragma once

#include <string>
#include <string_view>

namespace vantor {

// CRC-32 (ISO 3309) and the count of bytes: "1a2b3c4d-1234".
[[nodiscard]] std::string checksumOf(std::string_view bytes);

} // namespace vantor
