#include "ui/frame/quit_question.h"

#include "ui/widgets/text.h"
#include "view/document_notices.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMessageBox>
#include <QPushButton>
#include <algorithm>

namespace vantor::ui {
namespace {

bool isLastWindow(const QWidget& window) {
    return std::ranges::none_of(QApplication::topLevelWidgets(), [&](const QWidget* other) {
        return other != &window && other->isVisible() && other->parentWidget() == nullptr &&
               other->windowType() == Qt::Window;
    });
}

void ask(QWidget& window, StoreFolder& stores, const FileFailure& why) {
    auto* const box = new QMessageBox(&window);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::WindowModal);
    box->setObjectName(QStringLiteral("quitQuestion"));
    box->setIcon(QMessageBox::Warning);
    box->setWindowTitle(shown("Vantor Prep"));
    box->setTextFormat(Qt::PlainText);
    box->setText(shown("Je laatste wijzigingen zijn niet bewaard: %1").arg(qstring(reasonInWords(why))));
    box->setInformativeText(shown("Stop je nu, dan ben je ze kwijt."));
    auto* const again = box->addButton(shown("Opnieuw proberen"), QMessageBox::AcceptRole);
    auto* const stop = box->addButton(shown("Stop zonder bewaren"), QMessageBox::DestructiveRole);
    auto* const cancel = box->addButton(shown("Annuleer"), QMessageBox::RejectRole);
    box->setDefaultButton(cancel);
    box->setEscapeButton(cancel);
    QObject::connect(again, &QPushButton::clicked, &window, [&window, &stores] {
        stores.saveAgain();
        QMetaObject::invokeMethod(
            &window, [&window] { window.close(); }, Qt::QueuedConnection);
    });
    QObject::connect(stop, &QPushButton::clicked, &window, [&window] {
        window.setProperty("losesChanges", true);
        QMetaObject::invokeMethod(
            &window, [&window] { window.close(); }, Qt::QueuedConnection);
    });
    box->open();
}

} // namespace

void askBeforeLosing(QWidget& window, const Services& services, QCloseEvent& event) {
    if (services.stores == nullptr || !isLastWindow(window) || window.property("losesChanges").toBool() ||
        qApp->isSavingSession())
        return;
    if (services.stores->unsaved())
        services.stores->saveAgain();
    const auto unsaved = services.stores->unsaved();
    if (!unsaved)
        return;
    event.ignore();
    if (window.findChild<QMessageBox*>(QStringLiteral("quitQuestion")) == nullptr)
        ask(window, *services.stores, unsaved->why);
}

} // namespace vantor::ui
