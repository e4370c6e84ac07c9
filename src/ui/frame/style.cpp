#include "ui/frame/style.h"

#include "ui/frame/focus_mark.h"
#include "ui/frame/style_measures.h"
#include "ui/frame/style_painting.h"
#include "ui/frame/theme.h"
#include "ui/widgets/list_row.h"
#include "ui/widgets/symbol.h"
#include "ui/widgets/widgets.h"

#include <QApplication>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QStyleFactory>
#include <QStyleOption>
#include <QToolTip>
#include <algorithm>
#include <map>

namespace vantor::ui {
namespace {

constexpr int kComboArrow = 28;

// Of these options each paints one element; the toolkit says which in the element, not in the type.
template <typename Option>
const Option& as(const QStyleOption* option) {
    return *static_cast<const Option*>(option);
}

struct NamedSymbol {
    const char* name;
    QColor (*color)(const QPalette&);
};

const NamedSymbol* symbolOf(QStyle::StandardPixmap symbol) {
    static const std::map<QStyle::StandardPixmap, NamedSymbol> kSymbols{
        {QStyle::SP_MessageBoxQuestion, {"question", theme::accent}},
        {QStyle::SP_MessageBoxInformation, {"info", theme::accent}},
        {QStyle::SP_MessageBoxWarning, {"warning", theme::amber}},
        {QStyle::SP_MessageBoxCritical, {"error", theme::red}},
        {QStyle::SP_FileDialogNewFolder, {"folder-new", theme::text}},
        {QStyle::SP_FileDialogToParent, {"arrow-up", theme::text}},
        {QStyle::SP_FileDialogBack, {"arrow-left", theme::text}},
        {QStyle::SP_ArrowBack, {"arrow-left", theme::text}},
        {QStyle::SP_ArrowLeft, {"arrow-left", theme::text}},
        {QStyle::SP_ArrowForward, {"arrow-right", theme::text}},
        {QStyle::SP_ArrowRight, {"arrow-right", theme::text}},
        {QStyle::SP_FileDialogListView, {"list", theme::text}},
        {QStyle::SP_FileDialogDetailedView, {"details", theme::text}},
        {QStyle::SP_DirIcon, {"folder", theme::secondaryText}},
        {QStyle::SP_DirClosedIcon, {"folder", theme::secondaryText}},
        {QStyle::SP_DirOpenIcon, {"folder", theme::secondaryText}},
        {QStyle::SP_DirLinkIcon, {"folder", theme::secondaryText}},
        {QStyle::SP_DirHomeIcon, {"home", theme::secondaryText}},
        {QStyle::SP_FileIcon, {"file", theme::secondaryText}},
        {QStyle::SP_FileLinkIcon, {"file", theme::secondaryText}},
        {QStyle::SP_ComputerIcon, {"computer", theme::secondaryText}},
        {QStyle::SP_DesktopIcon, {"computer", theme::secondaryText}},
        {QStyle::SP_DriveHDIcon, {"computer", theme::secondaryText}},
        {QStyle::SP_LineEditClearButton, {"clear", theme::secondaryText}},
    };
    const auto found = kSymbols.find(symbol);
    return found != kSymbols.end() ? &found->second : nullptr;
}

// Whether it was one.
bool paintIndicator(QPainter& painter, QStyle::PrimitiveElement element, const QStyleOption& option) {
    switch (element) {
    case QStyle::PE_IndicatorCheckBox:
    case QStyle::PE_IndicatorItemViewItemCheck:
        paintCheckBox(painter, option);
        return true;
    case QStyle::PE_IndicatorRadioButton:
        paintRadioButton(painter, option);
        return true;
    case QStyle::PE_IndicatorArrowDown:
        paintArrow(painter, option.rect, 0, theme::text(option.palette));
        return true;
    case QStyle::PE_IndicatorArrowUp:
        paintArrow(painter, option.rect, 180, theme::text(option.palette));
        return true;
    case QStyle::PE_IndicatorArrowLeft:
        paintArrow(painter, option.rect, 90, theme::text(option.palette));
        return true;
    case QStyle::PE_IndicatorArrowRight:
        paintArrow(painter, option.rect, -90, theme::text(option.palette));
        return true;
    case QStyle::PE_IndicatorHeaderArrow:
        if (const auto order = as<QStyleOptionHeader>(&option).sortIndicator;
            order != QStyleOptionHeader::None)
            paintArrow(painter, option.rect, order == QStyleOptionHeader::SortDown ? 0 : 180,
                       theme::secondaryText(option.palette));
        return true;
    default:
        return false;
    }
}

void paintSymbolButton(QPainter& painter, const QStyleOption& option, const SymbolButton& button) {
    const auto* const row = dynamic_cast<const ListRow*>(button.parentWidget());
    const bool isLit = button.underMouse() || button.hasFocus() || (row != nullptr && row->isLit());
    const auto ink = !button.isEnabled() ? option.palette.color(QPalette::Disabled, QPalette::ButtonText)
                     : isLit             ? theme::text(option.palette)
                                         : theme::secondaryText(option.palette);
    const QSize size = button.iconSize();
    const QRect place(option.rect.x() + (option.rect.width() - size.width()) / 2,
                      option.rect.y() + (option.rect.height() - size.height()) / 2, size.width(),
                      size.height());
    painter.drawPixmap(place, symbolPixmap(button.symbol(), size.width(), ink, button.devicePixelRatioF()));
}

} // namespace

Style::Style() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

void Style::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                          const QWidget* widget) const {
    switch (element) {
    case PE_PanelButtonCommand:
        return paintPushButton(*painter, as<QStyleOptionButton>(option), widget);
    case PE_PanelButtonTool:
        return paintToolButton(*painter, *option);
    case PE_PanelLineEdit:
        if (as<QStyleOptionFrame>(option).lineWidth > 0)
            paintField(*painter, *option);
        return;
    case PE_Frame:
        return paintFrame(*painter, *option, widget);
    case PE_FrameGroupBox:
        return paintBox(*painter, option->rect, theme::surface(option->palette),
                        theme::hairline(option->palette), theme::kCornerRadius);
    case PE_PanelMenu:
    case PE_PanelTipLabel:
        painter->fillRect(option->rect, theme::edge(option->palette));
        return painter->fillRect(option->rect.adjusted(1, 1, -1, -1), theme::surface(option->palette));
    case PE_FrameMenu:
    case PE_FrameFocusRect:
    case PE_FrameLineEdit:
    case PE_FrameStatusBarItem:
        return;
    case PE_PanelItemViewItem:
        return paintItemGround(*painter, *option);
    case PE_PanelItemViewRow:
        return;
    default:
        if (!paintIndicator(*painter, element, *option))
            QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void Style::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                        const QWidget* widget) const {
    switch (element) {
    case CE_PushButtonBevel:
        return paintPushButton(*painter, as<QStyleOptionButton>(option), widget);
    case CE_PushButtonLabel:
        if (widget != nullptr)
            return paintPushButtonLabel(*painter, as<QStyleOptionButton>(option), widget);
        break;
    case CE_ComboBoxLabel: {
        // The toolkit would cut off what does not fit.
        auto box = as<QStyleOptionComboBox>(option);
        const auto room =
            subControlRect(CC_ComboBox, &box, SC_ComboBoxEditField, widget).width() - theme::kStep;
        const int symbol = box.currentIcon.isNull() ? 0 : box.iconSize.width() + theme::kHalfStep;
        box.currentText = box.fontMetrics.elidedText(box.currentText, Qt::ElideRight, room - symbol);
        return QProxyStyle::drawControl(element, &box, painter, widget);
    }
    case CE_ToolButtonLabel:
        if (const auto* const button = dynamic_cast<const SymbolButton*>(widget))
            return paintSymbolButton(*painter, *option, *button);
        break;
    case CE_ProgressBarGroove:
    case CE_ProgressBarLabel:
        return;
    case CE_ProgressBarContents:
        return paintProgress(*painter, as<QStyleOptionProgressBar>(option));
    case CE_MenuBarItem:
        return paintMenuBarItem(*painter, as<QStyleOptionMenuItem>(option), *this);
    case CE_MenuBarEmptyArea:
        return painter->fillRect(option->rect, theme::window(option->palette));
    case CE_MenuItem:
        return paintMenuItem(*painter, as<QStyleOptionMenuItem>(option), *this);
    case CE_HeaderSection:
    case CE_HeaderEmptyArea:
        return paintHeader(*painter, as<QStyleOptionHeader>(option));
    case CE_Splitter:
        return;
    case CE_FocusFrame:
        return paintFocusMark(*painter, *option);
    default:
        break;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void Style::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                               const QWidget* widget) const {
    switch (control) {
    case CC_ComboBox:
        return paintComboBox(*painter, as<QStyleOptionComboBox>(option));
    case CC_ScrollBar:
        return paintScrollBar(*painter, as<QStyleOptionSlider>(option),
                              subControlRect(CC_ScrollBar, option, SC_ScrollBarSlider, widget));
    default:
        return QProxyStyle::drawComplexControl(control, option, painter, widget);
    }
}

QRect Style::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const {
    switch (element) {
    case SE_LineEditContents:
        // The toolkit keeps two pixels more at each side of the text.
        return option->rect.adjusted(theme::kStep, 0, -theme::kStep, 0);
    case SE_ProgressBarContents:
    case SE_ProgressBarGroove:
        return option->rect;
    default:
        return QProxyStyle::subElementRect(element, option, widget);
    }
}

QRect Style::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                            const QWidget* widget) const {
    if (control == CC_ScrollBar)
        return scrollBarPart(as<QStyleOptionSlider>(option), part);
    if (control == CC_ComboBox && part == SC_ComboBoxEditField) {
        const bool editable = as<QStyleOptionComboBox>(option).editable;
        const int before = editable ? 1 : theme::kStep;
        return visualRect(option->direction, option->rect,
                          option->rect.adjusted(before, 1, -kComboArrow, -1));
    }
    return QProxyStyle::subControlRect(control, option, part, widget);
}

QSize Style::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                              const QWidget* widget) const {
    const int height = controlHeight(option, widget);
    switch (type) {
    case CT_PushButton: {
        const auto& button = as<QStyleOptionButton>(option);
        const int symbol = button.icon.isNull() || button.text.isEmpty() ? 0 : theme::kHalfStep;
        const int padding = button.text.isEmpty() ? theme::kHalfStep : theme::kPadding;
        return {contents.width() + symbol + 2 * padding, std::max(height, contents.height())};
    }
    case CT_ToolButton:
        return {std::max(contents.width() + theme::kStep, height),
                std::max(contents.height() + theme::kStep, height)};
    case CT_LineEdit:
        return {contents.width() + 2 * theme::kStep, std::max(height, contents.height())};
    case CT_ComboBox:
        return {contents.width() + theme::kPadding + kComboArrow, std::max(height, contents.height())};
    case CT_MenuBarItem:
        return contents + QSize(2 * theme::kStep, theme::kPadding);
    case CT_MenuItem: {
        const auto& item = as<QStyleOptionMenuItem>(option);
        if (item.menuItemType == QStyleOptionMenuItem::Separator)
            return {contents.width(), theme::kStep + 1};
        const int tab = item.text.contains(QLatin1Char('\t')) ? MenuColumns::kGap : 0;
        const int arrow = item.menuItemType == QStyleOptionMenuItem::SubMenu ? MenuColumns::kArrow : 0;
        return {contents.width() + MenuColumns::kSymbol + tab + arrow + theme::kStep + theme::kMargin,
                menuLineHeight(item.fontMetrics.height())};
    }
    case CT_ItemViewItem: {
        const auto size = QProxyStyle::sizeFromContents(type, option, contents, widget);
        return {size.width(), std::max(size.height(), theme::kRowControlHeight)};
    }
    default:
        return QProxyStyle::sizeFromContents(type, option, contents, widget);
    }
}

int Style::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    // A field draws its edge itself; around others the corners need more.
    if (metric == PM_DefaultFrameWidth)
        return qobject_cast<const QLineEdit*>(widget) != nullptr ? 1 : 2;
    const auto own = measureOf(metric);
    return own ? *own : QProxyStyle::pixelMetric(metric, option, widget);
}

int Style::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                     QStyleHintReturn* data) const {
    switch (hint) {
    case SH_EtchDisabledText:
    case SH_DialogButtonBox_ButtonsHaveIcons:
    case SH_ComboBox_Popup:
    case SH_MessageBox_CenterButtons:
    case SH_Widget_Animation_Duration:
        return 0;
    // Around what has the focus, wherever its parent ends.
    case SH_FocusFrame_AboveWidget:
    // A long menu scrolls, in place of columns that leave the screen.
    case SH_Menu_Scrollable:
        return 1;
    default:
        return QProxyStyle::styleHint(hint, option, widget, data);
    }
}

QIcon Style::standardIcon(StandardPixmap symbol, const QStyleOption* option, const QWidget* widget) const {
    const auto* const own = symbolOf(symbol);
    if (own == nullptr)
        return QProxyStyle::standardIcon(symbol, option, widget);
    return symbolIcon(QString::fromLatin1(own->name), own->color);
}

QPixmap Style::standardPixmap(StandardPixmap symbol, const QStyleOption* option,
                              const QWidget* widget) const {
    const auto* const own = symbolOf(symbol);
    if (own == nullptr)
        return QProxyStyle::standardPixmap(symbol, option, widget);
    const auto ratio = widget != nullptr ? widget->devicePixelRatioF() : qApp->devicePixelRatio();
    return symbolPixmap(QString::fromLatin1(own->name), theme::kSymbolSize,
                        own->color(QApplication::palette()), ratio);
}

void applyLook(const Look& look) {
    if (dynamic_cast<Style*>(QApplication::style()) == nullptr) {
        QApplication::setStyle(new Style);
        static const bool kMarked = (markFocus(*qApp), true);
        static_cast<void>(kMarked);
    }
    const auto palette = theme::paletteOf(look);
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
}

} // namespace vantor::ui
