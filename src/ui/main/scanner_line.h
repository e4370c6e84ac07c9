// ScannerLine: the field that the scanner types into, and the button that submits it.
#pragma once

#include "ui/widgets/widgets.h"

#include <functional>
#include <string>

namespace vantor::ui {

class ScannerField;

class ScannerLine : public QWidget {
public:
    // `onScan` gets the trimmed text, which is never empty; the field is emptied after it.
    explicit ScannerLine(std::function<void(const std::string& text)> onScan);

    [[nodiscard]] ScannerField& field() const { return *m_field; }

private:
    void submit();

    std::function<void(const std::string& text)> m_onScan;
    ScannerField* m_field;
    QPushButton* m_activate;
};

} // namespace vantor::ui
