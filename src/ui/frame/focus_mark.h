// The mark of what has the focus: one ring, around whatever control has it.
#pragma once

class QApplication;
class QPainter;
class QStyleOption;

namespace vantor::ui {

// From now on, around every button, field, editor and box; lists mark their rows themselves.
void markFocus(QApplication& application);

void paintFocusMark(QPainter& painter, const QStyleOption& option);

} // namespace vantor::ui
