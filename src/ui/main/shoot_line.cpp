#include "ui/main/shoot_line.h"

#include "ui/frame/theme.h"
#include "ui/widgets/text.h"
#include "view/shown_set.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <utility>

namespace vantor::ui {

ShootLine::ShootLine(Commands& commands) {
    auto* const divider = new Divider(Qt::Vertical);
    divider->setFixedHeight(16);
    m_marker = new ActiveMarker;
    m_text = named(new ElidedLabel(theme::captionFont(), TextColor::Secondary), "activeText");
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(theme::kMargin, theme::kStep, theme::kMargin, theme::kStep);
    row->setSpacing(theme::kStep);
    row->addWidget(commands.makeButton(CommandId::NewSet, "newSetButton"));
    row->addWidget(divider);
    for (const auto& [id, name] :
         {std::pair(CommandId::Open, "openButton"), std::pair(CommandId::Save, "saveButton")}) {
        auto* const button = commands.makeButton(id, name);
        // Long enough as it is: the shortcut stands in the menu.
        button->setToolTip(commands.action(id).toolTip());
        row->addWidget(button);
    }
    row->addStretch();
    row->addWidget(m_marker);
    row->addWidget(m_text);
}

void ShootLine::render(const SetData* active) {
    m_marker->setVisible(active != nullptr);
    m_marker->setActive(active != nullptr);
    m_text->setVisible(active != nullptr);
    if (active != nullptr)
        m_text->setText(shown("Actief: %1").arg(qstring(shownHeadline(*active))));
}

} // namespace vantor::ui
