// Light or dark, as the desktop has it.
#pragma once

class QApplication;

namespace vantor {

// Gives the program a dark palette where the environment variable VANTOR_COLOR_SCHEME says "dark", for desktops
// whose own theme the toolkit does not follow. "light", or nothing, leaves the platform's palette.
void applyColorScheme(QApplication& application);

} // namespace vantor
