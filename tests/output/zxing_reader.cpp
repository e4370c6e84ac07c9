#include "tests/output/code_readers.h"

#define ZX_USE_UTF8 1
#include <ZXing/ReadBarcode.h>

namespace vantor::testing {

std::optional<std::string> readByZxing(const GrayPicture& picture) {
    const ZXing::ImageView view(picture.pixels.data(), picture.width, picture.height,
                                ZXing::ImageFormat::Lum);
    const auto found =
        ZXing::ReadBarcodes(view, ZXing::DecodeHints().setFormats(ZXing::BarcodeFormat::QRCode));
    if (found.size() != 1 || !found.front().isValid())
        return std::nullopt;
    const auto& bytes = found.front().bytes();
    return std::string(bytes.begin(), bytes.end());
}

} // namespace vantor::testing
