#include "ui/frame/theme.h"

#include <QApplication>
#include <QFontDatabase>
#include <algorithm>
#include <cmath>

namespace vantor::ui::theme {
namespace {

constexpr double kBodySize = 13;

QFont scaled(double size, QFont::Weight weight) {
    QFont font = QApplication::font();
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * size / kBodySize);
    else
        font.setPixelSize(static_cast<int>(std::lround(font.pixelSize() * size / kBodySize)));
    font.setWeight(weight);
    return font;
}

// The share of one colour over another.
QColor mixed(const QColor& over, const QColor& under, double share) {
    const auto part = [share](int a, int b) {
        return static_cast<int>(std::lround(a * share + b * (1 - share)));
    };
    return {part(over.red(), under.red()), part(over.green(), under.green()),
            part(over.blue(), under.blue())};
}

QColor byLight(const QPalette& palette, const QColor& light, const QColor& dark) {
    return isDark(palette) ? dark : light;
}

double luminance(const QColor& color) {
    const auto linear = [](double share) {
        return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& a, const QColor& b) {
    const auto [dark, light] = std::minmax({luminance(a), luminance(b)});
    return (light + 0.05) / (dark + 0.05);
}

} // namespace

QFont titleFont() {
    return scaled(20, QFont::Bold);
}

QFont headlineFont() {
    return scaled(15, QFont::DemiBold);
}

QFont bodyFont() {
    return scaled(kBodySize, QFont::Normal);
}

QFont captionFont() {
    return scaled(12, QFont::Normal);
}

QFont captionBoldFont() {
    return scaled(12, QFont::Bold);
}

QFont tinyFont() {
    return scaled(11, QFont::Normal);
}

QFont countFont() {
    return scaled(17, QFont::Bold);
}

QFont monospacedFont() {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    const QFont size = captionFont();
    if (size.pointSizeF() > 0)
        font.setPointSizeF(size.pointSizeF());
    else
        font.setPixelSize(size.pixelSize());
    return font;
}

bool isDark(const QPalette& palette) {
    return luminance(palette.color(QPalette::Window)) < luminance(palette.color(QPalette::WindowText));
}

QColor text(const QPalette& palette) {
    return palette.color(QPalette::WindowText);
}

QColor secondaryText(const QPalette& palette) {
    // Sixty per cent of the text's colour, or as much more as it takes to be read.
    const QColor window = palette.color(QPalette::Window);
    double share = 0.6;
    QColor color = mixed(text(palette), window, share);
    while (contrast(color, window) < 4.5 && share < 1) {
        share += 0.05;
        color = mixed(text(palette), window, share);
    }
    return color;
}

QColor accent(const QPalette& palette) {
    QColor color = palette.color(QPalette::Active, QPalette::Highlight);
    for (int i = 0; i < 20 && contrast(color, Qt::white) < 4.5; ++i)
        color = color.darker(108);
    return color;
}

QColor onAccent(const QPalette&) {
    return Qt::white;
}

QColor blue(const QPalette& palette) {
    return byLight(palette, QColor(0x1f, 0x5f, 0xbf), QColor(0x7a, 0xb4, 0xff));
}

QColor purple(const QPalette& palette) {
    return byLight(palette, QColor(0x7b, 0x3f, 0xa8), QColor(0x8a, 0x4f, 0xb8));
}

QColor green(const QPalette& palette) {
    return byLight(palette, QColor(0x1b, 0x75, 0x36), QColor(0x5d, 0xd0, 0x7f));
}

QColor red(const QPalette& palette) {
    return byLight(palette, QColor(0xb3, 0x26, 0x1e), QColor(0xff, 0x8f, 0x87));
}

QColor hairline(const QPalette& palette) {
    return mixed(text(palette), palette.color(QPalette::Window), 0.14);
}

QColor edge(const QPalette& palette) {
    return mixed(text(palette), palette.color(QPalette::Window), 0.3);
}

QColor hovered(const QPalette& palette) {
    return mixed(text(palette), palette.color(QPalette::Base), 0.05);
}

QColor litUp(const QPalette& palette) {
    return mixed(green(palette), palette.color(QPalette::Base), 0.25);
}

QColor header(const QPalette& palette) {
    return mixed(text(palette), palette.color(QPalette::Window), 0.04);
}

QColor noticeGround(Notice::Kind kind, const QPalette& palette) {
    switch (kind) {
    case Notice::Kind::Done:
        return byLight(palette, QColor(0xE7, 0xF4, 0xEC), QColor(0x17, 0x33, 0x26));
    case Notice::Kind::Warning:
        return byLight(palette, QColor(0xFF, 0xF4, 0xDC), QColor(0x3A, 0x2F, 0x12));
    case Notice::Kind::Error:
        return byLight(palette, QColor(0xFC, 0xE8, 0xE6), QColor(0x45, 0x1C, 0x19));
    case Notice::Kind::Plain:
        break;
    }
    return byLight(palette, QColor(0xEC, 0xEE, 0xF2), QColor(0x26, 0x2A, 0x32));
}

} // namespace vantor::ui::theme
