// Runs the tests within an application that shows nothing on the screen.

#include "tests/ui/screens.h"
#include "ui/frame/style.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QDir>
#include <QTemporaryFile>

int main(int argc, char** argv) {
    QTemporaryFile screens(QDir::tempPath() + QStringLiteral("/screens-XXXXXX.json"));
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM") && screens.open()) {
        screens.write(vantor::testing::screensAsJson());
        screens.flush();
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + screens.fileName().toUtf8());
    }
    ::testing::InitGoogleMock(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    // As the program starts.
    vantor::ui::applyLook({});
    return RUN_ALL_TESTS();
}
