#include "ui/csv_import_sheet.h"

#include "base/text.h"
#include "ui/beside_window.h"
#include "ui/dropped_files.h"
#include "ui/large_text_edit.h"
#include "ui/text.h"
#include "ui/theme.h"

#include <QDragEnterEvent>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace vantor::ui {
namespace {

constexpr int kClosingDelay = 1500;
constexpr int kLeastEditorHeight = 150;
constexpr std::uint64_t kMostFileBytes = std::uint64_t{64} << 20U;

} // namespace

CsvImportSheet::CsvImportSheet(QWidget* over, const char* objectName, const Texts& texts,
                               const Services& services)
    : Sheet(over, objectName, texts.title),
      m_services(services),
      m_result(texts.result) {
    setAcceptDrops(true);
    addTitle(texts.title);
    addExplanation(texts.explanation);
    m_csvText = named(new LargeTextEdit, "csvText", shown("CSV-tekst"));
    m_csvText->setFont(theme::monospacedFont());
    m_csvText->setMinimumHeight(kLeastEditorHeight);
    m_csvText->setTabChangesFocus(true);
    m_csvText->setLineWrapMode(QPlainTextEdit::NoWrap);
    // A dropped file is to be read, not pasted as its address.
    m_csvText->setAcceptDrops(false);
    auto* const example =
        named(new TextLabel(texts.example, theme::monospacedFont(), TextColor::Secondary, true), "example");
    if (texts.exampleFirst)
        column()->addWidget(example);
    column()->addWidget(m_csvText, 1);
    if (!texts.exampleFirst)
        column()->addWidget(example);

    auto* const choose = named(new QPushButton(shown("Kies bestand...")), "chooseFileButton");
    choose->setAutoDefault(false);
    m_resultLabel = named(new TextLabel(QString(), theme::captionFont(), TextColor::Green), "importResult");
    m_resultLabel->hide();
    m_onlyBeginning =
        named(new TextLabel(shown("Alleen het begin is te zien"), theme::captionFont(), TextColor::Secondary),
              "onlyBeginning");
    m_onlyBeginning->hide();
    auto* const row = new QHBoxLayout;
    row->setSpacing(theme::kStep);
    row->addWidget(choose);
    row->addWidget(m_resultLabel);
    row->addStretch();
    row->addWidget(m_onlyBeginning);
    column()->addLayout(row);
    m_import = named(new ProminentButton(shown("Importeer")), "importButton");
    m_import->setAutoDefault(false);
    m_import->setEnabled(false);
    addCancelButton(m_import);

    m_closing.setSingleShot(true);
    m_closing.setInterval(kClosingDelay);
    m_closing.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_closing, &QTimer::timeout, this, &QDialog::accept);
    QObject::connect(m_csvText, &QPlainTextEdit::textChanged, this, [this] {
        m_import->setEnabled(!m_csvText->isEmpty());
        m_onlyBeginning->setVisible(m_csvText->holdsMoreThanItShows());
    });
    QObject::connect(choose, &QPushButton::clicked, this, [this] { chooseFile(); });
    QObject::connect(m_import, &QPushButton::clicked, this, [this] { runImport(); });
    m_csvText->setFocus();
}

void CsvImportSheet::chooseFile() {
    if (const auto path = m_services.dialogs.askWhatToOpen({csvType(), plainTextType()}))
        readFile(*path);
}

void CsvImportSheet::readFile(const std::filesystem::path& path) {
    readBesideWindow<QString>(
        this,
        [&files = m_services.files, path] {
            const auto read = files.read(path, kMostFileBytes);
            const auto text = read.bytes ? textOfFile(*read.bytes) : std::nullopt;
            return text ? qstring(*text) : QString();
        },
        [this, chosen = ++m_chosen](const QString& text) {
            if (!text.isNull() && chosen == m_chosen)
                m_csvText->setText(text);
        });
}

void CsvImportSheet::runImport() {
    const auto count = importText(typed(m_csvText->text()));
    if (!count)
        return;
    m_resultLabel->setText(m_result.arg(*count));
    m_resultLabel->show();
    if (*count >= 1 && !m_closing.isActive())
        m_closing.start();
}

void CsvImportSheet::dragEnterEvent(QDragEnterEvent* event) {
    if (!droppedFiles(*event->mimeData()).empty())
        event->acceptProposedAction();
}

void CsvImportSheet::dropEvent(QDropEvent* event) {
    const auto files = droppedFiles(*event->mimeData());
    if (files.empty())
        return;
    readFile(files.front());
    event->acceptProposedAction();
}

} // namespace vantor::ui
