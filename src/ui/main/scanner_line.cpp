#include "ui/main/scanner_line.h"

#include "base/text.h"
#include "ui/commands/commands.h"
#include "ui/frame/theme.h"
#include "ui/main/field_symbol.h"
#include "ui/main/scanner_field.h"
#include "ui/widgets/text.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <utility>

namespace vantor::ui {

ScannerLine::ScannerLine(std::function<void(const std::string& text)> onScan) : m_onScan(std::move(onScan)) {
    m_field =
        named(new ScannerField([this] { submit(); }), "scannerField", shown("Scan QR of typ setdata..."));
    m_field->setPlaceholderText(shown("Scan QR of typ setdata..."));
    Commands::tellShortcut(*m_field, m_field->placeholderText(), CommandId::ScannerField);
    m_activate = named(new QPushButton(shown("Activeer")), "activateScanButton", shown("Activeer"));
    m_activate->setEnabled(false);
    QObject::connect(m_field, &QLineEdit::textChanged, m_activate,
                     [this](const QString& text) { m_activate->setEnabled(!text.isEmpty()); });
    QObject::connect(m_activate, &QPushButton::clicked, this, [this] {
        submit();
        m_field->setFocus();
    });
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(theme::kMargin, theme::kPadding, theme::kMargin, theme::kPadding);
    row->setSpacing(theme::kStep);
    putSymbolInto(*m_field, QStringLiteral("barcode"));
    row->addWidget(m_field, 1);
    row->addWidget(m_activate);
}

void ScannerLine::submit() {
    const auto input = typed(m_field->text());
    const std::string text(trimmedOfLineBreaks(input));
    if (text.empty())
        return;
    m_onScan(text);
    emptyTaken(*m_field);
}

} // namespace vantor::ui
