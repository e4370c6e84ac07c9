// extractedTexts(): the texts that scripts/texts finds in the sources, for translators.
#pragma once

#include "tests/support/command.h"

#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace vantor::testing {

// The texts of a template as xgettext writes it, each with the places it stands in: "src/ui/sheets/sheet.cpp:48 ...".
inline std::map<std::string, std::string> textsOfTemplate(const std::string& pot) {
    std::map<std::string, std::string> texts;
    std::string text;
    std::string places;
    bool within = false;
    const auto addQuoted = [&](std::string_view line) {
        for (auto i = line.find('"') + 1; i + 1 < line.size(); ++i) {
            if (line[i] == '\\' && line[++i] == 'n')
                text += '\n';
            else
                text += line[i];
        }
    };
    std::istringstream lines(pot);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("#: ")) {
            places += line.substr(3) + ' ';
        } else if (line.starts_with("msgid ")) {
            within = true;
            addQuoted(line);
        } else if (within && line.starts_with('"')) {
            addQuoted(line);
        } else if (line.starts_with("msgstr")) {
            // The one without a place is the template's own head.
            if (!places.empty())
                texts[text] = places;
            text.clear();
            places.clear();
            within = false;
        }
    }
    return texts;
}

inline std::map<std::string, std::string> extractedTexts(const std::string& project) {
    const auto run = runCommand("'" + project + "/scripts/texts' -");
    if (run.status != 0)
        throw std::runtime_error(run.output);
    return textsOfTemplate(run.output);
}

} // namespace vantor::testing
