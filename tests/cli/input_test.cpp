// What the built program reads, and what it says of what it cannot read.

#include "formats/shoot_file.h"
#include "tests/cli/program.h"
#include "tests/support/table.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <fstream>
#include <functional>

namespace vantor::testing {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kSets = "Set;Merk;Items\n1;Marvis;trui/crème\n2;Zoë;\n";
constexpr std::string_view kListed = "Set 2 — Zoë\t\nSet 1 — Marvis\ttrui crème\n";
constexpr std::uintmax_t kMebibyte = std::uintmax_t{1} << 20U;

constexpr auto kNoFile = "kan niet gelezen worden of is geen gewoon bestand";
constexpr auto kNoSets = "geen sets gevonden; verwacht een kopregel als Set;Merk;Items;Model;Locatie en "
                         "daaronder een regel per set";

using Make = std::function<void(const fs::path&)>;

void nothing(const fs::path&) {}

void folder(const fs::path& path) {
    fs::create_directory(path);
}

void pipe(const fs::path& path) {
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
}

Make holding(std::string bytes) {
    return
        [bytes = std::move(bytes)](const fs::path& path) { std::ofstream(path, std::ios::binary) << bytes; };
}

// So many zero bytes, which take no room.
Make sparse(std::uintmax_t size) {
    return [size](const fs::path& path) {
        std::ofstream(path).close();
        fs::resize_file(path, size);
    };
}

using Input = Program;

TEST_F(Input, ThatCannotBeReadIsNamedWithTheReasonAndLeavesEarlierOutputAsItWas) {
    struct Case {
        std::string file;
        Make make;
        // What is said behind the file's name.
        std::string problem;
    };
    const std::vector<Case> cases{
        {"weg.csv", nothing, "bestaat niet"},
        {"weg.vantor", nothing, "bestaat niet"},
        {"weg/sets.csv", nothing, "bestaat niet"},
        {"map.csv", folder, kNoFile},
        {"pijp.csv", pipe, kNoFile},
        {"pijp.vantor", pipe, kNoFile},
        {"groot.csv", sparse(64 * kMebibyte + 1), "te groot voor een CSV-bestand: 65 MiB, hoogstens 64 MiB"},
        {"groot.csv", sparse(4096 * kMebibyte), "te groot voor een CSV-bestand: 4096 MiB, hoogstens 64 MiB"},
        {"oud.csv", holding("Set;Merk\n1;Marvis\n2;Zo\xEB\n"), "regel 3: geen geldige UTF-8"},
        {"oud.csv", holding("Set;Merk\r\n1;Zo\xEB\r\n"), "regel 2: geen geldige UTF-8"},
        {"leeg.csv", holding(""), kNoSets},
        {"kop.csv", holding("Set;Merk;Items\n\n  \n"), kNoSets},
        {"ander.csv", holding("datum,bedrag\n2026-06-14,12\n"), kNoSets},
        {"lang.csv", holding("Set;Merk\n\n" + repeated(100'000, "1;B\n")),
         "te lang voor een lijst: 100001 regels, hoogstens 100000"},
        {"leeg.vantor", holding(""), "regel 1: geen geldig shootbestand"},
        {"half.vantor", holding("{\n  \"client\": \"Noorderlicht\",\n  \"date\": "),
         "regel 3: geen geldig shootbestand"},
        {"tekst.json", holding("{\n\"client\": Noorderlicht\n}\n"), "regel 2: geen geldig shootbestand"},
        {"lijst.json", holding("[\n]\n"), "regel 1: geen geldig shootbestand"},
    };
    for (const auto& [file, make, problem] : cases) {
        SCOPED_TRACE(file + ": " + problem);
        make(at(file));
        write("kaarten.pdf", "van gisteren");
        write("uit.json", "van gisteren");
        const auto before = names();
        expectFailure({"list", file}, file + ": " + problem);
        using Call = std::pair<const char*, const char*>;
        for (const auto& [call, output] :
             {Call{"cards", "kaarten.pdf"}, Call{"cards", "nieuw.pdf"}, Call{"qr", "codes"},
              Call{"convert", "uit.json"}, Call{"convert", "nieuw.csv"}})
            expectFailure({call, file, "--output", output}, file + ": " + problem);
        EXPECT_EQ(names(), before);
        EXPECT_EQ(read("kaarten.pdf") + read("uit.json"), "van gisterenvan gisteren");
        fs::remove(at(file));
    }
}

TEST_F(Input, CsvMayHaveAHundredThousandLines) {
    write("lang.csv", "Set;Merk\n\n" + repeated(99'999, "1;B\n"));
    const auto listed = done({"list", "lang.csv"});
    EXPECT_EQ(std::count(listed.begin(), listed.end(), '\n'), 99'999);
}

TEST_F(Input, DashIsStandardInputForEveryCallAndNamedInErrors) {
    const Streams sets{.input = std::string(kSets)};
    EXPECT_EQ(done({"list", "-", "--from", "csv"}, sets), kListed);
    done({"cards", "-", "--from", "csv", "--output", "a.pdf"}, sets);
    done({"qr", "-", "--from", "csv", "--output", "codes"}, sets);
    done({"convert", "-", "--from", "csv", "--output", "a.vantor"}, sets);
    EXPECT_EQ(done({"list", "-", "--from", "vantor"}, {.input = read("a.vantor")}), kListed);

    expectFailure({"list", "-", "--from", "vantor"}, "standaardinvoer: regel 1: geen geldig shootbestand");
    expectFailure({"list", "-", "--from", "csv"}, "standaardinvoer: kan niet gelezen worden",
                  {.inputFile = at("")});
    sparse(64 * kMebibyte + 1)(at("groot"));
    expectFailure({"list", "-", "--from", "csv"},
                  "standaardinvoer: te groot voor een CSV-bestand: meer dan 64 MiB, hoogstens 64 MiB",
                  {.inputFile = at("groot")});
}

TEST_F(Input, FileNamesAreFree) {
    for (const std::string name :
         {"twee woorden", "Zoë's ‘çüé’ \"x\"", "李娜 👗", "a\nb", "%s;$(x)`y`", "punt.punt"}) {
        expectFailure({"list", name + ".csv"}, name + ".csv: bestaat niet");
        write(name + ".csv", kSets);
        EXPECT_EQ(done({"list", name + ".csv"}), kListed) << name;
        done({"convert", name + ".csv", "--output", name + ".vantor"});
        const auto shoot = readShootFile(read(name + ".vantor"));
        ASSERT_TRUE(shoot) << name;
        EXPECT_EQ(shoot->name, name);
        done({"cards", name + ".vantor", "--output", name + ".pdf"});
        EXPECT_THAT(read(name + ".pdf"), ::testing::StartsWith("%PDF-"));
        done({"qr", name + ".vantor", "--output", name});
        EXPECT_TRUE(fs::exists(at(name + "/SET-2-Zoë.png"))) << name;
    }
}

} // namespace
} // namespace vantor::testing
