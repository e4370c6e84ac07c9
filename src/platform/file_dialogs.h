// FileDialogs: asks the user for a place in the file system.
//
// A question opens at once and the call returns; the answer comes later, from the event loop, on the user-interface
// thread. It never comes when the asking window has gone meanwhile: the dialog goes with it.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantor {

// A kind of file that a dialog admits.
struct FileType {
    // One of the program's own texts, in Dutch; the dialog shows what the text lookup has for it.
    std::string_view name;
    // Without dots; the first is added to a name that has none of them.
    std::vector<std::string> extensions;
};

// The window that asks: the dialog stands before it and blocks it, and no other.
struct AskingWindow {
    // As the toolkit knows it, for the toolkit's own dialogs; null for none.
    void* window = nullptr;
};

class FileDialogs {
public:
    // Absent when the user cancels.
    using OnAnswer = std::function<void(const std::optional<std::filesystem::path>&)>;

    virtual ~FileDialogs() = default;

    // Where to save. The proposed name is one that a file may have, and is shown as it stands. The answer has the type's
    // extension, and the user has agreed to replace a file of that name.
    virtual void askWhereToSave(AskingWindow asking, const std::string& proposedName, const FileType& type,
                                OnAnswer onAnswer) = 0;

    // One existing file, chosen among those of the types.
    virtual void askWhatToOpen(AskingWindow asking, const std::vector<FileType>& types,
                               OnAnswer onAnswer) = 0;
};

} // namespace vantor
