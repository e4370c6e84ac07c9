#include "platform/qt/qt_file_dialogs.h"

#include "base/shown_text.h"
#include "base/text_lookup.h"

#include <QApplication>
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

QWidget* windowInFront() {
    auto* const modal = QApplication::activeModalWidget();
    return modal != nullptr ? modal : QApplication::activeWindow();
}

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

// `kinds` outlives the dialog.
void prepare(QFileDialog& dialog, FileKinds& kinds, QFileDialog::AcceptMode mode, const QString& title,
             const QString& accept) {
    dialog.setIconProvider(&kinds);
    dialog.setWindowTitle(title);
    // Makes the buttons anew, so that their texts have to come behind it.
    dialog.setAcceptMode(mode);
    dialog.setLabelText(QFileDialog::LookIn, shown("Map:"));
    dialog.setLabelText(QFileDialog::FileName, shown("Bestandsnaam:"));
    dialog.setLabelText(QFileDialog::FileType, shown("Soort:"));
    dialog.setLabelText(QFileDialog::Accept, accept);
    dialog.setLabelText(QFileDialog::Reject, shown("Annuleer"));
}

// The file that the dialog ended with. The toolkit's own dialog takes quotation marks for a list of names.
QString chosenFile(const QFileDialog& dialog) {
    const auto* const typed = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    if (typed != nullptr && typed->text().contains(QLatin1Char('"')))
        return QDir::cleanPath(dialog.directory().absoluteFilePath(typed->text()));
    const auto files = dialog.selectedFiles();
    return files.isEmpty() ? QString() : files.front();
}

bool mayReplace(const QString& path) {
    const QFileInfo file(path);
    const auto name = QString::fromStdString(shownText(file.fileName().toStdString()));
    QMessageBox question(windowInFront());
    question.setObjectName(QStringLiteral("replaceQuestion"));
    question.setWindowTitle(shown("Bestand vervangen"));
    question.setTextFormat(Qt::PlainText);
    if (file.isDir()) {
        question.setIcon(QMessageBox::Warning);
        question.setText(shown("“%1” is een map. Kies een andere naam.").arg(name));
        question.addButton(shown("Sluit"), QMessageBox::RejectRole);
        question.exec();
        return false;
    }
    question.setIcon(QMessageBox::Question);
    question.setText(shown("“%1” bestaat al. Wil je het vervangen?").arg(name));
    const auto* const replace = question.addButton(shown("Vervang"), QMessageBox::DestructiveRole);
    auto* const cancel = question.addButton(shown("Annuleer"), QMessageBox::RejectRole);
    question.setDefaultButton(cancel);
    question.setEscapeButton(cancel);
    question.exec();
    return question.clickedButton() == replace;
}

} // namespace

QtFileDialogs::QtFileDialogs()
    : m_folder(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)) {
    if (!QFileInfo(m_folder).isDir())
        m_folder = QDir::homePath();
}

std::optional<std::filesystem::path> QtFileDialogs::askWhereToSave(const std::string& proposedName,
                                                                   const FileType& type) {
    auto name = QString::fromStdString(proposedName).replace(QLatin1Char('/'), QLatin1Char('-'));
    while (true) {
        FileKinds kinds;
        QFileDialog dialog(windowInFront());
        dialog.setObjectName(QStringLiteral("saveDialog"));
        prepare(dialog, kinds, QFileDialog::AcceptSave, shown("Bewaar als"), shown("Bewaar"));
        dialog.setFileMode(QFileDialog::AnyFile);
        dialog.setOption(QFileDialog::DontConfirmOverwrite);
        dialog.setNameFilter(filterOf({type}));
        dialog.setDirectory(m_folder);
        dialog.selectFile(QDir(m_folder).absoluteFilePath(name));
        if (dialog.exec() != QDialog::Accepted)
            return std::nullopt;
        const auto chosen = chosenFile(dialog);
        if (chosen.isEmpty())
            return std::nullopt;
        const QFileInfo file(withExtensionOf(type, chosen));
        m_folder = file.absolutePath();
        if (!file.exists() || mayReplace(file.absoluteFilePath()))
            return file.filesystemAbsoluteFilePath();
        name = file.fileName();
    }
}

std::optional<std::filesystem::path> QtFileDialogs::askWhatToOpen(const std::vector<FileType>& types) {
    FileKinds kinds;
    QFileDialog dialog(windowInFront());
    dialog.setObjectName(QStringLiteral("openDialog"));
    prepare(dialog, kinds, QFileDialog::AcceptOpen, shown("Open bestand"), shown("Open"));
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setNameFilter(filterOf(types));
    dialog.setDirectory(m_folder);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    const QFileInfo file(chosenFile(dialog));
    if (!file.isFile())
        return std::nullopt;
    m_folder = file.absolutePath();
    return file.filesystemAbsoluteFilePath();
}

} // namespace vantor
