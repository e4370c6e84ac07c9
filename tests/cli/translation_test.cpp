// Has the command-line program say everything it can in another language.

#include "cli/commands.h"
#include "cli/input.h"
#include "formats/list_limit.h"
#include "platform/cairo/cairo_pdf_canvas.h"
#include "platform/libpng/libpng_writer.h"
#include "platform/qrencode/qrencode_encoder.h"
#include "tests/support/extracted_texts.h"
#include "tests/support/memory_file_store.h"
#include "tests/support/pseudo_translation.h"
#include "tests/support/table.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace vantor::cli {
namespace {

using ::testing::HasSubstr;
using vantor::testing::PseudoTranslation;

class CliTranslation : public ::testing::Test {
protected:
    CliTranslation() {
        EXPECT_NE(std::freopen("/dev/null", "r", stdin), nullptr);
        m_files.files = {
            {"σετ.csv", "Set;Merk\n1;ζήτα\n"},
            {"μακρύ.csv", "Set;Merk\n;" + std::string(2400, '1') + "\n"},
            {"λεπτό.csv", "Set;Merk\n;" + std::string(2300, '1') + "\n"},
            {"κενό.csv", ""},
            {"άκυρο.csv", "1;\xFF\n"},
            {"άκυρο.vantor", "[]"},
            {"άδειο.json",
             R"({"client":"","date":"2026-03-14T09:30:00Z","id":"10000000-0000-4000-8000-000000000001","location":"","name":"","sets":[]})"},
            {"κλειστό.csv", ""},
            {"μεγάλο.csv", std::string(kMostCsvBytes + 1, '1')},
            {"πολύ.csv", vantor::testing::repeated(kMostListLines + 1, "1\n")},
        };
        m_files.unreadable.insert("κλειστό.csv");
    }

    // What the program says on standard error, without its own name and those of its calls.
    std::string say(const std::vector<std::string_view>& arguments, int status) {
        Console console(false);
        ::testing::internal::CaptureStderr();
        const auto ended =
            run(readArguments(arguments), {m_files, m_encoder, m_pngs, CairoPdfCanvas::make}, console);
        auto said = ::testing::internal::GetCapturedStderr();
        EXPECT_EQ(ended, status) << said;
        for (const std::string_view own :
             {"vantor-prep-cli: ", " cards", " parse", " convert", " list", " qr"})
            said = without(own, std::move(said));
        return said;
    }

    // But for the names of files and options, which stay as they are.
    void expectTranslated(const std::vector<std::string_view>& arguments, int status,
                          std::string_view name = "") {
        const auto said = say(arguments, status);
        EXPECT_NE(said, "") << ::testing::PrintToString(arguments);
        EXPECT_THAT(said, HasSubstr(std::string(name)));
        EXPECT_FALSE(PseudoTranslation::isUntranslated(without(name, said))) << said;
    }

    static std::string without(std::string_view part, std::string text) {
        for (auto at = text.find(part); !part.empty() && at != std::string::npos; at = text.find(part))
            text.erase(at, part.size());
        return text;
    }

    vantor::testing::MemoryFileStore m_files;
    QrencodeEncoder m_encoder;
    LibpngWriter m_pngs;
    PseudoTranslation m_translation;
};

TEST_F(CliTranslation, LeavesNothingInDutch) {
    for (const std::string_view call : {"", "cards", "qr", "convert", "list", "parse"})
        EXPECT_FALSE(PseudoTranslation::isUntranslated(helpText(call))) << call;

    using Words = std::vector<std::string_view>;
    for (const auto& arguments :
         {Words{}, Words{"τι"}, Words{"list"}, Words{"list", "α", "β"}, Words{"list", "-"},
          Words{"list", "α.csv", "--from", "τι"}, Words{"list", "α"}, Words{"list", "--τι"},
          Words{"cards", "σετ.csv"}, Words{"cards", "σετ.csv", "--output=α", "--density", "τι"},
          Words{"parse", ""}})
        expectTranslated(arguments, kMisused);
    expectTranslated({"list", "α.csv", "--from"}, kMisused, "--from");
    expectTranslated({"list", "α.csv", "--from=csv", "--from=csv"}, kMisused, "--from");
    for (const std::string_view file :
         {"κανένα.csv", "κενό.csv", "άκυρο.csv", "άκυρο.vantor", "κλειστό.csv", "πολύ.csv"})
        expectTranslated({"list", file}, kFailed, file);
    expectTranslated({"parse", "κενό.csv"}, kFailed, "κενό.csv");
    expectTranslated({"cards", "άδειο.json", "--output", "α"}, kFailed, "άδειο.json");
    m_files.lacksMemory = true;
    expectTranslated({"list", "σετ.csv"}, kFailed, "σετ.csv");
    expectTranslated({"parse", "σετ.csv"}, kFailed, "σετ.csv");
    m_files.lacksMemory = false;
    m_files.failsToReplace = true;
    expectTranslated({"convert", "σετ.csv", "--output", "β.csv"}, kFailed, "β.csv");
    m_files.failsToReplace = false;
    m_files.failsToCreateFolders = true;
    expectTranslated({"qr", "σετ.csv", "--output", "φάκελος"}, kFailed, "φάκελος");
    m_files.failsToCreateFolders = false;
    EXPECT_THAT(say({"list", "μεγάλο.csv"}, kFailed),
                HasSubstr(PseudoTranslation::translated("te groot voor een CSV-bestand")));

    // Sets whose cards are poor.
    expectTranslated({"qr", "μακρύ.csv", "--output", "φάκελος"}, kDone);
    expectTranslated({"cards", "μακρύ.csv", "--output", "α"}, kDone);
    expectTranslated({"cards", "λεπτό.csv", "--output", "α", "--density", "compact"}, kDone);
    expectTranslated({"parse"}, kFailed);

    // Whoever translates what is extracted has translated all of it, and the calls above say all but what takes a
    // while or a full disk.
    const auto unsaid = vantor::testing::tableOf<std::string>(
        "%1 van %2 codes", "%1 van %2 kaarten", "standaarduitvoer: kan niet geschreven worden",
        "%1: kan niet gelezen worden", "shoot", "%1: te groot voor een CSV-bestand: %2, hoogstens %3",
        "set zonder nummer en merk");
    const auto extracted = vantor::testing::extractedTexts(VANTOR_EXAMPLES "/..");
    for (const auto& text : m_translation.lookedUp())
        EXPECT_TRUE(extracted.contains(text)) << text;
    for (const auto& [text, places] : extracted) {
        EXPECT_TRUE(places.find("src/cli/") == std::string::npos ||
                    m_translation.lookedUp().contains(text) != (std::ranges::count(unsaid, text) > 0))
            << text;
    }
}

} // namespace
} // namespace vantor::cli
