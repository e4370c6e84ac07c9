#include "ui/frame/style_measures.h"

#include "ui/frame/theme.h"
#include "ui/widgets/list_row.h"

#include <QStyleOption>
#include <algorithm>
#include <map>

namespace vantor::ui {
namespace {

constexpr int kScrollBar = 12;
constexpr int kShortestSlider = 32;
constexpr int kMessageSymbol = 32;

} // namespace

int controlHeight(const QStyleOption* option, const QWidget* widget) {
    const bool inRow = widget != nullptr && dynamic_cast<const ListRow*>(widget->parentWidget()) != nullptr;
    const int text = option != nullptr ? option->fontMetrics.height() : 0;
    return inRow ? std::max(theme::kRowControlHeight, text + theme::kStep)
                 : std::max(theme::kControlHeight, text + theme::kStep + theme::kHalfStep);
}

std::optional<int> measureOf(QStyle::PixelMetric metric) {
    static const std::map<QStyle::PixelMetric, int> kMeasures{
        {QStyle::PM_FocusFrameHMargin, theme::kFocusRing},
        {QStyle::PM_FocusFrameVMargin, theme::kFocusRing},
        {QStyle::PM_ScrollBarExtent, kScrollBar},
        {QStyle::PM_ScrollBarSliderMin, kShortestSlider},
        {QStyle::PM_ScrollView_ScrollBarSpacing, 0},
        {QStyle::PM_ButtonShiftHorizontal, 0},
        {QStyle::PM_ButtonShiftVertical, 0},
        {QStyle::PM_MenuBarPanelWidth, 0},
        {QStyle::PM_MenuBarHMargin, theme::kStep},
        {QStyle::PM_MenuPanelWidth, 1},
        {QStyle::PM_MenuHMargin, 0},
        {QStyle::PM_MenuVMargin, theme::kHalfStep},
        {QStyle::PM_ToolTipLabelFrameWidth, theme::kHalfStep},
        {QStyle::PM_IndicatorWidth, theme::kSymbolSize},
        {QStyle::PM_IndicatorHeight, theme::kSymbolSize},
        {QStyle::PM_ExclusiveIndicatorWidth, theme::kSymbolSize},
        {QStyle::PM_ExclusiveIndicatorHeight, theme::kSymbolSize},
        {QStyle::PM_ButtonIconSize, theme::kSymbolSize},
        {QStyle::PM_SmallIconSize, theme::kSymbolSize},
        {QStyle::PM_ListViewIconSize, theme::kSymbolSize},
        {QStyle::PM_MessageBoxIconSize, kMessageSymbol},
        {QStyle::PM_CheckBoxLabelSpacing, theme::kStep},
        {QStyle::PM_RadioButtonLabelSpacing, theme::kStep},
        {QStyle::PM_LayoutHorizontalSpacing, theme::kStep},
        {QStyle::PM_LayoutVerticalSpacing, theme::kStep},
        {QStyle::PM_LayoutLeftMargin, theme::kMargin},
        {QStyle::PM_LayoutTopMargin, theme::kMargin},
        {QStyle::PM_LayoutRightMargin, theme::kMargin},
        {QStyle::PM_LayoutBottomMargin, theme::kMargin},
    };
    const auto found = kMeasures.find(metric);
    return found != kMeasures.end() ? std::optional(found->second) : std::nullopt;
}

QRect scrollBarPart(const QStyleOptionSlider& bar, QStyle::SubControl part) {
    const bool across = bar.orientation == Qt::Horizontal;
    const int groove = across ? bar.rect.width() : bar.rect.height();
    const auto range = static_cast<qint64>(bar.maximum) - bar.minimum;
    int length = groove;
    if (range > 0) {
        const auto share = static_cast<qint64>(groove) * bar.pageStep / (range + bar.pageStep);
        length = std::clamp(static_cast<int>(share), std::min(kShortestSlider, groove), groove);
    }
    const int start = QStyle::sliderPositionFromValue(bar.minimum, bar.maximum, bar.sliderPosition,
                                                      groove - length, bar.upsideDown);
    int first = 0;
    int size = 0;
    if (part == QStyle::SC_ScrollBarGroove) {
        size = groove;
    } else if (part == QStyle::SC_ScrollBarSlider) {
        first = start;
        size = length;
    } else if (part == QStyle::SC_ScrollBarSubPage) {
        size = start;
    } else if (part == QStyle::SC_ScrollBarAddPage) {
        first = start + length;
        size = groove - first;
    } else {
        return {};
    }
    return QStyle::visualRect(bar.direction, bar.rect,
                              across ? QRect(first, 0, size, bar.rect.height())
                                     : QRect(0, first, bar.rect.width(), size));
}

} // namespace vantor::ui
