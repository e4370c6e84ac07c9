#include "ui/widgets/code_plate.h"

#include "ui/frame/theme.h"
#include "ui/widgets/text.h"
#include "ui/widgets/widgets.h"

#include <QPainter>
#include <QPlainTextEdit>
#include <QVBoxLayout>
#include <algorithm>
#include <cstring>

namespace vantor::ui {

CodePlate::CodePlate(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("codePlate"));
    setAccessibleName(shown("QR-code"));
    setFixedSize(CodePlate::sizeHint());
}

void CodePlate::setPicture(const Bitmap& picture) {
    QImage image(picture.width(), picture.height(), QImage::Format_Mono);
    image.setColorTable({qRgb(255, 255, 255), qRgb(0, 0, 0)});
    for (int y = 0; y < picture.height(); ++y) {
        const auto row = picture.row(y);
        std::memcpy(image.scanLine(y), row.data(), row.size());
    }
    m_image = image;
    update();
}

QSize CodePlate::sizeHint() const {
    const int edge = theme::kCodeSize + 2 * theme::kCodePlateMargin;
    return {edge, edge};
}

void CodePlate::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(rect(), theme::kCodePlateRadius, theme::kCodePlateRadius);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    painter.drawImage(
        QRect(theme::kCodePlateMargin, theme::kCodePlateMargin, theme::kCodeSize, theme::kCodeSize), m_image);
}

CodeText::CodeText(QWidget* parent) : QFrame(parent) {
    m_text = named(new QPlainTextEdit, "codeText", shown("Tekst van de QR-code"));
    m_text->setReadOnly(true);
    m_text->setTabChangesFocus(true);
    m_text->setFrameShape(NoFrame);
    m_text->setFont(theme::monospacedFont());
    m_text->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    m_text->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    m_text->document()->setDocumentMargin(0);
    m_text->viewport()->setAutoFillBackground(false);
    // What its text needs, and never more.
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(theme::kStep, theme::kStep, theme::kStep, theme::kStep);
    layout->addWidget(m_text);
}

void CodeText::setText(std::string_view text) {
    static constexpr qsizetype kMostLines = 9;
    QPalette colors = m_text->palette();
    colors.setColor(QPalette::Text, theme::secondaryText(palette()));
    m_text->setPalette(colors);
    const QString lines = qstring(shownLines(text));
    m_text->setPlainText(lines);
    const auto shownCount = std::clamp<qsizetype>(lines.count(QLatin1Char('\n')) + 1, 1, kMostLines);
    m_text->setFixedHeight(static_cast<int>(shownCount) * m_text->fontMetrics().lineSpacing() + 2);
}

void CodeText::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().color(QPalette::Base));
    painter.drawRoundedRect(rect(), theme::kCornerRadius, theme::kCornerRadius);
}

} // namespace vantor::ui
