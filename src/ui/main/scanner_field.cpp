#include "ui/main/scanner_field.h"

#include <QApplication>
#include <QComboBox>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QPlainTextEdit>
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

// Together with Ctrl, Alt stands for the key that types a keyboard's third characters.
bool isCommand(const QKeyEvent& event) {
    const auto held = event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    return held != 0 && (held & Qt::ControlModifier) == 0;
}

// Makes the toolkit judge anew whether a modal window blocks this one. Setting what is set already does.
void judgeBlocking(QWindow* window) {
    window->setTransientParent(window->transientParent());
}

} // namespace

bool typesCharacter(const QKeyEvent& event) {
    const auto held = event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    return held == 0 && !event.text().isEmpty() && event.text().front().isPrint() &&
           event.key() != Qt::Key_Space;
}

bool takesText(const QWidget* widget) {
    if (widget == nullptr)
        return false;
    const auto* const combo = qobject_cast<const QComboBox*>(widget);
    return qobject_cast<const QLineEdit*>(widget) != nullptr ||
           qobject_cast<const QPlainTextEdit*>(widget) != nullptr ||
           (combo != nullptr && combo->isEditable());
}

ScannerField::ScannerField(std::function<void()> onSubmit) : m_onSubmit(std::move(onSubmit)) {
    m_clock.start();
    m_silence.setSingleShot(true);
    m_silence.setTimerType(Qt::PreciseTimer);
    m_lastLook.setSingleShot(true);
    m_lastLook.setTimerType(Qt::PreciseTimer);
    // After a busy moment the timer may be served before keys that were pressed long before it was due.
    QObject::connect(&m_silence, &QTimer::timeout, this, [this] { m_lastLook.start(kLastLook); });
    QObject::connect(&m_lastLook, &QTimer::timeout, this, [this] { fallSilent(); });
    QObject::connect(qApp, &QGuiApplication::focusWindowChanged, this, [this](const QWindow* focused) {
        if (focused == nullptr || focused != m_opening)
            return;
        m_opening.clear();
        judgeBlocking(window()->windowHandle());
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
    if (isCommand(*event)) {
        event->ignore();
        return;
    }
    m_beforeStray.reset();
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

void ScannerField::fallSilent() {
    if (m_beforeStray) {
        setText(*std::exchange(m_beforeStray, std::nullopt));
        return;
    }
    m_burst.fallSilent();
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

// A modal window blocks this one as soon as it is opened, but has the focus only when the desktop has shown it. The
// keys of that while would be thrown away, and a card that begins in it would go on without them in the other window.
void ScannerField::hearUntilFocused(QWindow* opening) {
    if (opening == nullptr || opening == QGuiApplication::focusWindow())
        return;
    // Judged while it stands over no window in particular, it blocks none.
    const auto modality = opening->modality();
    auto* const over = opening->transientParent();
    opening->setModality(Qt::WindowModal);
    opening->setTransientParent(nullptr);
    judgeBlocking(window()->windowHandle());
    opening->setTransientParent(over);
    opening->setModality(modality);
    m_opening = opening;
}

bool ScannerField::filterWindow(QEvent* event) {
    if (event->type() == QEvent::WindowBlocked)
        hearUntilFocused(QGuiApplication::modalWindow());
    if (!m_opening || (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride))
        return false;
    if (event->type() == QEvent::ShortcutOverride)
        event->accept();
    else
        takeKeyOfBlockedWindow(static_cast<QKeyEvent*>(event));
    return true;
}

void ScannerField::takeKeyOfBlockedWindow(QKeyEvent* event) {
    if (!isVisible())
        return;
    if (m_burst.isRunning(timeOf(*event))) {
        takeKey(event);
        return;
    }
    const auto* const focused = window()->focusWidget();
    if (!typesCharacter(*event) || (focused != this && takesText(focused)))
        return;
    // A hand's key is thrown away like any other once it is clear that no scanner follows it.
    const auto before = m_beforeStray.value_or(text());
    takeKey(event);
    m_beforeStray = before;
    m_silence.start(static_cast<int>(ScannerBurst::kReturnPause));
}

bool ScannerField::eventFilter(QObject* watched, QEvent* event) {
    if (watched->isWindowType())
        return watched == window()->windowHandle() && filterWindow(event);
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
