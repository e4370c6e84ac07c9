#include "ui/sheets/two_line_row.h"

#include "ui/frame/theme.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>

namespace vantor::ui {
namespace {

constexpr int kLeastHeight = 52;

} // namespace

TwoLineRow::TwoLineRow(const char* name, const char* headlineName, const char* captionName) {
    setObjectName(QLatin1String(name));
    m_headline = named(new ElidedLabel(theme::headlineFont(), TextColor::Primary), headlineName);
    m_caption = named(new ElidedLabel(theme::captionFont(), TextColor::Secondary), captionName);
    auto* const texts = new QVBoxLayout;
    texts->setSpacing(0);
    texts->addStretch();
    texts->addWidget(m_headline);
    texts->addWidget(m_caption);
    texts->addStretch();
    m_row = new QHBoxLayout(this);
    m_row->setContentsMargins(theme::kPadding, theme::kHalfStep, theme::kPadding, theme::kHalfStep);
    m_row->setSpacing(theme::kStep);
    m_row->addLayout(texts, 1);
}

QSize TwoLineRow::sizeHint() const {
    return {200, std::max(kLeastHeight, m_row->minimumSize().height())};
}

void TwoLineRow::addAtLeft(QWidget* control) {
    m_row->insertWidget(0, control);
}

void TwoLineRow::addAtRight(QWidget* control) {
    m_row->addWidget(control);
}

} // namespace vantor::ui
