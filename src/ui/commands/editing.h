// The commands of text fields: undo, redo, cut, copy, paste, choose all, wherever the focus is.
#pragma once

class QEvent;
class QObject;

namespace vantor::ui {

// Takes the last typing back in the focused field, or does it again. False when it has none, or no field has the focus.
bool undoTyping();
bool redoTyping();

enum class TextCommand { Cut, Copy, Paste, SelectAll };
// Does nothing where no field has the focus.
void giveToField(TextCommand command);

// Whether the event asks a field whether it wants the keys of undo or redo for itself, and it has nothing to take back:
// then they are the program's. Such an event is not to reach the field.
[[nodiscard]] bool leavesUndoToProgram(QObject* watched, QEvent& event);

} // namespace vantor::ui
