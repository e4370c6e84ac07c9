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

    // Return in this field, its last one, presses the button while that is enabled.
    static void pressOnReturn(QLineEdit* field, QAbstractButton* button);

    void keyPressEvent(QKeyEvent* event) override;

private:
    QVBoxLayout* m_column;
};

} // namespace vantor::ui
