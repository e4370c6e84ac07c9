// PseudoTranslation: while it stands, every text that passes the text lookup is written in other letters.
//
// The Latin letters a text still holds come from one that was never looked up, as long as the data hold none.
#pragma once

#include "base/text_lookup.h"

#include <regex>
#include <set>
#include <string>
#include <string_view>

namespace vantor::testing {

class PseudoTranslation {
public:
    PseudoTranslation() {
        setTextLookup([this](std::string_view dutch) {
            m_lookedUp.emplace(dutch);
            return translated(dutch);
        });
    }
    PseudoTranslation(const PseudoTranslation&) = delete;
    PseudoTranslation& operator=(const PseudoTranslation&) = delete;
    ~PseudoTranslation() { setTextLookup({}); }

    // The Dutch wording of all that was looked up.
    [[nodiscard]] const std::set<std::string, std::less<>>& lookedUp() const { return m_lookedUp; }

    // The wide forms of the letters A to Z stand in Unicode in their own order.
    [[nodiscard]] static std::string translated(std::string_view dutch) {
        std::string text;
        for (const char c : dutch) {
            if (c >= 'A' && c <= 'Z')
                (text += "\xEF\xBC") += static_cast<char>('\xA1' + (c - 'A'));
            else if (c >= 'a' && c <= 'z')
                (text += "\xEF\xBD") += static_cast<char>('\x81' + (c - 'a'));
            else
                text += c;
        }
        return text;
    }

    // Whether a part of it was not translated.
    [[nodiscard]] static bool isUntranslated(const std::string& text) {
        // The names of keys are the keyboard's.
        static const std::regex kKeys(R"re(\b((Ctrl|Shift|Alt)\+\S+|F[0-9]+))re");
        static const std::regex kLetter("[A-Za-z]");
        return std::regex_search(std::regex_replace(text, kKeys, ""), kLetter);
    }

private:
    std::set<std::string, std::less<>> m_lookedUp;
};

} // namespace vantor::testing
