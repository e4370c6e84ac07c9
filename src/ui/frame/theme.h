// Every measure, font and colour that the program's own widgets use.
//
// - Lengths are device-independent pixels. Fonts follow the user's font: the sizes named here are those at a body
//   size of 13.
// - Colours follow the palette that they are asked for, light or dark; those of text stand out from the window by
//   at least 4.5 : 1 (WCAG 2.1).
#pragma once

#include "view/notices.h"

#include <QColor>
#include <QFont>
#include <QPalette>

namespace vantor::ui::theme {

inline constexpr int kStep = 8;
inline constexpr int kHalfStep = kStep / 2;
inline constexpr int kMargin = 2 * kStep;
inline constexpr int kSheetMargin = 3 * kStep;
inline constexpr int kRowHeight = 56;
inline constexpr int kCornerRadius = 6;
inline constexpr int kSymbolSize = 18;
inline constexpr int kMarkerSize = 8;
inline constexpr int kLogoSize = 40;
// The codes on screen, and the white around them: with the code's own quiet module four modules of the largest.
inline constexpr int kCodeSize = 250;
inline constexpr int kCodePlateMargin = 36;
inline constexpr int kCodePlateRadius = 8;

[[nodiscard]] QFont titleFont();
[[nodiscard]] QFont headlineFont();
[[nodiscard]] QFont bodyFont();
[[nodiscard]] QFont captionFont();
[[nodiscard]] QFont captionBoldFont();
[[nodiscard]] QFont tinyFont();
[[nodiscard]] QFont countFont();
[[nodiscard]] QFont monospacedFont();

[[nodiscard]] bool isDark(const QPalette& palette);
[[nodiscard]] QColor text(const QPalette& palette);
[[nodiscard]] QColor secondaryText(const QPalette& palette);
[[nodiscard]] QColor accent(const QPalette& palette);
[[nodiscard]] QColor onAccent(const QPalette& palette);
[[nodiscard]] QColor blue(const QPalette& palette);
// Behind white text.
[[nodiscard]] QColor purple(const QPalette& palette);
[[nodiscard]] QColor green(const QPalette& palette);
[[nodiscard]] QColor red(const QPalette& palette);
[[nodiscard]] QColor hairline(const QPalette& palette);
// Around lists.
[[nodiscard]] QColor edge(const QPalette& palette);
[[nodiscard]] QColor hovered(const QPalette& palette);
// A row that was just scanned.
[[nodiscard]] QColor litUp(const QPalette& palette);
[[nodiscard]] QColor header(const QPalette& palette);
// Behind a notice of this kind.
[[nodiscard]] QColor noticeGround(Notice::Kind kind, const QPalette& palette);

} // namespace vantor::ui::theme
