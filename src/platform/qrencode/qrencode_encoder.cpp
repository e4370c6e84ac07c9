#include "platform/qrencode/qrencode_encoder.h"

#include "base/releaser.h"

#include <qrencode.h>

#include <limits>
#include <memory>

namespace vantor {

std::optional<Bitmap> QrencodeEncoder::encode(std::string_view bytes) const {
    if (bytes.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        return std::nullopt;
    const std::unique_ptr<QRinput, Releaser<QRinput_free>> input(QRinput_new2(0, QR_ECLEVEL_M));
    if (!input)
        return std::nullopt;
    // The library refuses a segment without bytes but makes a code of an input without segments.
    if (!bytes.empty() && QRinput_append(input.get(), QR_MODE_8, static_cast<int>(bytes.size()),
                                         reinterpret_cast<const unsigned char*>(bytes.data())) != 0)
        return std::nullopt;
    const std::unique_ptr<QRcode, Releaser<QRcode_free>> code(QRcode_encodeInput(input.get()));
    if (!code)
        return std::nullopt;

    Bitmap modules(code->width + 2 * kQuietModules, code->width + 2 * kQuietModules);
    const unsigned char* module = code->data;
    for (int y = 0; y < code->width; ++y) {
        for (int x = 0; x < code->width; ++x, ++module) {
            if ((*module & 1U) != 0)
                modules.setBlack(x + kQuietModules, y + kQuietModules);
        }
    }
    return modules;
}

} // namespace vantor
