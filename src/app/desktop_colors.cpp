#include "app/desktop_colors.h"

#include <QApplication>
#include <QPalette>
#include <QStyleFactory>

namespace vantor {
namespace {

QPalette darkPalette() {
    const QColor window(0x24, 0x26, 0x2b);
    const QColor base(0x1b, 0x1d, 0x21);
    const QColor text(0xec, 0xed, 0xef);
    const QColor dimmed(0x80, 0x84, 0x8c);
    QPalette palette(QColor(0x34, 0x37, 0x3e), window);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, window);
    palette.setColor(QPalette::ToolTipBase, base);
    palette.setColor(QPalette::PlaceholderText, QColor(0x9a, 0x9e, 0xa6));
    palette.setColor(QPalette::Highlight, QColor(0x3d, 0x6f, 0xc4));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x7a, 0xb4, 0xff));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText,
                            QPalette::BrightText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, dimmed);
    }
    return palette;
}

} // namespace

void applyColorScheme(QApplication& application) {
    if (qEnvironmentVariable("VANTOR_COLOR_SCHEME") != QLatin1String("dark"))
        return;
    application.setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    application.setPalette(darkPalette());
}

} // namespace vantor
