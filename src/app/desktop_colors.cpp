#include "app/desktop_colors.h"

#include "ui/frame/style.h"

#include <QApplication>

namespace vantor {

void applyColorScheme(QApplication&) {
    ui::applyLook(wantedLook({}, qEnvironmentVariable("VANTOR_COLOR_SCHEME").toStdString(), false));
}

} // namespace vantor
