// Asking before the program ends while something is not saved.
#pragma once

#include "ui/frame/services.h"

class QCloseEvent;

namespace vantor::ui {

// For the close event of a window: when it is the last one and something is still not saved after one more try, asks
// whether to stop all the same, and keeps the window. The end of the desktop's session never waits.
void askBeforeLosing(QWidget& window, const Services& services, QCloseEvent& event);

} // namespace vantor::ui
