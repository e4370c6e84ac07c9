// FileDialogs: asks the user for a place in the file system.
#pragma once

#include <filesystem>
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

class FileDialogs {
public:
    virtual ~FileDialogs() = default;

    // Where to save; absent when the user cancels. The proposed name is taken as it stands, but a "/" in it
    // is shown as "-". The result has the type's extension, and the user has agreed to replace a file of that
    // name.
    [[nodiscard]] virtual std::optional<std::filesystem::path> askWhereToSave(const std::string& proposedName,
                                                                              const FileType& type) = 0;

    // One existing file, chosen among those of the types; absent when the user cancels.
    [[nodiscard]] virtual std::optional<std::filesystem::path>
    askWhatToOpen(const std::vector<FileType>& types) = 0;
};

} // namespace vantor
