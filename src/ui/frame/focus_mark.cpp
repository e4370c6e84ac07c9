#include "ui/frame/focus_mark.h"

#include "ui/frame/theme.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QFocusFrame>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPointer>
#include <QStyleOption>
#include <QTextEdit>

namespace vantor::ui {
namespace {

bool isMarked(const QWidget* widget) {
    return qobject_cast<const QAbstractButton*>(widget) != nullptr ||
           qobject_cast<const QLineEdit*>(widget) != nullptr ||
           qobject_cast<const QComboBox*>(widget) != nullptr ||
           qobject_cast<const QPlainTextEdit*>(widget) != nullptr ||
           qobject_cast<const QTextEdit*>(widget) != nullptr;
}

} // namespace

void markFocus(QApplication& application) {
    QObject::connect(&application, &QApplication::focusChanged, &application,
                     [ring = QPointer<QFocusFrame>()](QWidget*, QWidget* now) mutable {
                         // It goes with the window that it was in last.
                         if (ring.isNull() && isMarked(now))
                             ring = new QFocusFrame;
                         if (!ring.isNull())
                             ring->setWidget(isMarked(now) ? now : nullptr);
                     });
}

void paintFocusMark(QPainter& painter, const QStyleOption& option) {
    constexpr qreal kHalf = theme::kFocusRing / 2.0;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(theme::focusRing(option.palette), theme::kFocusRing));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(option.rect).adjusted(kHalf, kHalf, -kHalf, -kHalf),
                            theme::kCornerRadius + kHalf, theme::kCornerRadius + kHalf);
    painter.restore();
}

} // namespace vantor::ui
