// Style: how every control looks: flat, with the colours and measures of theme.h, over the toolkit's plainest style.
//
// - What a control does, its texts and its parts stay the toolkit's; the style paints them, measures them and gives
//   them the program's own symbols.
// - Whatever control has the focus is marked in one way: its edge in the accent colour, and a ring around it.
// - Nothing is animated, and nothing changes its size with its state.
#pragma once

#include "view/look.h"

#include <QProxyStyle>

namespace vantor::ui {

class Style : public QProxyStyle {
public:
    Style();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    [[nodiscard]] QRect subElementRect(SubElement element, const QStyleOption* option,
                                       const QWidget* widget) const override;
    [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                       SubControl part, const QWidget* widget) const override;
    [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                         const QWidget* widget) const override;
    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption* option,
                                  const QWidget* widget) const override;
    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                                QStyleHintReturn* data) const override;
    [[nodiscard]] QIcon standardIcon(StandardPixmap symbol, const QStyleOption* option,
                                     const QWidget* widget) const override;
    [[nodiscard]] QPixmap standardPixmap(StandardPixmap symbol, const QStyleOption* option,
                                         const QWidget* widget) const override;
};

// Gives the whole program this look, at once; windows that are open follow.
void applyLook(const Look& look);

} // namespace vantor::ui
