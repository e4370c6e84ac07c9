#include "ui/scanner_field.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <utility>

namespace vantor::ui {
namespace {

// How long keys that were already pressed get to arrive once the silence seems long enough, in milliseconds.
constexpr int kLastLook = 15;

bool isReturn(const QKeyEvent& event) {
    // Keyboards, and scanners, know a line-feed key as well, which has no name of its own here.
    if (event.text() == QLatin1String("\n") || event.text() == QLatin1String("\r"))
        return true;
    const bool controlled = (event.modifiers() & Qt::ControlModifier) != 0;
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter ||
           (controlled && (event.key() == Qt::Key_J || event.key() == Qt::Key_M));
}

bool isModifierAlone(const QKeyEvent& event) {
    switch (event.key()) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
        return true;
    default:
        return false;
    }
}

} // namespace

ScannerField::ScannerField(std::function<void()> onSubmit) : m_onSubmit(std::move(onSubmit)) {
    m_clock.start();
    m_silence.setSingleShot(true);
    m_silence.setTimerType(Qt::PreciseTimer);
    m_lastLook.setSingleShot(true);
    m_lastLook.setTimerType(Qt::PreciseTimer);
    // After a busy moment the timer may be served before keys that were pressed long before it was due.
    QObject::connect(&m_silence, &QTimer::timeout, this, [this] { m_lastLook.start(kLastLook); });
    QObject::connect(&m_lastLook, &QTimer::timeout, this, [this] {
        m_burst.fallSilent();
        submit();
    });
    qApp->installEventFilter(this);
}

ScannerField::~ScannerField() {
    qApp->removeEventFilter(this);
}

ScannerBurst::Time ScannerField::timeOf(const QKeyEvent& event) const {
    // The windowing system's own time of the key; what was made within the program has none.
    return event.timestamp() != 0 ? static_cast<ScannerBurst::Time>(event.timestamp()) : m_clock.elapsed();
}

void ScannerField::takeKey(QKeyEvent* event) {
    if (isModifierAlone(*event))
        return;
    if (isReturn(*event)) {
        // There is nothing that a Return in an empty field could end.
        if (text().isEmpty())
            return;
        settle(m_burst.returnKey(timeOf(*event)));
        m_silence.start(static_cast<int>(ScannerBurst::kReturnPause));
        return;
    }
    settle(m_burst.key(timeOf(*event)));
    if (event->key() == Qt::Key_Tab)
        insert(QStringLiteral("\t"));
    else
        QLineEdit::keyPressEvent(event);
}

void ScannerField::settle(ScannerBurst::EarlierReturn earlier) {
    m_silence.stop();
    m_lastLook.stop();
    if (earlier == ScannerBurst::EarlierReturn::LineBreak)
        insert(QStringLiteral("\n"));
    else if (earlier == ScannerBurst::EarlierReturn::EndOfCard)
        submit();
}

void ScannerField::submit() {
    m_onSubmit();
}

void ScannerField::keyPressEvent(QKeyEvent* event) {
    takeKey(event);
}

void ScannerField::inputMethodEvent(QInputMethodEvent* event) {
    if (!event->commitString().isEmpty())
        settle(m_burst.key(m_clock.elapsed()));
    QLineEdit::inputMethodEvent(event);
}

bool ScannerField::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride)
        return false;
    auto* const key = static_cast<QKeyEvent*>(event);
    if (!watched->isWidgetType() || !isVisible() || !m_burst.isRunning(timeOf(*key)))
        return false;
    if (event->type() == QEvent::ShortcutOverride) {
        event->accept();
        return true;
    }
    // What reaches the field by itself is handled there, but for Tab, which would take the focus away first.
    if (watched == this && key->key() != Qt::Key_Tab)
        return false;
    takeKey(key);
    return true;
}

} // namespace vantor::ui
