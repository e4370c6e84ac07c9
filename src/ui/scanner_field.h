// ScannerField: the line that a scanner types cards into, or a person.
//
// - A Return followed by more keys is a line break of the card; one followed by silence submits it (see
//   view/scanner_burst.h). Ctrl+J and Ctrl+M count as Return. Text of several lines can be pasted.
// - A burst that began in the field stays in it: its keys are taken back from wherever the focus went meanwhile,
//   and trigger no shortcuts, until the scanner falls silent.
#pragma once

#include "view/scanner_burst.h"

#include <QElapsedTimer>
#include <QLineEdit>
#include <QTimer>
#include <functional>

namespace vantor::ui {

class ScannerField : public QLineEdit {
public:
    // `onSubmit` is called with the field still holding the card's text.
    explicit ScannerField(std::function<void()> onSubmit);
    ~ScannerField() override;

    // Types a key that was pressed elsewhere.
    void takeKey(QKeyEvent* event);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] ScannerBurst::Time timeOf(const QKeyEvent& event) const;
    void settle(ScannerBurst::EarlierReturn earlier);
    void submit();

    std::function<void()> m_onSubmit;
    ScannerBurst m_burst;
    QTimer m_silence;
    QTimer m_lastLook;
    QElapsedTimer m_clock;
};

} // namespace vantor::ui
