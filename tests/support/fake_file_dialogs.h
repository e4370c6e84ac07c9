// FakeFileDialogs: answers as a test told it to, and keeps what it was asked.
#pragma once

#include "base/text_lookup.h"
#include "platform/file_dialogs.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vantor::testing {

class FakeFileDialogs final : public FileDialogs {
public:
    // What the user chooses; absent: cancels.
    std::optional<std::filesystem::path> whereToSave;
    std::optional<std::filesystem::path> whatToOpen;

    // What was asked for, in order. Types are their extensions, and their names as the dialogs show them.
    std::vector<std::string> proposedNames;
    std::vector<std::vector<std::string>> savedTypes;
    std::vector<std::vector<std::string>> openedTypes;
    std::vector<std::string> typeNames;

    [[nodiscard]] std::optional<std::filesystem::path> askWhereToSave(const std::string& proposedName,
                                                                      const FileType& type) override {
        proposedNames.push_back(proposedName);
        savedTypes.push_back(type.extensions);
        typeNames.push_back(lookUp(type.name));
        return whereToSave;
    }

    [[nodiscard]] std::optional<std::filesystem::path>
    askWhatToOpen(const std::vector<FileType>& types) override {
        auto& extensions = openedTypes.emplace_back();
        for (const auto& type : types) {
            extensions.insert(extensions.end(), type.extensions.begin(), type.extensions.end());
            typeNames.push_back(lookUp(type.name));
        }
        return whatToOpen;
    }
};

} // namespace vantor::testing
