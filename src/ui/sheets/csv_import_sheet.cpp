#include "ui/sheets/csv_import_sheet.h"

#include "base/text.h"
#include "formats/list_limit.h"
#include "ui/frame/beside_window.h"
#include "ui/frame/file_notices.h"
#include "ui/frame/theme.h"
#include "ui/main/dropped_files.h"
#include "ui/widgets/large_text_edit.h"
#include "ui/widgets/text.h"

#include <QDragEnterEvent>
#include <QHBoxLayout>
#include <QLocale>
#include <QVBoxLayout>
#include <new>
#include <utility>

namespace vantor::ui {
namespace {

constexpr int kClosingDelay = 1500;
constexpr int kLeastEditorHeight = 150;
constexpr std::uint64_t kMostFileBytes = std::uint64_t{64} << 20U;

QString tooLittleMemory() {
    return shown("Er is te weinig geheugen voor deze lijst");
}

QString tooLong(std::size_t lines) {
    const QLocale dutch(QLocale::Dutch);
    return shown("De lijst heeft %1 regels; meer dan %2 kan niet")
        .arg(dutch.toString(static_cast<qulonglong>(lines)),
             dutch.toString(static_cast<qulonglong>(kMostListLines)));
}

} // namespace

// A text that was understood, or was not: one of too many lines, or too large for the memory there is.
struct CsvImportSheet::ReadList {
    std::size_t lines = 0;
    Add add;

    static ReadList of(const QString& text, const Reader& reader) {
        try {
            const auto utf8 = typed(text);
            const auto lines = lineCount(utf8);
            return {lines, lines <= kMostListLines ? reader(utf8) : Add()};
        } catch (const std::bad_alloc&) {
            return {};
        }
    }
};

CsvImportSheet::CsvImportSheet(QWidget* over, const char* objectName, const Texts& texts,
                               const Services& services)
    : Sheet(over, objectName, texts.title),
      m_services(services),
      m_result(texts.result),
      m_closing(this) {
    setAcceptDrops(true);
    addTitle(texts.title);
    addExplanation(texts.explanation);
    makeEditor(texts);
    m_import = named(new ProminentButton(shown("Importeer")), "importButton");
    m_import->setAutoDefault(false);
    m_import->setEnabled(false);
    addCancelButton(m_import);

    m_closing.setObjectName(QStringLiteral("closing"));
    m_closing.setSingleShot(true);
    m_closing.setInterval(kClosingDelay);
    m_closing.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_closing, &QTimer::timeout, this, [this] { closeWhenDone(); });
    QObject::connect(m_csvText, &QPlainTextEdit::textChanged, this, [this] {
        m_import->setEnabled(!m_csvText->isEmpty());
        m_onlyBeginning->setVisible(m_csvText->holdsMoreThanItShows());
    });
    QObject::connect(m_import, &QPushButton::clicked, this, [this] { runImport(); });
    m_csvText->setFocus();
}

void CsvImportSheet::makeEditor(const Texts& texts) {
    m_csvText = named(new LargeTextEdit, "csvText", shown("CSV-tekst"));
    m_csvText->setFont(theme::monospacedFont());
    m_csvText->setMinimumHeight(kLeastEditorHeight);
    m_csvText->document()->setDocumentMargin(theme::kStep);
    m_csvText->setTabChangesFocus(true);
    m_csvText->setLineWrapMode(QPlainTextEdit::NoWrap);
    // A dropped file is to be read, not pasted as its address.
    m_csvText->setAcceptDrops(false);
    auto* const example =
        named(new TextLabel(texts.example, theme::monospacedFont(), TextColor::Secondary, true), "example");
    // In the column itself, which gives what wraps its height before the editor its own.
    column()->setSpacing(theme::kStep);
    if (texts.exampleFirst) {
        column()->addSpacing(theme::kStep);
        column()->addWidget(example);
    }
    column()->addSpacing(theme::kStep);
    column()->addLayout(labelled(shown("CSV-tekst"), m_csvText), 1);
    if (!texts.exampleFirst)
        column()->addWidget(example);

    auto* const choose = named(new QPushButton(shown("Kies bestand...")), "chooseFileButton");
    choose->setAutoDefault(false);
    QObject::connect(choose, &QPushButton::clicked, this, [this] { chooseFile(); });
    m_resultLabel =
        named(new TextLabel(QString(), theme::captionFont(), TextColor::Green, true), "importResult");
    m_resultLabel->hide();
    m_onlyBeginning =
        named(new TextLabel(shown("Alleen het begin is te zien"), theme::captionFont(), TextColor::Secondary),
              "onlyBeginning");
    m_onlyBeginning->hide();
    auto* const row = new QHBoxLayout;
    row->setSpacing(theme::kStep);
    row->addWidget(choose);
    row->addWidget(m_resultLabel, 1);
    row->addStretch();
    row->addWidget(m_onlyBeginning, 0, Qt::AlignRight);
    column()->addLayout(row);
}

void CsvImportSheet::chooseFile() {
    m_asking = true;
    m_services.dialogs.askWhatToOpen(askingWindow(this), {csvType(), plainTextType()},
                                     [this](const auto& path) {
                                         m_asking = false;
                                         if (path)
                                             readFile(*path);
                                         closeWhenDone();
                                     });
}

void CsvImportSheet::readFile(const std::filesystem::path& path) {
    struct Chosen {
        // Absent when it cannot be read, with why, or is no text.
        std::optional<QString> text;
        std::optional<FileStore::ReadFailure> why;
    };
    readBesideWindow<Chosen>(
        this,
        [&files = m_services.files, path]() -> Chosen {
            const auto read = files.read(path, kMostFileBytes);
            if (!read.bytes)
                return {{}, read.failure};
            const auto text = textOfFile(*read.bytes);
            return {text ? std::optional(qstring(*text)) : std::nullopt, {}};
        },
        [this, path, chosen = ++m_chosen](const Chosen& read) {
            if (chosen != m_chosen)
                return;
            if (read.text)
                m_csvText->setText(*read.text);
            else if (read.why)
                tellUnreadable(m_services, path, *read.why);
            else
                tellNoUtf8(m_services, path);
        });
}

void CsvImportSheet::runImport() {
    try {
        m_waiting.push_back(m_csvText->text());
        readNext();
    } catch (const std::bad_alloc&) {
        show({{}, tooLittleMemory()});
    }
}

void CsvImportSheet::readNext() {
    if (m_reading || m_waiting.empty())
        return;
    auto text = std::move(m_waiting.front());
    m_waiting.pop_front();
    readBesideWindow<ReadList>(
        this, [text = std::move(text), reader = reader()] { return ReadList::of(text, reader); },
        [this](const ReadList& read) { take(read); });
    m_reading = true;
}

void CsvImportSheet::take(const ReadList& read) {
    // Closed meanwhile, and about to be deleted.
    if (!isVisible())
        return;
    m_reading = false;
    try {
        if (read.lines > kMostListLines)
            show({{}, tooLong(read.lines)});
        else
            show(read.add ? read.add() : Result{{}, tooLittleMemory()});
    } catch (const std::bad_alloc&) {
        show({{}, tooLittleMemory()});
    }
    readNext();
    closeWhenDone();
}

void CsvImportSheet::show(const Result& result) {
    if (!result.count && result.problem.isEmpty())
        return;
    m_resultLabel->setColor(result.count ? TextColor::Green : TextColor::Red);
    m_resultLabel->setText(result.count ? m_result.arg(*result.count) : result.problem);
    m_resultLabel->show();
    if (result.count.value_or(0) >= 1 && !m_imported) {
        m_imported = true;
        m_closing.start();
    }
}

void CsvImportSheet::closeWhenDone() {
    if (m_imported && !m_closing.isActive() && !m_asking && !m_reading)
        accept();
}

void CsvImportSheet::dragEnterEvent(QDragEnterEvent* event) {
    if (!droppedFiles(*event->mimeData()).empty())
        acceptAsCopy(*event);
}

void CsvImportSheet::dropEvent(QDropEvent* event) {
    const auto files = droppedFiles(*event->mimeData());
    acceptAsCopy(*event);
    if (!files.empty() && event->isAccepted())
        readFile(files.front());
}

} // namespace vantor::ui
