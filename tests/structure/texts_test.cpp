// Holds what a user can read against what translators get to see.

#include "tests/support/extracted_texts.h"
#include "tests/support/table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <string>

namespace vantor::testing {
namespace {

// Every text between quotation marks in the sources, with its places.
std::map<std::string, std::string> allLiterals() {
    // It warns of what no translator will see.
    const auto run = runCommand(
        "(cd '" VANTOR_SOURCE "' && find src -name '*.cpp' -o -name '*.h' | "
        "xgettext --files-from=- --extract-all --language=C++ --from-code=UTF-8 --output=- 2>/dev/null)");
    EXPECT_EQ(run.status, 0) << run.output;
    return textsOfTemplate(run.output);
}

// Two words in a row, or a word as a sentence starts with, or a file of the user's.
bool looksLikeWords(const std::string& text) {
    static const std::regex kWords(
        R"re([A-Za-z]{2,}[ ,.:;!?]+[a-z]{2,}|^[A-Z][a-z]+|[a-z]{2,}(-[A-Za-z]+)+\.[a-z]+)re");
    return std::regex_search(text, kWords);
}

TEST(Texts, AreAllExtracted) {
    // Names of files, keys and settings, and of what other programs made.
    static const auto kNoTexts = tableOf<std::string>(
        "vantorprep.windowPlace.", "vantorprep.windowSize.", "vantorprep.updateChecker", "Vantor",
        "vantor-prep lock 1", "shoots.json", "catalog.json", "Liberation Sans,sans-serif", "Fusion",
        "ReadOne", "Read", "<p style=\"white-space:pre-wrap\">%1</p>");
    // Keys of the keyboard, in every language.
    static const std::regex kKeys(R"re(Ctrl\+(Shift\+)?.)re");
    static const std::regex kBusNames(R"re(org\.freedesktop\.[A-Za-z.]+)re");
    const auto extracted = extractedTexts(VANTOR_SOURCE);
    std::size_t looked = 0;
    for (const auto& [text, places] : allLiterals()) {
        if (!looksLikeWords(text))
            continue;
        ++looked;
        EXPECT_TRUE(extracted.contains(text) || std::ranges::count(kNoTexts, text) > 0 ||
                    std::regex_match(text, kKeys) || std::regex_match(text, kBusNames))
            << text << " in " << places;
    }
    EXPECT_GT(looked, 150U);
    // And those that are only marked, to be looked up elsewhere.
    for (const auto* const text :
         {"Verwijderen", "PDF-bestanden", "Set;Merk;Items;Model;Locatie;Email;Getagd", "Naam;Kleuren;Merk",
          "%1: bestaat niet", "Vantor Prep reageert niet"})
        EXPECT_TRUE(extracted.contains(text)) << text;
}

} // namespace
} // namespace vantor::testing
