// Clipboard: what the user copies.
#pragma once

#include "platform/bitmap.h"

namespace vantor {

class Clipboard {
public:
    virtual ~Clipboard() = default;

    // Clears the clipboard and puts the picture there, as an image that other programs can paste.
    virtual void setPicture(const Bitmap& picture) = 0;
};

} // namespace vantor
