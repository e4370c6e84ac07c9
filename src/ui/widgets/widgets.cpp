#include "ui/widgets/widgets.h"

#include "ui/frame/theme.h"
#include "ui/widgets/symbol.h"
#include "ui/widgets/text.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>
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
    case TextColor::Green:
        return theme::green(palette);
    case TextColor::Red:
        return theme::red(palette);
    case TextColor::Placeholder:
        return palette.color(QPalette::PlaceholderText);
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
    : QToolButton(parent) {
    setIcon(symbolIcon(symbol));
    setIconSize({theme::kSymbolSize, theme::kSymbolSize});
    setAutoRaise(true);
    setToolTip(help);
    setAccessibleName(help);
    setFocusPolicy(Qt::TabFocus);
}

ProminentButton::ProminentButton(const QString& text, QWidget* parent) : QPushButton(text, parent) {}

QSize ProminentButton::sizeHint() const {
    return QPushButton::sizeHint() + QSize(theme::kStep, 0);
}

void ProminentButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor ground = theme::accent(palette());
    if (isDown())
        ground = ground.darker(115);
    if (!isEnabled())
        ground = theme::hairline(palette());
    const QRectF box = QRectF(rect()).adjusted(1, 1, -1, -1);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ground);
    painter.drawRoundedRect(box, theme::kCornerRadius, theme::kCornerRadius);
    if (hasFocus()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(theme::onAccent(palette()), 1));
        painter.drawRoundedRect(box.adjusted(2, 2, -2, -2), theme::kCornerRadius - 2,
                                theme::kCornerRadius - 2);
    }
    const QColor ink = isEnabled() ? theme::onAccent(palette()) : theme::secondaryText(palette());
    const int gap = theme::kHalfStep;
    const int textWidth = fontMetrics().horizontalAdvance(text());
    const int iconWidth = icon().isNull() ? 0 : iconSize().width() + gap;
    int x = (width() - textWidth - iconWidth) / 2;
    if (iconWidth > 0) {
        const QPixmap symbol = icon().pixmap(iconSize() * devicePixelRatioF());
        QPixmap tinted = symbol;
        QPainter tint(&tinted);
        tint.setCompositionMode(QPainter::CompositionMode_SourceIn);
        tint.fillRect(tinted.rect(), ink);
        tint.end();
        painter.drawPixmap(QRect(QPoint(x, (height() - iconSize().height()) / 2), iconSize()), tinted);
        x += iconWidth;
    }
    painter.setPen(ink);
    painter.drawText(QRect(x, 0, textWidth + 1, height()), Qt::AlignVCenter | Qt::TextShowMnemonic, text());
}

CheckBox::CheckBox(QWidget* parent) : QCheckBox(parent) {}

QSize CheckBox::sizeHint() const {
    return {theme::kSymbolSize + theme::kHalfStep, theme::kSymbolSize + theme::kHalfStep};
}

void CheckBox::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal edge = theme::kSymbolSize - 2;
    const QRectF box((width() - edge) / 2, (height() - edge) / 2, edge, edge);
    const QColor ring = hasFocus() ? theme::accent(palette()) : theme::secondaryText(palette());
    painter.setPen(QPen(isChecked() && !hasFocus() ? theme::accent(palette()) : ring, hasFocus() ? 2 : 1));
    painter.setBrush(isChecked() ? QBrush(theme::accent(palette()))
                                 : QBrush(palette().color(QPalette::Base)));
    painter.drawRoundedRect(box, 4, 4);
    if (!isChecked())
        return;
    painter.setPen(QPen(theme::onAccent(palette()), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(QPolygonF({box.topLeft() + QPointF(edge * 0.25, edge * 0.52),
                                    box.topLeft() + QPointF(edge * 0.44, edge * 0.70),
                                    box.topLeft() + QPointF(edge * 0.76, edge * 0.32)}));
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

SegmentButton::SegmentButton(const QString& text, QWidget* parent) : QPushButton(text, parent) {
    setCheckable(true);
    setAutoDefault(false);
}

void SegmentButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF box = QRectF(rect()).adjusted(1, 1, -1, -1);
    painter.setPen(QPen(theme::hairline(palette()), 1));
    painter.setBrush(isChecked() ? theme::accent(palette()) : palette().color(QPalette::Button));
    painter.drawRoundedRect(box, theme::kCornerRadius, theme::kCornerRadius);
    const QColor ink = isChecked() ? theme::onAccent(palette()) : palette().color(QPalette::ButtonText);
    painter.setPen(QPen(ink, 1));
    if (hasFocus()) {
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(box.adjusted(2, 2, -2, -2), theme::kCornerRadius - 2,
                                theme::kCornerRadius - 2);
    }
    painter.drawText(rect(), Qt::AlignCenter, text());
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
    return kind == Tag::Kind::Client ? TagShape{10, 3, 6} : TagShape{8, 3, 4};
}

} // namespace

Tag::Tag(Kind kind, QWidget* parent) : QWidget(parent), m_kind(kind) {
    setFont(kind == Kind::Client ? theme::bodyFont() : theme::captionBoldFont());
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
    QColor ground = m_kind == Kind::Client ? theme::purple(palette()) : theme::green(palette());
    if (m_kind == Kind::Active)
        ground.setAlphaF(0.1F);
    painter.setBrush(ground);
    painter.drawRoundedRect(rect(), shape.radius, shape.radius);
    painter.setPen(m_kind == Kind::Client ? QColor(Qt::white) : theme::green(palette()));
    const int room = width() - 2 * shape.beside;
    painter.drawText(rect().adjusted(shape.beside, 0, -shape.beside + 1, 0),
                     Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(m_text, Qt::ElideRight, room));
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
    field->setMinimumWidth(std::max(field->minimumSizeHint().width(),
                                    field->fontMetrics().horizontalAdvance(placeholder) + theme::kMargin));
    return field;
}

} // namespace vantor::ui
