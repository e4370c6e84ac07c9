#include "ui/commands/editing.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>

namespace vantor::ui {
namespace {

// Calls one of two functions with the field that is given, if it is one.
template <typename OnLine, typename OnText>
bool withField(QObject* field, OnLine onLine, OnText onText) {
    if (auto* const line = qobject_cast<QLineEdit*>(field))
        return onLine(*line);
    if (auto* const text = qobject_cast<QPlainTextEdit*>(field))
        return onText(*text);
    return false;
}

bool canUndo(QObject* field) {
    return withField(
        field, [](QLineEdit& line) { return line.isUndoAvailable(); },
        [](QPlainTextEdit& text) { return text.document()->isUndoAvailable(); });
}

bool canRedo(QObject* field) {
    return withField(
        field, [](QLineEdit& line) { return line.isRedoAvailable(); },
        [](QPlainTextEdit& text) { return text.document()->isRedoAvailable(); });
}

} // namespace

bool undoTyping() {
    auto* const field = QApplication::focusWidget();
    return canUndo(field) && QMetaObject::invokeMethod(field, "undo");
}

bool redoTyping() {
    auto* const field = QApplication::focusWidget();
    return canRedo(field) && QMetaObject::invokeMethod(field, "redo");
}

void giveToField(TextCommand command) {
    static constexpr const char* kSlots[] = {"cut", "copy", "paste", "selectAll"};
    auto* const field = QApplication::focusWidget();
    const auto takesIt = [](QWidget&) { return true; };
    if (withField(field, takesIt, takesIt))
        QMetaObject::invokeMethod(field, kSlots[static_cast<int>(command)]);
}

bool leavesUndoToProgram(QObject* watched, QEvent& event) {
    if (event.type() != QEvent::ShortcutOverride || watched != QApplication::focusWidget())
        return false;
    const auto& key = static_cast<QKeyEvent&>(event);
    return (key.matches(QKeySequence::Undo) && !canUndo(watched)) ||
           (key.matches(QKeySequence::Redo) && !canRedo(watched));
}

} // namespace vantor::ui
