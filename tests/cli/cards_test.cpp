// vantor-prep-cli cards, as a process. Pages are read back with the Poppler tools.

#include "tests/cli/program.h"
#include "tests/support/command.h"

#include <gmock/gmock.h>

namespace vantor::testing {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

// The bytes of "SET:1\nBRAND:".
constexpr std::size_t kTags = 12;

class Cards : public Program {
protected:
    void SetUp() override {
        write("zomer.vantor", example("zomer-op-texel.vantor"));
        write("zomer.csv", example("zomer-op-texel.csv"));
        write("a.csv", "Set;Merk\n1;Marvis\n");
    }

    // Of the file of cards.
    [[nodiscard]] std::string told(const std::string& tool, const std::string& behind = "") const {
        const auto result = runCommand(tool + " '" + at("a.pdf").string() + "' " + behind);
        EXPECT_EQ(result.status, 0) << tool << ": " << result.output;
        return result.output;
    }

    // Sets numbered from 1 whose texts have so many bytes.
    void writeSets(const std::vector<std::size_t>& textBytes) const {
        SetList sets;
        for (const auto bytes : textBytes) {
            sets.push_back(setOf(std::to_string(sets.size() + 1), std::string(bytes - kTags, 'x')));
            EXPECT_EQ(sets.back().toQRText().size(), bytes);
        }
        writeShoot("a.vantor", std::move(sets));
    }

    static std::string named(int number, std::size_t textBytes, const std::string& what) {
        return "vantor-prep-cli: Set " + std::to_string(number) + " — " +
               std::string(textBytes - kTags, 'x') + ": " + what + "\n";
    }
};

constexpr auto kFine = "de QR-code is fijn: modules kleiner dan 0,33 mm op deze kaart";
constexpr auto kTooLong = "de tekst past niet in een QR-code; de kaart blijft leeg";

TEST_F(Cards, FillPagesOfA4AsTheDensitySaysInTheOrderOfTheShootOrOfCsvNewestFirst) {
    struct Case {
        std::string file;
        std::vector<std::string> density;
        std::string pages;
        int first;
        int last;
    };
    for (const auto& [file, density, pages, first, last] :
         {Case{"zomer.vantor", {}, "7", 1, 27}, Case{"zomer.vantor", {"--density", "large"}, "7", 1, 27},
          Case{"zomer.vantor", {"--density", "compact"}, "4", 1, 27}, Case{"zomer.csv", {}, "7", 27, 1}}) {
        std::vector<std::string> arguments{"cards", file, "--output", "a.pdf"};
        arguments.insert(arguments.end(), density.begin(), density.end());
        EXPECT_EQ(done(arguments), "");
        EXPECT_THAT(told("pdfinfo"), HasSubstr("Pages:           " + pages + "\n"));
        EXPECT_THAT(told("pdfinfo"), HasSubstr("595.28 x 841.89 pts (A4)"));
        const auto headline = [](int number) { return "Set " + std::to_string(number) + " — Noorderlicht"; };
        EXPECT_THAT(told("pdftotext -l 1", "-"), HasSubstr(headline(first))) << file;
        EXPECT_THAT(told("pdftotext -f " + pages, "-"), HasSubstr(headline(last))) << file;
    }
}

// 504 bytes is the most that a code of 85 × 85 modules takes; the next larger one has modules of less than
// 0.33 mm on a compact card, and plenty of room on a large one.
TEST_F(Cards, NameSetsWithTooFineCodesAndThoseThatFitNone) {
    struct Case {
        std::string density;
        std::vector<std::size_t> textBytes;
        std::string errors;
    };
    for (const auto& [density, textBytes, errors] :
         {Case{"compact", {504, 505, 100}, named(2, 505, kFine)}, Case{"large", {504, 505, 100}, ""},
          Case{"large", {2332, 2331, 100}, named(1, 2332, kTooLong) + named(2, 2331, kFine)}}) {
        writeSets(textBytes);
        const auto run = this->run({"cards", "a.vantor", "--output", "a.pdf", "--density", density});
        EXPECT_EQ(run.status, kDone);
        EXPECT_EQ(run.errors, errors);
        EXPECT_THAT(told("pdfinfo"), HasSubstr("Pages:           1\n"));
    }
}

TEST_F(Cards, SayThatThereAreNoSetsAndWhereTheyCannotBeWritten) {
    writeShoot("leeg.vantor", {});
    write("a.pdf", "van gisteren");
    fs::create_directory(at("map.pdf"));
    const auto before = names();
    expectFailure({"cards", "leeg.vantor", "--output", "a.pdf"}, "leeg.vantor: geen sets gevonden");
    EXPECT_EQ(read("a.pdf"), "van gisteren");
    for (const std::string to : {"weg/a.pdf", "map.pdf", "/dev/full"})
        expectFailure({"cards", "a.csv", "--output", to}, to + ": kan niet geschreven worden");
    EXPECT_EQ(names(), before);
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

} // namespace
} // namespace vantor::testing
