#include "ui/widgets/stat_badge.h"

#include "ui/frame/theme.h"

#include <QVBoxLayout>

namespace vantor::ui {

StatBadge::StatBadge(const QString& label, TextColor color, QWidget* parent)
    : QWidget(parent),
      m_label(label) {
    setObjectName(QStringLiteral("statBadge"));
    m_value = named(new CountLabel(theme::badgeFont(), color), "statValue");
    m_value->setText(QStringLiteral("0"));
    auto* const caption = new TextLabel(label, theme::labelFont(), TextColor::Secondary);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_value, 0, Qt::AlignRight);
    column->addWidget(caption, 0, Qt::AlignRight);
}

void StatBadge::setValue(const QString& value) {
    m_value->setText(value);
    setAccessibleName(m_label + QStringLiteral(": ") + value);
}

} // namespace vantor::ui
