// Web addresses: which texts are one.
#pragma once

#include <string_view>

namespace vantor {

// True for an absolute http or https address that names a host (RFC 3986). What the RFC has written in
// another way, such as spaces, control characters and letters beyond ASCII, makes a text none. So does a
// user's name before the host: it only makes one host look like another.
[[nodiscard]] bool isWebAddress(std::string_view text);

} // namespace vantor
