#include "ui/sheet.h"

#include "ui/text.h"
#include "ui/theme.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QVBoxLayout>

namespace vantor::ui {

Sheet::Sheet(QWidget* over, const char* objectName, const QString& title) : QDialog(over) {
    setObjectName(QLatin1String(objectName));
    // Of one "[*]" the toolkit makes a mark for unsaved changes, of two it makes "[*]".
    setWindowTitle(QString(title).replace(QLatin1String("[*]"), QLatin1String("[*][*]")));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowModality(Qt::WindowModal);
    m_column = new QVBoxLayout(this);
    m_column->setContentsMargins(theme::kSheetMargin, theme::kSheetMargin, theme::kSheetMargin,
                                 theme::kSheetMargin);
    m_column->setSpacing(theme::kStep);
}

TextLabel* Sheet::addTitle(const QString& title) {
    auto* const label =
        named(new TextLabel(title, theme::titleFont(), TextColor::Primary, true), "sheetTitle");
    m_column->addWidget(label);
    return label;
}

TextLabel* Sheet::addExplanation(const QString& text) {
    auto* const label = new TextLabel(text, theme::captionFont(), TextColor::Secondary, true);
    m_column->addWidget(label);
    return label;
}

void Sheet::addField(const QString& label, QWidget* field) {
    auto* const above = new TextLabel(label, theme::captionFont(), TextColor::Secondary);
    above->setBuddy(field);
    auto* const both = new QVBoxLayout;
    both->setSpacing(theme::kHalfStep / 2);
    both->addWidget(above);
    both->addWidget(field);
    m_column->addLayout(both);
}

QPushButton* Sheet::addCancelButton(QWidget* prominent) {
    auto* const cancel = named(new QPushButton(shown("Annuleer")), "cancelButton");
    cancel->setAutoDefault(false);
    QObject::connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* const row = new QHBoxLayout;
    row->addWidget(cancel);
    row->addStretch();
    if (prominent != nullptr)
        row->addWidget(prominent);
    m_column->addSpacing(theme::kStep);
    m_column->addLayout(row);
    return cancel;
}

void Sheet::tellProblem(const QString& problem) {
    if (m_problem == nullptr) {
        m_problem =
            named(new TextLabel(QString(), theme::captionFont(), TextColor::Red, true), "sheetProblem");
        m_column->addWidget(m_problem);
    }
    m_problem->setText(problem);
}

void Sheet::pressOnReturn(QLineEdit* field, QAbstractButton* button) {
    QObject::connect(field, &QLineEdit::returnPressed, button, [button] { button->click(); });
}

void Sheet::keyPressEvent(QKeyEvent* event) {
    // A dialog would press its first button on Return, wherever the focus is; here only the focused one.
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (auto* const button = qobject_cast<QPushButton*>(focusWidget()))
            button->click();
        return;
    }
    QDialog::keyPressEvent(event);
}

QWidget* windowInFrontOf(QWidget* window) {
    // The last of them is the newest, and stands before what it belongs to.
    for (auto* const dialog : window->findChildren<QDialog*>()) {
        if (dialog->isVisible() && dialog->isModal())
            window = dialog;
    }
    return window;
}

} // namespace vantor::ui
