// QrencodeEncoder: QrEncoder on libqrencode. Stateless; may be used from any thread.
#pragma once

#include "platform/qr_encoder.h"

namespace vantor {

class QrencodeEncoder final : public QrEncoder {
public:
    [[nodiscard]] std::optional<Bitmap> encode(std::string_view bytes) const override;
};

} // namespace vantor
