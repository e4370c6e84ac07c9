#include "ui/main/empty_state.h"

#include "ui/frame/theme.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace vantor::ui {
namespace {

constexpr int kSymbol = 40;
constexpr qreal kOpacity = 0.3;

} // namespace

EmptyState::EmptyState(const char* objectName, const QString& symbol,
                       std::initializer_list<QPushButton*> buttons, const QString& hint) {
    setObjectName(QLatin1String(objectName));
    m_text = new ElidedLabel(theme::bodyFont(), TextColor::Secondary);
    auto* const line = new QHBoxLayout;
    line->setSpacing(theme::kStep);
    line->addStretch();
    for (auto* const button : buttons)
        line->addWidget(button);
    line->addStretch();
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(theme::kMargin, theme::kStep, theme::kMargin, theme::kStep);
    column->setSpacing(theme::kStep);
    column->addStretch();
    column->addWidget(new SymbolLabel(symbol, kSymbol, kOpacity), 0, Qt::AlignHCenter);
    column->addWidget(m_text, 0, Qt::AlignHCenter);
    column->addSpacing(theme::kHalfStep);
    column->addLayout(line);
    if (!hint.isEmpty())
        column->addWidget(new TextLabel(hint, theme::captionFont(), TextColor::Secondary), 0,
                          Qt::AlignHCenter);
    column->addStretch();
}

} // namespace vantor::ui
