// QtFileDialogs: the desktop's file dialogs, or the toolkit's where it has none.
//
// - They stand before the window that is active, which waits for them.
// - A dialog opens in the folder in which the last one ended, the first one in the user's documents,
//   or at home where there is no such folder.
// - Before a file is replaced the user is asked about it by the name that it really has, extension included.
#pragma once

#include "platform/file_dialogs.h"

#include <QString>

namespace vantor {

class QtFileDialogs final : public FileDialogs {
public:
    QtFileDialogs();

    [[nodiscard]] std::optional<std::filesystem::path> askWhereToSave(const std::string& proposedName,
                                                                      const FileType& type) override;
    [[nodiscard]] std::optional<std::filesystem::path>
    askWhatToOpen(const std::vector<FileType>& types) override;

private:
    QString m_folder;
};

} // namespace vantor
