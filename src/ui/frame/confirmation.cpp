#include "ui/frame/confirmation.h"

#include "ui/frame/theme.h"
#include "ui/widgets/text.h"

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

namespace vantor::ui {
namespace {

QMessageBox* makeBox(QWidget* over, QMessageBox::Icon icon, const QString& title, const QString& message) {
    auto* const box = new QMessageBox(over);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::WindowModal);
    box->setIcon(icon);
    box->setWindowTitle(shown("Vantor Prep"));
    box->setTextFormat(Qt::PlainText);
    box->setText(title);
    box->setInformativeText(message);
    // The box's own format is that of its first text alone.
    for (auto* const label : box->findChildren<QLabel*>())
        label->setTextFormat(Qt::PlainText);
    return box;
}

} // namespace

void confirmDeletion(QWidget* over, const QString& title, const QString& message,
                     const std::function<void()>& onConfirmed) {
    auto* const box = makeBox(over, QMessageBox::Question, title, message);
    box->setObjectName(QStringLiteral("confirmation"));
    auto* const confirm = box->addButton(shown("Verwijderen"), QMessageBox::DestructiveRole);
    auto* const cancel = box->addButton(shown("Annuleer"), QMessageBox::RejectRole);
    confirm->setObjectName(QStringLiteral("confirmDeletion"));
    cancel->setObjectName(QStringLiteral("cancelDeletion"));
    QPalette palette = confirm->palette();
    palette.setColor(QPalette::ButtonText, theme::red(palette));
    confirm->setPalette(palette);
    box->setDefaultButton(cancel);
    box->setEscapeButton(cancel);
    QObject::connect(confirm, &QPushButton::clicked, box, onConfirmed);
    box->open();
}

void showAlert(QWidget* over, const QString& title, const QString& message,
               const std::function<void()>& onClosed) {
    auto* const box = makeBox(over, QMessageBox::Warning, title, message);
    box->setObjectName(QStringLiteral("alert"));
    box->addButton(shown("OK"), QMessageBox::AcceptRole);
    QObject::connect(box, &QMessageBox::finished, box, onClosed);
    box->open();
}

void showMessage(const QString& title, const QString& message) {
    auto* const box = makeBox(nullptr, QMessageBox::Warning, title, message);
    box->setObjectName(QStringLiteral("message"));
    box->setWindowTitle(title);
    box->addButton(shown("OK"), QMessageBox::AcceptRole);
    box->exec();
}

} // namespace vantor::ui
