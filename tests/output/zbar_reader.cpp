#include "base/releaser.h"
#include "tests/output/code_readers.h"

#include <zbar.h>

#include <memory>

namespace vantor::testing {

std::optional<std::string> readByZbar(const GrayPicture& picture) {
    using Scanner = std::unique_ptr<zbar::zbar_image_scanner_t, Releaser<zbar::zbar_image_scanner_destroy>>;
    using Image = std::unique_ptr<zbar::zbar_image_t, Releaser<zbar::zbar_image_destroy>>;
    const Scanner scanner(zbar::zbar_image_scanner_create());
    zbar::zbar_image_scanner_set_config(scanner.get(), zbar::ZBAR_NONE, zbar::ZBAR_CFG_ENABLE, 0);
    zbar::zbar_image_scanner_set_config(scanner.get(), zbar::ZBAR_QRCODE, zbar::ZBAR_CFG_ENABLE, 1);
    // Otherwise it guesses a character set, mostly wrongly, and converts the bytes.
    zbar::zbar_image_scanner_set_config(scanner.get(), zbar::ZBAR_QRCODE, zbar::ZBAR_CFG_BINARY, 1);

    const Image image(zbar::zbar_image_create());
    zbar::zbar_image_set_format(image.get(), zbar_fourcc('Y', '8', '0', '0'));
    zbar::zbar_image_set_size(image.get(), static_cast<unsigned>(picture.width),
                              static_cast<unsigned>(picture.height));
    zbar::zbar_image_set_data(image.get(), picture.pixels.data(), picture.pixels.size(), nullptr);
    if (zbar::zbar_scan_image(scanner.get(), image.get()) != 1)
        return std::nullopt;
    const auto* const symbol = zbar::zbar_image_first_symbol(image.get());
    return std::string(zbar::zbar_symbol_get_data(symbol), zbar::zbar_symbol_get_data_length(symbol));
}

} // namespace vantor::testing
