// vantor-prep-cli cards, as a process. Pages are read back with the Poppler tools.

#include "tests/cli/program.h"
#include "tests/output/code_readers.h"
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

    [[nodiscard]] std::string told(const std::string& tool, const std::string& behind = "") const {
        const auto result = runCommand(tool + " '" + at("a.pdf").string() + "' " + behind);
        EXPECT_EQ(result.status, 0) << tool << ": " << result.output;
        return result.output;
    }

    // The code on the one card of the file.
    [[nodiscard]] std::string code() const {
        (void)told("pdftoppm -r 300 -gray -singlefile", "'" + at("pagina").string() + "'");
        const auto page = readPgm(at("pagina.pgm"));
        return page ? readByZxing(*page).value_or("(unreadable)") : "(no page)";
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

TEST_F(Cards, FillPagesOfA4AsTheDensitySays) {
    struct Case {
        std::vector<std::string> density;
        std::string pages;
    };
    for (const auto& [density, pages] :
         {Case{{}, "7"}, Case{{"--density", "large"}, "7"}, Case{{"--density", "compact"}, "4"}}) {
        std::vector<std::string> arguments{"cards", "zomer.vantor", "--output", "a.pdf"};
        arguments.insert(arguments.end(), density.begin(), density.end());
        EXPECT_EQ(done(arguments), "");
        EXPECT_THAT(told("pdfinfo"), HasSubstr("Pages:           " + pages + "\n"));
        EXPECT_THAT(told("pdfinfo"), HasSubstr("595.28 x 841.89 pts (A4)"));
    }
}

TEST_F(Cards, StandInTheOrderOfTheShootAndThoseOfCsvNewestFirst) {
    struct Case {
        std::string file;
        std::string first;
        std::string last;
    };
    for (const auto& [file, first, last] :
         {Case{"zomer.vantor", "Set 1 — Noorderlicht", "Set 27 — Noorderlicht"},
          Case{"zomer.csv", "Set 27 — Noorderlicht", "Set 1 — Noorderlicht"}}) {
        done({"cards", file, "--output", "a.pdf"});
        EXPECT_THAT(told("pdftotext -l 1", "-"), HasSubstr(first)) << file;
        EXPECT_THAT(told("pdftotext -f 7", "-"), HasSubstr(last)) << file;
    }
}

TEST_F(Cards, CarryTheSetsTextAndReplaceAnEarlierFile) {
    write("a.csv", "Set;Merk;Items;Model\n12;Zoë & Çelik;trui/crème, muts;Maïté\n");
    for (const std::string density : {"large", "compact"}) {
        write("a.pdf", "van gisteren");
        done({"cards", "a.csv", "--output", "a.pdf", "--density", density});
        EXPECT_EQ(code(), "SET:12\nBRAND:Zoë & Çelik\nITEM:trui/crème\nITEM:muts\nMODEL:Maïté") << density;
    }
}

// 504 bytes is the most that a code of 85 × 85 modules takes; the next larger one has modules of less than
// 0.33 mm on a compact card, and plenty of room on a large one.
TEST_F(Cards, NamesSetsWithTooFineCodes) {
    writeSets({504, 505, 100});
    const auto compact = run({"cards", "a.vantor", "--output", "a.pdf", "--density", "compact"});
    EXPECT_EQ(compact.status, kDone);
    EXPECT_EQ(compact.errors, named(2, 505, kFine));
    EXPECT_THAT(told("pdfinfo"), HasSubstr("Pages:           1\n"));
    done({"cards", "a.vantor", "--output", "b.pdf", "--density", "large"});
}

TEST_F(Cards, NamesSetsThatFitNoCode) {
    writeSets({2332, 2331, 100});
    const auto run = this->run({"cards", "a.vantor", "--output", "a.pdf"});
    EXPECT_EQ(run.status, kDone);
    EXPECT_EQ(run.errors, named(1, 2332, kTooLong) + named(2, 2331, kFine));
    EXPECT_THAT(told("pdfinfo"), HasSubstr("Pages:           1\n"));
}

TEST_F(Cards, SayThatThereAreNoSets) {
    writeShoot("leeg.vantor", {});
    write("a.pdf", "van gisteren");
    expectFailure({"cards", "leeg.vantor", "--output", "a.pdf"}, "leeg.vantor: geen sets gevonden");
    EXPECT_EQ(read("a.pdf"), "van gisteren");
}

TEST_F(Cards, SayWhereTheyCannotBeWritten) {
    fs::create_directory(at("map.pdf"));
    const auto before = names();
    for (const std::string to : {"weg/a.pdf", "map.pdf", "/dev/full"})
        expectFailure({"cards", "a.csv", "--output", to}, to + ": kan niet geschreven worden");
    EXPECT_EQ(names(), before);
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

} // namespace
} // namespace vantor::testing
