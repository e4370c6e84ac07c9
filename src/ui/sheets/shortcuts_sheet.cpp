#include "ui/sheets/shortcuts_sheet.h"

#include "ui/commands/command_table.h"
#include "ui/frame/theme.h"
#include "ui/widgets/text.h"

#include <QGridLayout>
#include <QKeySequence>
#include <QVBoxLayout>

namespace vantor::ui {
namespace {

constexpr int kWidth = 520;

} // namespace

ShortcutsSheet::ShortcutsSheet(QWidget* over) : Sheet(over, "shortcutsSheet", shown("Sneltoetsen")) {
    setFirstSize(kWidth);
    addTitle(shown("Sneltoetsen"));
    auto* const grid = new QGridLayout;
    grid->setHorizontalSpacing(theme::kSheetMargin);
    grid->setVerticalSpacing(theme::kStep);
    grid->setColumnStretch(1, 1);
    int row = 0;
    for (const auto& each : commandTable()) {
        if (each.shortcut.empty())
            continue;
        const QKeySequence keys(qstring(each.shortcut), QKeySequence::PortableText);
        grid->addWidget(
            new TextLabel(keys.toString(QKeySequence::NativeText), theme::bodyFont(), TextColor::Primary),
            row, 0);
        grid->addWidget(new TextLabel(shown(each.text), theme::bodyFont(), TextColor::Secondary), row, 1);
        ++row;
    }
    column()->addLayout(grid);
    addCloseButton();
}

} // namespace vantor::ui
