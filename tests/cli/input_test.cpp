// What the built program reads, and what it says of what it cannot read.

#include "formats/shoot_file.h"
#include "tests/cli/program.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <fstream>
#include <functional>

namespace vantor::testing {
namespace {

namespace fs = std::filesystem;
using ::testing::IsEmpty;

constexpr std::string_view kSets = "Set;Merk;Items\n1;Marvis;trui/crème\n2;Zoë;\n";
constexpr std::string_view kListed = "Set 2 — Zoë\t\nSet 1 — Marvis\ttrui crème\n";
constexpr std::uintmax_t kMebibyte = std::uintmax_t{1} << 20U;

// A file of that many zero bytes which takes no room.
void writeSparse(const fs::path& path, std::uintmax_t size) {
    std::ofstream(path).close();
    fs::resize_file(path, size);
}

struct BadInput {
    std::string name;
    std::string file;
    std::function<void(const fs::path&)> make;
    // What is said behind the file's name.
    std::string problem;
};

void PrintTo(const BadInput& bad, std::ostream* out) {
    *out << bad.name;
}

std::function<void(const fs::path&)> holding(std::string bytes) {
    return
        [bytes = std::move(bytes)](const fs::path& path) { std::ofstream(path, std::ios::binary) << bytes; };
}

std::string repeated(int count, std::string_view text) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

class Unreadable : public Program, public ::testing::WithParamInterface<BadInput> {
protected:
    void SetUp() override { GetParam().make(at(GetParam().file)); }

    // Exit 1, one line that names the file and the reason, nothing on standard output.
    void expectRefused(const std::vector<std::string>& arguments) const {
        const auto run = this->run(arguments);
        EXPECT_EQ(run.status, kFailed);
        EXPECT_THAT(run.output, IsEmpty());
        EXPECT_EQ(run.errors, "vantor-prep-cli: " + GetParam().file + ": " + GetParam().problem + "\n");
    }
};

TEST_P(Unreadable, IsNamedWithTheReason) {
    expectRefused({"list", GetParam().file});
}

TEST_P(Unreadable, MakesNoOutput) {
    const auto before = names();
    expectRefused({"cards", GetParam().file, "--output", "kaarten.pdf"});
    expectRefused({"qr", GetParam().file, "--output", "codes"});
    expectRefused({"convert", GetParam().file, "--output", "shoot.vantor"});
    EXPECT_EQ(names(), before);
}

TEST_P(Unreadable, LeavesEarlierOutputAsItWas) {
    for (const auto* const name : {"kaarten.pdf", "shoot.json", "sets-uit.csv"})
        write(name, "van gisteren");
    expectRefused({"cards", GetParam().file, "--output", "kaarten.pdf"});
    expectRefused({"convert", GetParam().file, "--output", "shoot.json"});
    expectRefused({"convert", GetParam().file, "--output", "sets-uit.csv"});
    for (const auto* const name : {"kaarten.pdf", "shoot.json", "sets-uit.csv"})
        EXPECT_EQ(read(name), "van gisteren");
}

const std::vector<BadInput> kBadInputs{
    {"MissingCsv", "weg.csv", [](const fs::path&) {}, "bestaat niet"},
    {"MissingShootFile", "weg.vantor", [](const fs::path&) {}, "bestaat niet"},
    {"InMissingFolder", "weg/sets.csv", [](const fs::path&) {}, "bestaat niet"},
    {"Folder", "map.csv", [](const fs::path& path) { fs::create_directory(path); },
     "kan niet gelezen worden of is geen gewoon bestand"},
    {"Pipe", "pijp.csv", [](const fs::path& path) { ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0); },
     "kan niet gelezen worden of is geen gewoon bestand"},
    {"PipeAsShootFile", "pijp.vantor",
     [](const fs::path& path) { ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0); },
     "kan niet gelezen worden of is geen gewoon bestand"},
    {"HugeCsv", "groot.csv", [](const fs::path& path) { writeSparse(path, 64 * kMebibyte + 1); },
     "te groot voor een CSV-bestand: 65 MiB, hoogstens 64 MiB"},
    {"HugerCsv", "groot.csv", [](const fs::path& path) { writeSparse(path, 4096 * kMebibyte); },
     "te groot voor een CSV-bestand: 4096 MiB, hoogstens 64 MiB"},
    {"NoUtf8", "oud.csv", holding("Set;Merk\n1;Marvis\n2;Zo\xEB\n"), "regel 3: geen geldige UTF-8"},
    {"NoUtf8BehindCrLf", "oud.csv", holding("Set;Merk\r\n1;Zo\xEB\r\n"), "regel 2: geen geldige UTF-8"},
    {"EmptyCsv", "leeg.csv", holding(""),
     "geen sets gevonden; verwacht een kopregel als Set;Merk;Items;Model;Locatie en daaronder een regel per "
     "set"},
    {"HeaderOnly", "kop.csv", holding("Set;Merk;Items\n\n  \n"),
     "geen sets gevonden; verwacht een kopregel als Set;Merk;Items;Model;Locatie en daaronder een regel per "
     "set"},
    {"OtherCsv", "ander.csv", holding("datum,bedrag\n2026-06-14,12\n"),
     "geen sets gevonden; verwacht een kopregel als Set;Merk;Items;Model;Locatie en daaronder een regel per "
     "set"},
    {"TooManyLines", "lang.csv", holding("Set;Merk\n\n" + repeated(100'000, "1;B\n")),
     "te lang voor een lijst: 100001 regels, hoogstens 100000"},
    {"EmptyShootFile", "leeg.vantor", holding(""), "regel 1: geen geldig shootbestand"},
    {"CutShootFile", "half.vantor", holding("{\n  \"client\": \"Noorderlicht\",\n  \"date\": "),
     "regel 3: geen geldig shootbestand"},
    {"NoJson", "tekst.json", holding("{\n\"client\": Noorderlicht\n}\n"),
     "regel 2: geen geldig shootbestand"},
    {"ListOfShoots", "lijst.json", holding("[\n]\n"), "regel 1: geen geldig shootbestand"},
};

INSTANTIATE_TEST_SUITE_P(Table, Unreadable, ::testing::ValuesIn(kBadInputs),
                         [](const auto& made) { return made.param.name; });

using Input = Program;

TEST_F(Input, ShootFileWithNumbersForDatesIsRefused) {
    auto text = example("zomer-op-texel.vantor");
    const std::string date = "\"2026-06-14T05:30:00Z\"";
    text.replace(text.find(date), date.size(), "803107800");
    write("opslag.json", text);
    const auto run = this->run({"list", "opslag.json"});
    EXPECT_EQ(run.status, kFailed);
    const auto line =
        1 + std::count(text.begin(), text.begin() + static_cast<long>(text.find("803107800")), '\n');
    EXPECT_EQ(run.errors,
              "vantor-prep-cli: opslag.json: regel " + std::to_string(line) + ": geen geldig shootbestand\n");
}

TEST_F(Input, CsvComesNewestFirst) {
    write("sets.csv", kSets);
    const auto run = this->run({"list", "sets.csv"});
    EXPECT_EQ(run.status, kDone);
    EXPECT_EQ(run.output, kListed);
    EXPECT_THAT(run.errors, IsEmpty());
}

TEST_F(Input, CsvMayHaveAHundredThousandLines) {
    write("lang.csv", "Set;Merk\n\n" + repeated(99'999, "1;B\n"));
    const auto run = this->run({"list", "lang.csv"});
    EXPECT_EQ(run.status, kDone);
    EXPECT_EQ(std::count(run.output.begin(), run.output.end(), '\n'), 99'999);
}

TEST_F(Input, ByteOrderMarkIsNoPartOfTheText) {
    write("sets.csv", "\uFEFF" + std::string(kSets));
    EXPECT_EQ(run({"list", "sets.csv"}).output, kListed);
    // A line that holds nothing else is blank, not the header.
    write("sets.csv", "\uFEFF\n" + std::string(kSets));
    EXPECT_EQ(run({"list", "sets.csv"}).output, kListed);
    ASSERT_EQ(run({"convert", "sets.csv", "--output", "kaal.vantor"}).status, kDone);
    write("shoot.vantor", "\uFEFF" + read("kaal.vantor"));
    EXPECT_EQ(run({"list", "shoot.vantor"}).output, kListed);
}

TEST_F(Input, LinesMayEndInCrLf) {
    write("sets.csv", "Set;Merk;Items\r\n1;Marvis;trui/crème\r\n2;Zoë;\r\n");
    EXPECT_EQ(run({"list", "sets.csv"}).output, kListed);
}

TEST_F(Input, DashIsStandardInput) {
    EXPECT_EQ(run({"list", "-", "--from", "csv"}, {.input = std::string(kSets)}).output, kListed);
    const auto shoot = run({"list", "-", "--from", "vantor"}, {.input = example("zomer-op-texel.vantor")});
    EXPECT_EQ(shoot.status, kDone);
    EXPECT_THAT(shoot.output, ::testing::StartsWith("Set 1 — Noorderlicht\tgebreide trui crème, "));
    EXPECT_EQ(std::count(shoot.output.begin(), shoot.output.end(), '\n'), 28);
}

TEST_F(Input, EveryCallTakesStandardInput) {
    const Streams sets{.input = std::string(kSets)};
    EXPECT_EQ(run({"cards", "-", "--from", "csv", "--output", "a.pdf"}, sets).status, kDone);
    EXPECT_EQ(run({"qr", "-", "--from", "csv", "--output", "codes"}, sets).status, kDone);
    EXPECT_EQ(run({"convert", "-", "--from", "csv", "--output", "a.vantor"}, sets).status, kDone);
    EXPECT_EQ(run({"list", "a.vantor"}).output, kListed);
}

TEST_F(Input, StandardInputIsNamedInErrors) {
    const auto empty = run({"list", "-", "--from", "vantor"});
    EXPECT_EQ(empty.status, kFailed);
    EXPECT_EQ(empty.errors, "vantor-prep-cli: standaardinvoer: regel 1: geen geldig shootbestand\n");

    const auto folder = run({"list", "-", "--from", "csv"}, {.inputFile = at("")});
    EXPECT_EQ(folder.status, kFailed);
    EXPECT_EQ(folder.errors, "vantor-prep-cli: standaardinvoer: kan niet gelezen worden\n");
}

TEST_F(Input, HugeStandardInputIsRefused) {
    writeSparse(at("groot"), 64 * kMebibyte + 1);
    const auto run = this->run({"list", "-", "--from", "csv"}, {.inputFile = at("groot")});
    EXPECT_EQ(run.status, kFailed);
    EXPECT_EQ(run.errors, "vantor-prep-cli: standaardinvoer: te groot voor een CSV-bestand: meer dan 64 MiB, "
                          "hoogstens 64 MiB\n");
}

TEST_F(Input, FileNamesAreFree) {
    for (const std::string name :
         {"twee woorden", "Zoë's ‘çüé’", "李娜 👗", "a\nb", "%s;$(x)`y`", "punt.punt"}) {
        write(name + ".csv", kSets);
        EXPECT_EQ(run({"list", name + ".csv"}).output, kListed) << name;
        EXPECT_EQ(run({"convert", name + ".csv", "--output", name + ".vantor"}).status, kDone) << name;
        const auto shoot = readShootFile(read(name + ".vantor"));
        ASSERT_TRUE(shoot) << name;
        EXPECT_EQ(shoot->name, name);
        EXPECT_EQ(run({"cards", name + ".vantor", "--output", name + ".pdf"}).status, kDone) << name;
        EXPECT_THAT(read(name + ".pdf"), ::testing::StartsWith("%PDF-"));
        EXPECT_EQ(run({"qr", name + ".vantor", "--output", name}).status, kDone) << name;
        EXPECT_TRUE(exists(name + "/SET-2-Zoë.png")) << name;
    }
}

TEST_F(Input, StrangeFileNamesAreNamedInErrors) {
    const auto run = this->run({"list", "Zoë's \"map\"/twee woorden.csv"});
    EXPECT_EQ(run.status, kFailed);
    EXPECT_EQ(run.errors, "vantor-prep-cli: Zoë's \"map\"/twee woorden.csv: bestaat niet\n");
}

TEST_F(Input, LinksAreFollowed) {
    write("echt.csv", kSets);
    fs::create_symlink("echt.csv", at("link.csv"));
    EXPECT_EQ(run({"list", "link.csv"}).output, kListed);
}

} // namespace
} // namespace vantor::testing
