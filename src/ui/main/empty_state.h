// EmptyState: what stands where there is nothing to show: a symbol, why there is nothing, and buttons for what can be
// done about it. In the middle of whatever room it gets.
#pragma once

#include "ui/widgets/widgets.h"

#include <initializer_list>

namespace vantor::ui {

class EmptyState : public QWidget {
public:
    // The hint stands below the buttons, where there is one.
    EmptyState(const char* objectName, const QString& symbol, std::initializer_list<QPushButton*> buttons,
               const QString& hint = {});

    // Why there is nothing: one line, which ends in "…" where it does not fit.
    void setText(const QString& text) { m_text->setText(text); }

private:
    ElidedLabel* m_text;
};

} // namespace vantor::ui
