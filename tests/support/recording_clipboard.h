// RecordingClipboard: keeps every picture that was copied.
#pragma once

#include "platform/clipboard.h"

#include <vector>

namespace vantor::testing {

class RecordingClipboard final : public Clipboard {
public:
    // Oldest first; only the last one would still be on a clipboard.
    std::vector<Bitmap> pictures;

    void setPicture(const Bitmap& picture) override { pictures.push_back(picture); }
};

} // namespace vantor::testing
