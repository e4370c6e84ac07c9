// Tells in the notices how the stores' files were found at the start; what takes long is read beside the window.
#pragma once

#include "ui/frame/services.h"

namespace vantor::ui {

// To be called once, after the document was loaded. Goes on only as long as there is an owner.
void tellHowItLoaded(QObject* owner, const Services& services);

} // namespace vantor::ui
