// ShortcutsSheet: every shortcut of the program, as the table of commands has it, with what it does.
#pragma once

#include "ui/sheets/sheet.h"

namespace vantor::ui {

class ShortcutsSheet : public Sheet {
public:
    explicit ShortcutsSheet(QWidget* over);
};

} // namespace vantor::ui
