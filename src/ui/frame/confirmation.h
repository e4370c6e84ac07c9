// Questions and messages. Those over a window open at once and return; the answer comes later.
#pragma once

#include <QString>
#include <functional>

class QWidget;

namespace vantor::ui {

// Asks before something is deleted: "Verwijderen", and "Annuleer", which Return and Escape press.
void confirmDeletion(QWidget* over, const QString& title, const QString& message,
                     const std::function<void()>& onConfirmed);

// Says something, with one button that closes it.
void showAlert(QWidget* over, const QString& title, const QString& message,
               const std::function<void()>& onClosed);

// Says something where there is no window, and returns when its one button has closed it.
void showMessage(const QString& title, const QString& message);

} // namespace vantor::ui
