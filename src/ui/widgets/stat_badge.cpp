#include "ui/widgets/stat_badge.h"

#include "ui/frame/theme.h"

#include <QVBoxLayout>

namespace vantor::ui {

StatBadge::StatBadge(const QString& label, TextColor color, QWidget* parent)
    : QWidget(parent),
      m_label(label) {
    setObjectName(QStringLiteral("statBadge"));
    m_value = named(new TextLabel(QStringLiteral("0"), theme::countFont(), color), "statValue");
    auto* const caption = new TextLabel(label, theme::tinyFont(), TextColor::Secondary);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_value, 0, Qt::AlignHCenter);
    column->addWidget(caption, 0, Qt::AlignHCenter);
}

void StatBadge::setValue(const QString& value) {
    m_value->setText(value);
    setAccessibleName(m_label + QStringLiteral(": ") + value);
}

} // namespace vantor::ui
