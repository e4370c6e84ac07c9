#include "ui/widgets/widgets.h"

#include "ui/frame/theme.h"
#include "ui/widgets/symbol.h"
#include "ui/widgets/text.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <utility>

namespace vantor::ui {

QColor colorOf(TextColor color, const QPalette& palette) {
    switch (color) {
    case TextColor::Primary:
        return theme::text(palette);
    case TextColor::Secondary:
        return theme::secondaryText(palette);
    case TextColor::Blue:
        return theme::blue(palette);
    case TextColor::Amber:
        return theme::amber(palette);
    case TextColor::Green:
        return theme::green(palette);
    case TextColor::Red:
        return theme::red(palette);
    }
    return theme::text(palette);
}

ElidedLabel::ElidedLabel(const QFont& font, TextColor color, QWidget* parent)
    : QWidget(parent),
      m_color(color) {
    setFont(font);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void ElidedLabel::setText(const QString& text) {
    if (text == m_text)
        return;
    m_text = text;
    setAccessibleName(text);
    updateGeometry();
    updateToolTip();
    update();
}

void ElidedLabel::setColor(TextColor color) {
    if (color == m_color)
        return;
    m_color = color;
    update();
}

QSize ElidedLabel::sizeHint() const {
    return {fontMetrics().horizontalAdvance(m_text) + 1, fontMetrics().height()};
}

QSize ElidedLabel::minimumSizeHint() const {
    const auto all = sizeHint();
    return {std::min(all.width(), fontMetrics().horizontalAdvance(QStringLiteral("mm…"))), all.height()};
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(colorOf(m_color, palette()));
    painter.drawText(rect(), Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                     fontMetrics().elidedText(m_text, Qt::ElideRight, width()));
}

void ElidedLabel::resizeEvent(QResizeEvent*) {
    updateToolTip();
}

void ElidedLabel::updateToolTip() {
    tellInFull(this, sizeHint().width() > width() ? m_text : QString());
}

TextLabel::TextLabel(const QString& text, const QFont& font, TextColor color, bool wraps, QWidget* parent)
    : QLabel(parent),
      m_color(color) {
    setTextFormat(Qt::PlainText);
    // On the ground of a list a label would take the colour of the list's text instead of its own.
    setForegroundRole(QPalette::WindowText);
    setFont(font);
    setWordWrap(wraps);
    setText(text);
    applyColor();
}

void TextLabel::setColor(TextColor color) {
    m_color = color;
    applyColor();
}

void TextLabel::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && !m_applying)
        applyColor();
}

void TextLabel::applyColor() {
    // From the palette that the label would have without a colour of its own.
    const QPalette around = parentWidget() != nullptr ? parentWidget()->palette() : QApplication::palette();
    QPalette own;
    own.setColor(QPalette::WindowText, colorOf(m_color, around));
    m_applying = true;
    setPalette(own);
    m_applying = false;
}

SymbolLabel::SymbolLabel(QString name, int size, qreal opacity, QWidget* parent)
    : QWidget(parent),
      m_name(std::move(name)),
      m_size(size),
      m_opacity(opacity) {
    setFixedSize(size, size);
}

void SymbolLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setOpacity(m_opacity);
    painter.drawPixmap(rect(),
                       symbolPixmap(m_name, m_size, theme::secondaryText(palette()), devicePixelRatioF()));
}

SymbolButton::SymbolButton(const QString& symbol, const QString& help, QWidget* parent)
    : QToolButton(parent),
      m_symbol(symbol) {
    setIcon(symbolIcon(symbol, theme::secondaryText));
    setIconSize({theme::kSymbolSize, theme::kSymbolSize});
    setAutoRaise(true);
    setToolTip(help);
    setAccessibleName(help);
    setFocusPolicy(Qt::TabFocus);
}

CommandButton::CommandButton(const QIcon& symbol, const QString& text, QWidget* parent)
    : QPushButton(symbol, text, parent) {
    setFont(theme::labelFont());
    setIconSize({theme::kCommandSymbolSize, theme::kCommandSymbolSize});
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize CommandButton::sizeHint() const {
    const int text = fontMetrics().size(Qt::TextShowMnemonic, this->text()).width();
    return {std::max(text, iconSize().width()) + theme::kStep + theme::kHalfStep,
            theme::kStep + iconSize().height() + theme::kHalfStep + fontMetrics().height() +
                theme::kHalfStep};
}

void CommandButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (isEnabled() && (underMouse() || isDown() || hasFocus())) {
        painter.setPen(hasFocus() ? QPen(theme::accent(palette()), 1) : QPen(Qt::NoPen));
        painter.setBrush(isDown()       ? theme::pressed(palette())
                         : underMouse() ? theme::hovered(palette())
                                        : QColor(Qt::transparent));
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), theme::kCornerRadius,
                                theme::kCornerRadius);
    }
    const QRect symbol(QPoint((width() - iconSize().width()) / 2, theme::kStep), iconSize());
    icon().paint(&painter, symbol, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
    painter.setPen(isEnabled() ? theme::secondaryText(palette())
                               : palette().color(QPalette::Disabled, QPalette::ButtonText));
    painter.drawText(rect().adjusted(0, symbol.bottom() + 1, 0, 0),
                     Qt::AlignHCenter | Qt::AlignVCenter | Qt::TextHideMnemonic, text());
}

ProminentButton::ProminentButton(const QString& text, QWidget* parent) : QPushButton(text, parent) {
    QFont font = theme::bodyFont();
    font.setWeight(QFont::DemiBold);
    setFont(font);
}

void emptyTaken(QLineEdit& field) {
    // clear() could be taken back.
    field.setText(QString());
}

ComboBox::ComboBox(QWidget* parent) : QComboBox(parent) {
    // As the wheel would otherwise give it the focus.
    setFocusPolicy(Qt::StrongFocus);
}

void ComboBox::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

SegmentButton::SegmentButton(const QString& text, Place place, QWidget* parent)
    : QPushButton(text, parent),
      m_place(place) {
    setCheckable(true);
    setAutoDefault(false);
}

ActiveMarker::ActiveMarker(QWidget* parent) : QWidget(parent) {
    setFixedSize(theme::kMarkerSize, theme::kMarkerSize);
}

void ActiveMarker::setActive(bool active) {
    m_active = active;
    update();
}

void ActiveMarker::paintEvent(QPaintEvent*) {
    if (!m_active)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme::green(palette()));
    painter.drawEllipse(rect());
}

namespace {

// Room beside and above the text of a tag, and its corners.
struct TagShape {
    int beside;
    int above;
    int radius;
};

TagShape shapeOf(Tag::Kind kind) {
    return kind == Tag::Kind::Client ? TagShape{theme::kStep, 2, theme::kTagRadius}
                                     : TagShape{theme::kStep, 3, theme::kTagRadius};
}

} // namespace

Tag::Tag(Kind kind, QWidget* parent) : QWidget(parent), m_kind(kind) {
    setFont(kind == Kind::Client ? theme::captionFont() : theme::captionBoldFont());
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
}

void Tag::setText(const QString& text) {
    m_text = text;
    setAccessibleName(text);
    tellInFull(this, text);
    updateGeometry();
    update();
}

QSize Tag::sizeHint() const {
    const auto shape = shapeOf(m_kind);
    return {fontMetrics().horizontalAdvance(m_text) + 2 * shape.beside + 1,
            fontMetrics().height() + 2 * shape.above};
}

QSize Tag::minimumSizeHint() const {
    return {std::min(sizeHint().width(), 80), sizeHint().height()};
}

void Tag::paintEvent(QPaintEvent*) {
    const auto shape = shapeOf(m_kind);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_kind == Kind::Client ? theme::purple(palette()) : theme::greenGround(palette()));
    painter.drawRoundedRect(rect(), shape.radius, shape.radius);
    painter.setPen(m_kind == Kind::Client ? QColor(Qt::white) : theme::green(palette()));
    const int room = width() - 2 * shape.beside;
    painter.drawText(rect().adjusted(shape.beside, 0, -shape.beside + 1, 0),
                     Qt::AlignCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(m_text, Qt::ElideRight, room));
}

CountLabel::CountLabel(const QFont& font, TextColor color, QWidget* parent)
    : TextLabel(QString(), font, color, false, parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    for (char digit = '0'; digit <= '9'; ++digit)
        m_digit = std::max(m_digit, fontMetrics().horizontalAdvance(QLatin1Char(digit)));
}

int CountLabel::advance(QChar sign) const {
    return sign.isDigit() ? m_digit : fontMetrics().horizontalAdvance(sign);
}

QSize CountLabel::sizeHint() const {
    int width = 0;
    for (const auto sign : text())
        width += advance(sign);
    return {width, fontMetrics().height()};
}

void CountLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    int x = (width() - CountLabel::sizeHint().width()) / 2;
    for (const auto sign : text()) {
        const int cell = advance(sign);
        painter.drawText(QRect(x, 0, cell, height()), Qt::AlignCenter | Qt::TextDontClip, QString(sign));
        x += cell;
    }
}

Divider::Divider(Qt::Orientation orientation, QWidget* parent) : QWidget(parent) {
    if (orientation == Qt::Horizontal)
        setFixedHeight(1);
    else
        setFixedWidth(1);
}

void Divider::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), theme::hairline(palette()));
}

void describe(QWidget* widget, const QString& text) {
    if (widget->accessibleDescription() != text)
        widget->setAccessibleDescription(text);
}

void tellInFull(QWidget* widget, const QString& text) {
    widget->setToolTip(plainToolTip(text));
    describe(widget, text);
}

QLineEdit* makeField(const char* objectName, const QString& placeholder, const QString& label) {
    auto* const field = named(new QLineEdit, objectName, label.isEmpty() ? placeholder : label);
    field->setPlaceholderText(placeholder);
    field->setMinimumWidth(
        std::max(field->minimumSizeHint().width(),
                 field->fontMetrics().horizontalAdvance(placeholder) + theme::kSheetMargin));
    return field;
}

void fixWidth(QLineEdit* field, int width, int characters) {
    const int text = characters * field->fontMetrics().horizontalAdvance(QLatin1Char('0'));
    field->setFixedWidth(std::max(width, text + theme::kSheetMargin));
}

void keepRoomOf(QWidget* widget) {
    auto policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
}

QVBoxLayout* labelled(const QString& label, QWidget* field) {
    auto* const above = new TextLabel(label, theme::captionFont(), TextColor::Secondary);
    above->setBuddy(field);
    auto* const both = new QVBoxLayout;
    both->setSpacing(theme::kHalfStep);
    both->addWidget(above);
    both->addWidget(field);
    return both;
}

} // namespace vantor::ui
