// Two independent readers of QR codes.
#pragma once

#include "tests/support/gray_picture.h"

#include <optional>
#include <string>

namespace vantor::testing {

// The bytes of the one QR code in the picture; absent when none or several are read.
[[nodiscard]] std::optional<std::string> readByZxing(const GrayPicture& picture);
[[nodiscard]] std::optional<std::string> readByZbar(const GrayPicture& picture);

} // namespace vantor::testing
