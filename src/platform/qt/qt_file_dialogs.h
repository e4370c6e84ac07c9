// QtFileDialogs: the desktop's file dialogs, or the toolkit's where it has none.
//
// - They belong to the window that asks, which waits for them and takes them along when it goes. Outlives them.
// - A dialog opens in the folder in which the last one ended, the first one in the user's documents,
//   or at home where there is no such folder.
// - Before a file is replaced the user is asked about it by the name that it really has, extension included.
#pragma once

#include "platform/file_dialogs.h"

#include <QFileDialog>
#include <QString>
#include <memory>

class QFileIconProvider;

namespace vantor {

class QtFileDialogs final : public FileDialogs {
public:
    QtFileDialogs();
    ~QtFileDialogs() override;

    void askWhereToSave(AskingWindow asking, const std::string& proposedName, const FileType& type,
                        OnAnswer onAnswer) override;
    void askWhatToOpen(AskingWindow asking, const std::vector<FileType>& types, OnAnswer onAnswer) override;

private:
    [[nodiscard]] QFileDialog* makeDialog(QWidget* over, const char* objectName,
                                          QFileDialog::AcceptMode mode) const;
    void openSaveDialog(QWidget* over, const QString& name, const FileType& type, const OnAnswer& onAnswer);

    std::unique_ptr<QFileIconProvider> m_kinds;
    QString m_folder;
};

} // namespace vantor
