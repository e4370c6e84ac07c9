// QtClipboard: the desktop's clipboard.
#pragma once

#include "platform/clipboard.h"

namespace vantor {

class QtClipboard final : public Clipboard {
public:
    // A picture without pixels only clears the clipboard.
    void setPicture(const Bitmap& picture) override;
};

} // namespace vantor
