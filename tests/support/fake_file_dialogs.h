// FakeFileDialogs: answers at once as a test told it to, or has real dialogs ask, and keeps what it was asked.
#pragma once

#include "base/text_lookup.h"
#include "platform/file_dialogs.h"

#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vantor::testing {

class FakeFileDialogs final : public FileDialogs {
public:
    // What the user chooses; absent: cancels.
    std::optional<std::filesystem::path> whereToSave;
    std::optional<std::filesystem::path> whatToOpen;

    // Asked instead where it is set.
    FileDialogs* real = nullptr;

    // What was asked for, in order. Types are their extensions, and their names as the dialogs show them.
    std::vector<std::string> proposedNames;
    std::vector<std::vector<std::string>> savedTypes;
    std::vector<std::vector<std::string>> openedTypes;
    std::vector<std::string> typeNames;

    void askWhereToSave(AskingWindow asking, const std::string& proposedName, const FileType& type,
                        OnAnswer onAnswer) override {
        proposedNames.push_back(proposedName);
        savedTypes.push_back(type.extensions);
        typeNames.push_back(lookUp(type.name));
        if (real != nullptr)
            return real->askWhereToSave(asking, proposedName, type, std::move(onAnswer));
        onAnswer(whereToSave);
    }

    void askWhatToOpen(AskingWindow asking, const std::vector<FileType>& types, OnAnswer onAnswer) override {
        auto& extensions = openedTypes.emplace_back();
        for (const auto& type : types) {
            extensions.insert(extensions.end(), type.extensions.begin(), type.extensions.end());
            typeNames.push_back(lookUp(type.name));
        }
        if (real != nullptr)
            return real->askWhatToOpen(asking, types, std::move(onAnswer));
        onAnswer(whatToOpen);
    }
};

} // namespace vantor::testing
