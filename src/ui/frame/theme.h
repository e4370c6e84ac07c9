// Every measure, font and colour that the program's own widgets use.
//
// - Lengths are device-independent pixels. Fonts follow the user's font: the sizes named here are those at a body
//   size of 13.
// - Colours follow the palette that they are asked for, light or dark, with strong edges or without. Texts stand out
//   from whatever they stand on by at least 4.5 : 1, edges of what is filled in by 3 : 1 (WCAG 2.1).
#pragma once

#include "view/look.h"
#include "view/notices.h"

#include <QColor>
#include <QFont>
#include <QPalette>

namespace vantor::ui::theme {

inline constexpr int kStep = 8;
inline constexpr int kHalfStep = kStep / 2;
inline constexpr int kMargin = 2 * kStep;
inline constexpr int kSheetMargin = 3 * kStep;
// Beside the text of a button or row.
inline constexpr int kPadding = kStep + kHalfStep;
inline constexpr int kRowHeight = 60;
// Of buttons, fields and boxes at least, by themselves and in rows.
inline constexpr int kControlHeight = 32;
inline constexpr int kRowControlHeight = 28;
inline constexpr int kCornerRadius = 6;
inline constexpr int kTagRadius = 4;
// Around what has the focus.
inline constexpr int kFocusRing = 2;
inline constexpr int kSymbolSize = 18;
inline constexpr int kCommandSymbolSize = 20;
inline constexpr int kMarkerSize = 8;
inline constexpr int kLogoSize = 40;
// The codes on screen, and the white around them: with the code's own quiet module four modules of the largest.
inline constexpr int kCodeSize = 250;
inline constexpr int kCodePlateMargin = 36;
inline constexpr int kCodePlateRadius = 8;

[[nodiscard]] QFont badgeFont();
[[nodiscard]] QFont titleFont();
[[nodiscard]] QFont headlineFont();
[[nodiscard]] QFont bodyFont();
[[nodiscard]] QFont captionFont();
[[nodiscard]] QFont captionBoldFont();
// Under symbols and counts.
[[nodiscard]] QFont labelFont();
[[nodiscard]] QFont countFont();
[[nodiscard]] QFont monospacedFont();

// The colours of a look, of which the functions below find theirs: `Base` is that of fields, `Button` that of bars,
// rows and buttons.
[[nodiscard]] QPalette paletteOf(const Look& look);

[[nodiscard]] bool isDark(const QPalette& palette);
[[nodiscard]] QColor window(const QPalette& palette);
// Bars, rows, lists and buttons.
[[nodiscard]] QColor surface(const QPalette& palette);
[[nodiscard]] QColor field(const QPalette& palette);
[[nodiscard]] QColor text(const QPalette& palette);
[[nodiscard]] QColor secondaryText(const QPalette& palette);
[[nodiscard]] QColor accent(const QPalette& palette);
[[nodiscard]] QColor onAccent(const QPalette& palette);
[[nodiscard]] QColor hovered(const QPalette& palette);
[[nodiscard]] QColor pressed(const QPalette& palette);
// Between regions and rows.
[[nodiscard]] QColor hairline(const QPalette& palette);
// Around buttons and lists, and around what is filled in: the latter has to be seen to be found.
[[nodiscard]] QColor edge(const QPalette& palette);
[[nodiscard]] QColor fieldEdge(const QPalette& palette);
[[nodiscard]] QColor focusRing(const QPalette& palette);
[[nodiscard]] QColor blue(const QPalette& palette);
// Behind white text.
[[nodiscard]] QColor purple(const QPalette& palette);
[[nodiscard]] QColor green(const QPalette& palette);
[[nodiscard]] QColor greenGround(const QPalette& palette);
[[nodiscard]] QColor amber(const QPalette& palette);
[[nodiscard]] QColor red(const QPalette& palette);
[[nodiscard]] QColor activeRow(const QPalette& palette);
// A row that was just scanned.
[[nodiscard]] QColor litUp(const QPalette& palette);
// Behind a notice of this kind.
[[nodiscard]] QColor noticeGround(Notice::Kind kind, const QPalette& palette);

// For controls on a ground that is no surface: their grounds, edges and lights as they show there.
[[nodiscard]] QPalette paletteOn(const QColor& ground, const QPalette& palette);

// The share of one colour over another.
[[nodiscard]] QColor mixed(const QColor& over, const QColor& under, double share);

} // namespace vantor::ui::theme
