// ScannerField: the line that a scanner types cards into, or a person.
//
// - A Return followed by more keys is a line break of the card; one followed by silence submits it (see
//   view/scanner_burst.h). Ctrl+J and Ctrl+M count as Return. Text of several lines can be pasted.
// - A burst that began in the field stays in it: its keys are taken back from wherever the focus went meanwhile,
//   and trigger no shortcuts, until the scanner falls silent.
// - A burst that begins after a sheet was opened, but before that sheet has the focus, began in the field as well.
#pragma once

#include "view/scanner_burst.h"

#include <QElapsedTimer>
#include <QLineEdit>
#include <QPointer>
#include <QTimer>
#include <QWindow>
#include <functional>
#include <optional>

namespace vantor::ui {

class ScannerField : public QLineEdit {
public:
    // `onSubmit` is called with the field still holding the card's text.
    explicit ScannerField(std::function<void()> onSubmit);
    ~ScannerField() override;

    // Types a key that was pressed elsewhere. With Alt or Meta it is a command, and types nothing.
    void takeKey(QKeyEvent* event);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] ScannerBurst::Time timeOf(const QKeyEvent& event) const;
    void hearUntilFocused(QWindow* opening);
    bool filterWindow(QEvent* event);
    void takeKeyOfBlockedWindow(QKeyEvent* event);
    void fallSilent();
    void settle(ScannerBurst::EarlierReturn earlier);
    void submit();

    std::function<void()> m_onSubmit;
    ScannerBurst m_burst;
    QTimer m_silence;
    QTimer m_lastLook;
    QElapsedTimer m_clock;
    // The modal window that was opened last, until it has the focus.
    QPointer<QWindow> m_opening;
    // What the field held before a key that may turn out to be no scanner's.
    std::optional<QString> m_beforeStray;
};

// Whether the key types a character, other than Space, which presses buttons.
[[nodiscard]] bool typesCharacter(const QKeyEvent& event);

// Whether a widget that has the focus is one to type into.
[[nodiscard]] bool takesText(const QWidget* widget);

} // namespace vantor::ui
