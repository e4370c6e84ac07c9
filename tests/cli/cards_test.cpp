// vantor-prep-cli cards, as a process. Pages are read back with the Poppler tools.

#include "base/timestamp.h"
#include "formats/shoot_file.h"
#include "tests/cli/program.h"
#include "tests/output/code_readers.h"
#include "tests/support/command.h"

#include <gmock/gmock.h>

namespace vantor::testing {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

// The bytes of "SET:1\nBRAND:".
constexpr std::size_t kTags = 12;

class Cards : public Program {
protected:
    void cards(const std::vector<std::string>& arguments) const {
        const auto run = this->run(arguments);
        EXPECT_EQ(run.status, kDone);
        EXPECT_THAT(run.output, IsEmpty());
        EXPECT_THAT(run.errors, IsEmpty());
    }

    [[nodiscard]] std::string told(const std::string& tool, const std::string& name,
                                   const std::string& behind = "") const {
        const auto result = runCommand(tool + " '" + at(name).string() + "' " + behind);
        EXPECT_EQ(result.status, 0) << tool << ": " << result.output;
        return result.output;
    }

    // The code on the one card of the file.
    [[nodiscard]] std::string codeIn(const std::string& name) const {
        (void)told("pdftoppm -r 300 -gray -singlefile", name, "'" + at("pagina").string() + "'");
        const auto page = readPgm(at("pagina.pgm"));
        return page ? readByZxing(*page).value_or("(unreadable)") : "(no page)";
    }

    void writeShoot(const std::string& name, const std::vector<std::size_t>& textBytes) const {
        auto shoot = Shoot::make("Proef", "", "", Timestamp{0});
        for (std::size_t i = 0; i < textBytes.size(); ++i) {
            auto set = SetData::make(Timestamp{0});
            set.setNumber = std::to_string(i + 1);
            set.brand = std::string(textBytes[i] - kTags, 'x');
            EXPECT_EQ(set.toQRText().size(), textBytes[i]);
            shoot.sets.push_back(std::move(set));
        }
        write(name, writeShootFile(shoot));
    }

    static std::string named(int number, std::size_t textBytes, const std::string& what) {
        return "vantor-prep-cli: Set " + std::to_string(number) + " — " +
               std::string(textBytes - kTags, 'x') + ": " + what + "\n";
    }
};

constexpr auto kFine = "de QR-code is fijn: modules kleiner dan 0,33 mm op deze kaart";
constexpr auto kTooLong = "de tekst past niet in een QR-code; de kaart blijft leeg";

TEST_F(Cards, LargePutsFourOnAPage) {
    write("a.vantor", example("zomer-op-texel.vantor"));
    cards({"cards", "a.vantor", "--output", "a.pdf", "--density", "large"});
    EXPECT_THAT(told("pdfinfo", "a.pdf"), HasSubstr("Pages:           7\n"));
    EXPECT_THAT(told("pdfinfo", "a.pdf"), HasSubstr("595.28 x 841.89 pts (A4)"));
}

TEST_F(Cards, CompactPutsNineOnAPage) {
    write("a.vantor", example("zomer-op-texel.vantor"));
    cards({"cards", "a.vantor", "--output", "a.pdf", "--density", "compact"});
    EXPECT_THAT(told("pdfinfo", "a.pdf"), HasSubstr("Pages:           4\n"));
}

TEST_F(Cards, AreLargeUnlessSaidOtherwise) {
    write("a.vantor", example("zomer-op-texel.vantor"));
    cards({"cards", "a.vantor", "--output", "a.pdf"});
    EXPECT_THAT(told("pdfinfo", "a.pdf"), HasSubstr("Pages:           7\n"));
}

TEST_F(Cards, StandInTheOrderOfTheShoot) {
    write("a.vantor", example("zomer-op-texel.vantor"));
    cards({"cards", "a.vantor", "--output", "a.pdf"});
    const auto first = told("pdftotext -l 1", "a.pdf", "-");
    for (const auto* const headline :
         {"Set 1 — Noorderlicht", "Set 2 — Noorderlicht", "Set 3 — Wolkenveld", "Set 4 — Marvis"})
        EXPECT_THAT(first, HasSubstr(headline));
    EXPECT_THAT(first, HasSubstr("Maïté"));
    EXPECT_THAT(told("pdftotext -f 7", "a.pdf", "-"), HasSubstr("Set 27 — Noorderlicht"));
}

TEST_F(Cards, OfCsvComeNewestFirst) {
    write("a.csv", example("zomer-op-texel.csv"));
    cards({"cards", "a.csv", "--output", "a.pdf"});
    EXPECT_THAT(told("pdftotext -l 1", "a.pdf", "-"), HasSubstr("Set 27 — Noorderlicht"));
    EXPECT_THAT(told("pdftotext -f 7", "a.pdf", "-"), HasSubstr("Set 1 — Noorderlicht"));
}

TEST_F(Cards, CarryTheSetsText) {
    write("a.csv", "Set;Merk;Items;Model\n12;Zoë & Çelik;trui/crème, muts;Maïté\n");
    for (const std::string density : {"large", "compact"}) {
        cards({"cards", "a.csv", "--output", "a.pdf", "--density", density});
        EXPECT_EQ(codeIn("a.pdf"), "SET:12\nBRAND:Zoë & Çelik\nITEM:trui/crème\nITEM:muts\nMODEL:Maïté")
            << density;
    }
}

// 504 bytes is the most that a code of 85 × 85 modules takes; the next larger one has modules of less than
// 0.33 mm on a compact card, and plenty of room on a large one.
TEST_F(Cards, NamesSetsWithTooFineCodes) {
    writeShoot("a.vantor", {504, 505, 100});
    const auto compact = run({"cards", "a.vantor", "--output", "a.pdf", "--density", "compact"});
    EXPECT_EQ(compact.status, kDone);
    EXPECT_EQ(compact.errors, named(2, 505, kFine));
    EXPECT_THAT(told("pdfinfo", "a.pdf"), HasSubstr("Pages:           1\n"));
    cards({"cards", "a.vantor", "--output", "b.pdf", "--density", "large"});
}

TEST_F(Cards, NamesSetsThatFitNoCode) {
    writeShoot("a.vantor", {2332, 2331, 100});
    const auto run = this->run({"cards", "a.vantor", "--output", "a.pdf"});
    EXPECT_EQ(run.status, kDone);
    EXPECT_EQ(run.errors, named(1, 2332, kTooLong) + named(2, 2331, kFine));
    EXPECT_THAT(told("pdfinfo", "a.pdf"), HasSubstr("Pages:           1\n"));
}

TEST_F(Cards, ReplaceAnEarlierFile) {
    write("a.csv", "Set;Merk\n1;Marvis\n");
    write("a.pdf", "van gisteren");
    cards({"cards", "a.csv", "--output", "a.pdf"});
    EXPECT_EQ(codeIn("a.pdf"), "SET:1\nBRAND:Marvis");
}

TEST_F(Cards, SayThatThereAreNoSets) {
    writeShoot("leeg.vantor", {});
    write("a.pdf", "van gisteren");
    const auto run = this->run({"cards", "leeg.vantor", "--output", "a.pdf"});
    EXPECT_EQ(run.status, kFailed);
    EXPECT_EQ(run.errors, "vantor-prep-cli: leeg.vantor: geen sets gevonden\n");
    EXPECT_EQ(read("a.pdf"), "van gisteren");
}

TEST_F(Cards, SayWhereTheyCannotBeWritten) {
    write("a.csv", "Set;Merk\n1;Marvis\n");
    fs::create_directory(at("map.pdf"));
    const auto before = names();
    for (const std::string to : {"weg/a.pdf", "map.pdf", "/dev/full"}) {
        const auto run = this->run({"cards", "a.csv", "--output", to});
        EXPECT_EQ(run.status, kFailed) << to;
        EXPECT_THAT(run.output, IsEmpty());
        EXPECT_EQ(run.errors, "vantor-prep-cli: " + to + ": kan niet geschreven worden\n");
    }
    EXPECT_EQ(names(), before);
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

} // namespace
} // namespace vantor::testing
