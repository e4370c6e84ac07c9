#include "platform/qt/qt_file_dialogs.h"

#include "base/shown_text.h"
#include "base/text_lookup.h"

#include <QDir>
#include <QFileDialog>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardPaths>
#include <algorithm>
#include <string_view>
#include <utility>

namespace vantor {
namespace {

QString shown(std::string_view dutch) {
    return QString::fromStdString(lookUp(dutch));
}

// The kinds in the list of files, for which the toolkit has no Dutch.
class FileKinds final : public QFileIconProvider {
public:
    [[nodiscard]] QString type(const QFileInfo& file) const override {
        if (file.isDir())
            return shown("Map");
        return file.suffix().isEmpty() ? shown("Bestand") : shown("%1-bestand").arg(file.suffix());
    }
};

// All types as one entry of the dialog's list: "CSV, Tekst (*.csv *.txt)".
QString filterOf(const std::vector<FileType>& types) {
    QStringList names;
    QStringList patterns;
    for (const auto& type : types) {
        names += shown(type.name);
        for (const auto& extension : type.extensions)
            patterns += QStringLiteral("*.") + QString::fromStdString(extension);
    }
    return QStringLiteral("%1 (%2)").arg(names.join(QStringLiteral(", ")), patterns.join(QLatin1Char(' ')));
}

bool hasExtensionOf(const FileType& type, const QString& name) {
    return std::any_of(type.extensions.begin(), type.extensions.end(), [&](const auto& extension) {
        return name.endsWith(QLatin1Char('.') + QString::fromStdString(extension), Qt::CaseInsensitive);
    });
}

QString withExtensionOf(const FileType& type, const QString& path) {
    if (type.extensions.empty() || hasExtensionOf(type, path))
        return path;
    return path + QLatin1Char('.') + QString::fromStdString(type.extensions.front());
}

// A colon in front would make the toolkit look among its own resources.
QString within(const QDir& folder, const QString& name) {
    return name.startsWith(QLatin1Char(':')) ? folder.absolutePath() + QLatin1Char('/') + name
                                             : folder.absoluteFilePath(name);
}

// The file that the dialog ended with. The toolkit's own dialog takes quotation marks for a list of names.
QString chosenFile(const QFileDialog& dialog) {
    const auto* const typed = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    if (typed != nullptr &&
        (typed->text().contains(QLatin1Char('"')) || typed->text().startsWith(QLatin1Char(':'))))
        return QDir::cleanPath(within(dialog.directory(), typed->text()));
    const auto files = dialog.selectedFiles();
    return files.isEmpty() ? QString() : files.front();
}

// Asks over the window whether the file may be replaced; a folder never may.
void askToReplace(QWidget* over, const QFileInfo& file, const std::function<void(bool)>& onAnswer) {
    const auto name = QString::fromStdString(shownText(file.fileName().toStdString()));
    auto* const question = new QMessageBox(over);
    question->setAttribute(Qt::WA_DeleteOnClose);
    question->setObjectName(QStringLiteral("replaceQuestion"));
    question->setWindowTitle(shown("Bestand vervangen"));
    question->setTextFormat(Qt::PlainText);
    const QPushButton* replace = nullptr;
    if (file.isDir()) {
        question->setIcon(QMessageBox::Warning);
        question->setText(shown("“%1” is een map. Kies een andere naam.").arg(name));
        question->addButton(shown("Sluit"), QMessageBox::RejectRole);
    } else {
        question->setIcon(QMessageBox::Question);
        question->setText(shown("“%1” bestaat al. Wil je het vervangen?").arg(name));
        replace = question->addButton(shown("Vervang"), QMessageBox::DestructiveRole);
        auto* const cancel = question->addButton(shown("Annuleer"), QMessageBox::RejectRole);
        question->setDefaultButton(cancel);
        question->setEscapeButton(cancel);
    }
    QObject::connect(question, &QDialog::finished, question, [question, replace, onAnswer] {
        onAnswer(replace != nullptr && question->clickedButton() == replace);
    });
    question->open();
}

QWidget* widgetOf(AskingWindow asking) {
    return static_cast<QWidget*>(asking.window);
}

} // namespace

QtFileDialogs::QtFileDialogs()
    : m_kinds(std::make_unique<FileKinds>()),
      m_folder(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)) {
    if (!QFileInfo(m_folder).isDir())
        m_folder = QDir::homePath();
}

QtFileDialogs::~QtFileDialogs() = default;

QFileDialog* QtFileDialogs::makeDialog(QWidget* over, const char* objectName,
                                       QFileDialog::AcceptMode mode) const {
    const bool saves = mode == QFileDialog::AcceptSave;
    auto* const dialog = new QFileDialog(over);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setObjectName(QLatin1String(objectName));
    dialog->setIconProvider(m_kinds.get());
    dialog->setWindowTitle(saves ? shown("Bewaar als") : shown("Open bestand"));
    // Makes the buttons anew, so that their texts have to come behind it.
    dialog->setAcceptMode(mode);
    dialog->setLabelText(QFileDialog::LookIn, shown("Map:"));
    dialog->setLabelText(QFileDialog::FileName, shown("Bestandsnaam:"));
    dialog->setLabelText(QFileDialog::FileType, shown("Soort:"));
    dialog->setLabelText(QFileDialog::Accept, saves ? shown("Bewaar") : shown("Open"));
    dialog->setLabelText(QFileDialog::Reject, shown("Annuleer"));
    dialog->setDirectory(m_folder);
    return dialog;
}

void QtFileDialogs::askWhereToSave(AskingWindow asking, const std::string& proposedName, const FileType& type,
                                   OnAnswer onAnswer) {
    openSaveDialog(widgetOf(asking), QString::fromStdString(proposedName), type, onAnswer);
}

void QtFileDialogs::openSaveDialog(QWidget* over, const QString& name, const FileType& type,
                                   const OnAnswer& onAnswer) {
    auto* const dialog = makeDialog(over, "saveDialog", QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setOption(QFileDialog::DontConfirmOverwrite);
    dialog->setNameFilter(filterOf({type}));
    dialog->selectFile(within(QDir(m_folder), name));
    QObject::connect(dialog, &QDialog::finished, dialog, [this, dialog, over, type, onAnswer](int result) {
        const auto chosen = result == QDialog::Accepted ? chosenFile(*dialog) : QString();
        if (chosen.isEmpty())
            return onAnswer(std::nullopt);
        const QFileInfo file(withExtensionOf(type, chosen));
        m_folder = file.absolutePath();
        if (!file.exists())
            return onAnswer(file.filesystemAbsoluteFilePath());
        askToReplace(over, file, [this, over, file, type, onAnswer](bool replaces) {
            if (replaces)
                onAnswer(file.filesystemAbsoluteFilePath());
            else
                openSaveDialog(over, file.fileName(), type, onAnswer);
        });
    });
    dialog->open();
}

void QtFileDialogs::askWhatToOpen(AskingWindow asking, const std::vector<FileType>& types,
                                  OnAnswer onAnswer) {
    auto* const dialog = makeDialog(widgetOf(asking), "openDialog", QFileDialog::AcceptOpen);
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setNameFilter(filterOf(types));
    QObject::connect(dialog, &QDialog::finished, dialog,
                     [this, dialog, onAnswer = std::move(onAnswer)](int result) {
                         const QFileInfo file(result == QDialog::Accepted ? chosenFile(*dialog) : QString());
                         if (!file.isFile())
                             return onAnswer(std::nullopt);
                         m_folder = file.absolutePath();
                         onAnswer(file.filesystemAbsoluteFilePath());
                     });
    dialog->open();
}

} // namespace vantor
