#include "ui/frame/theme.h"

#include <QApplication>
#include <QFontDatabase>
#include <cmath>
#include <initializer_list>

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

QColor byLight(const QPalette& palette, QRgb light, QRgb dark) {
    return isDark(palette) ? QColor(dark) : QColor(light);
}

struct Grounds {
    QRgb window;
    QRgb surface;
    QRgb field;
    QRgb hovered;
    QRgb text;
    QRgb accent;
    QRgb onAccent;
};
constexpr Grounds kLight{0xFFF5F6F8, 0xFFFFFFFF, 0xFFFFFFFF, 0xFFECEEF2, 0xFF1A1E25, 0xFF2B5FD9, 0xFFFFFFFF};
constexpr Grounds kDark{0xFF16181D, 0xFF1C1F25, 0xFF121419, 0xFF262A32, 0xFFEDEFF3, 0xFF7AA2FF, 0xFF0E1530};

// What lies between text and ground, and is stronger where the user asks for contrast.
struct Lines {
    QRgb secondaryText;
    QRgb hairline;
    QRgb edge;
    QRgb fieldEdge;
};
constexpr Lines kLightLines{0xFF59626F, 0xFFE2E5EA, 0xFFC9CED6, 0xFF858D99};
constexpr Lines kDarkLines{0xFFA2AAB7, 0xFF2A2E36, 0xFF3B414C, 0xFF6A727E};
constexpr Lines kStrongLightLines{0xFF333A45, 0xFF858D99, 0xFF59626F, 0xFF333A45};
constexpr Lines kStrongDarkLines{0xFFD3D8E0, 0xFF6A727E, 0xFFA2AAB7, 0xFFD3D8E0};

constexpr QPalette::ColorRole kHairline = QPalette::Midlight;
constexpr QPalette::ColorRole kEdge = QPalette::Mid;
constexpr QPalette::ColorRole kFieldEdge = QPalette::Dark;
constexpr QPalette::ColorRole kHovered = QPalette::AlternateBase;

} // namespace

QFont badgeFont() {
    return scaled(20, QFont::Bold);
}

QFont titleFont() {
    return scaled(18, QFont::Bold);
}

QFont headlineFont() {
    return scaled(14, QFont::DemiBold);
}

QFont bodyFont() {
    return scaled(kBodySize, QFont::Normal);
}

QFont captionFont() {
    return scaled(11.5, QFont::Normal);
}

QFont captionBoldFont() {
    return scaled(11.5, QFont::Bold);
}

QFont labelFont() {
    return scaled(10.5, QFont::Normal);
}

QFont countFont() {
    return scaled(16, QFont::Bold);
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

QPalette paletteOf(const Look& look) {
    const auto& grounds = look.dark ? kDark : kLight;
    const auto& lines = look.dark ? (look.highContrast ? kStrongDarkLines : kDarkLines)
                                  : (look.highContrast ? kStrongLightLines : kLightLines);
    QColor accent(grounds.accent);
    if (look.accent)
        accent = QColor(look.accent->red, look.accent->green, look.accent->blue);
    QPalette palette;
    const auto set = [&palette](const QColor& color, std::initializer_list<QPalette::ColorRole> roles) {
        for (const auto role : roles)
            palette.setColor(role, color);
    };
    using enum QPalette::ColorRole;
    set(grounds.window, {Window});
    set(grounds.surface, {Button, Light, ToolTipBase});
    set(grounds.field, {Base});
    set(grounds.hovered, {kHovered});
    set(grounds.text, {WindowText, Text, ButtonText, BrightText, ToolTipText});
    set(lines.secondaryText, {PlaceholderText});
    set(lines.hairline, {kHairline});
    set(lines.edge, {kEdge});
    set(lines.fieldEdge, {kFieldEdge});
    set(accent, {Highlight, Link, LinkVisited});
    set(grounds.onAccent, {HighlightedText});
    set(Qt::black, {Shadow});
    const QColor disabled = mixed(grounds.text, grounds.window, look.highContrast ? 0.55 : 0.35);
    for (const auto role : {WindowText, Text, ButtonText, ToolTipText, PlaceholderText, HighlightedText})
        palette.setColor(QPalette::Disabled, role, disabled);
    palette.setColor(QPalette::Disabled, Highlight, lines.hairline);
    palette.setColor(QPalette::Disabled, Base, grounds.window);
    return palette;
}

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < 128;
}

QColor window(const QPalette& palette) {
    return palette.color(QPalette::Window);
}

QColor surface(const QPalette& palette) {
    return palette.color(QPalette::Button);
}

QColor field(const QPalette& palette) {
    return palette.color(QPalette::Base);
}

QColor text(const QPalette& palette) {
    return palette.color(QPalette::Text);
}

QColor secondaryText(const QPalette& palette) {
    return palette.color(QPalette::PlaceholderText);
}

QColor accent(const QPalette& palette) {
    return palette.color(QPalette::Highlight);
}

QColor onAccent(const QPalette& palette) {
    return palette.color(QPalette::HighlightedText);
}

QColor hovered(const QPalette& palette) {
    return palette.color(kHovered);
}

QColor pressed(const QPalette& palette) {
    return mixed(text(palette), hovered(palette), 0.08);
}

QColor hairline(const QPalette& palette) {
    return palette.color(kHairline);
}

QColor edge(const QPalette& palette) {
    return palette.color(kEdge);
}

QColor fieldEdge(const QPalette& palette) {
    return palette.color(kFieldEdge);
}

QColor focusRing(const QPalette& palette) {
    QColor color = accent(palette);
    color.setAlphaF(0.4F);
    return color;
}

QColor blue(const QPalette& palette) {
    return byLight(palette, kLight.accent, kDark.accent);
}

QColor purple(const QPalette& palette) {
    return byLight(palette, 0xFF6B3FC4, 0xFF7C52D6);
}

QColor green(const QPalette& palette) {
    return byLight(palette, 0xFF17794A, 0xFF5CCB8F);
}

QColor greenGround(const QPalette& palette) {
    return byLight(palette, 0xFFE7F4EC, 0xFF173326);
}

QColor amber(const QPalette& palette) {
    return byLight(palette, 0xFF8A5A00, 0xFFF2C14E);
}

QColor red(const QPalette& palette) {
    return byLight(palette, 0xFFB3261E, 0xFFFF8A80);
}

QColor activeRow(const QPalette& palette) {
    return byLight(palette, 0xFFF3FAF6, 0xFF1A2520);
}

QColor litUp(const QPalette& palette) {
    return mixed(green(palette), surface(palette), 0.25);
}

QColor noticeGround(Notice::Kind kind, const QPalette& palette) {
    switch (kind) {
    case Notice::Kind::Done:
        return greenGround(palette);
    case Notice::Kind::Warning:
        return byLight(palette, 0xFFFFF4DC, 0xFF3A2F12);
    case Notice::Kind::Error:
        return byLight(palette, 0xFFFCE8E6, 0xFF451C19);
    case Notice::Kind::Plain:
        break;
    }
    return hovered(palette);
}

QPalette paletteOn(const QColor& ground, const QPalette& palette) {
    QPalette own;
    own.setColor(QPalette::Button, ground);
    own.setColor(kEdge, mixed(secondaryText(palette), ground, 0.7));
    own.setColor(kHovered, mixed(text(palette), ground, 0.08));
    return own;
}

QColor mixed(const QColor& over, const QColor& under, double share) {
    const auto part = [share](int a, int b) {
        return static_cast<int>(std::lround(a * share + b * (1 - share)));
    };
    return {part(over.red(), under.red()), part(over.green(), under.green()),
            part(over.blue(), under.blue())};
}

} // namespace vantor::ui::theme
