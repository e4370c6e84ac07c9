// Sheet: a dialog over one window, which it blocks while it is open. Escape closes it.
//
// A sheet is made anew at each opening, with fresh values, and deletes itself when it closes.
#pragma once

#include "ui/widgets.h"

#include <QDialog>

class QVBoxLayout;

namespace vantor::ui {

class Sheet : public QDialog {
protected:
    // `objectName` names it for tests; `title` is its window's title too.
    Sheet(QWidget* over, const char* objectName, const QString& title);

    // The column that everything stands in.
    [[nodiscard]] QVBoxLayout* column() const { return m_column; }

    TextLabel* addTitle(const QString& title);
    TextLabel* addExplanation(const QString& text);
    // A label above its field, both in the column.
    void addField(const QString& label, QWidget* field);

    // The row of buttons at the bottom: "Annuleer", which closes, and the prominent button, if there is one.
    QPushButton* addCancelButton(QWidget* prominent);

    // Says, in the sheet, why it did not do what it was asked to; what was typed stays.
    void tellProblem(const QString& problem);

    // Return in this field presses the button while that is enabled: in the fields of a short form, in a long one's last.
    static void pressOnReturn(QLineEdit* field, QAbstractButton* button);

    void keyPressEvent(QKeyEvent* event) override;

private:
    QVBoxLayout* m_column;
    TextLabel* m_problem = nullptr;
};

// The window that takes what is typed while `window` is open: the sheet or message in front of it, or itself.
[[nodiscard]] QWidget* windowInFrontOf(QWidget* window);

} // namespace vantor::ui
