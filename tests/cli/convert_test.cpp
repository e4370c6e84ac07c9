// vantor-prep-cli convert, as a process.

#include "formats/set_csv.h"
#include "formats/shoot_file.h"
#include "tests/cli/program.h"
#include "tests/support/differences.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>

namespace vantor::testing {
namespace {

namespace fs = std::filesystem;
using ::testing::IsEmpty;

class Convert : public Program {
protected:
    void SetUp() override {
        write("zomer.csv", example("zomer-op-texel.csv"));
        write("zomer.vantor", example("zomer-op-texel.vantor"));
    }

    void convert(const std::string& from, const std::string& to) const {
        const auto run = this->run({"convert", from, "--output", to});
        EXPECT_EQ(run.status, kDone) << from << " to " << to;
        EXPECT_THAT(run.output, IsEmpty());
        EXPECT_THAT(run.errors, IsEmpty());
    }

    [[nodiscard]] Shoot shootIn(const std::string& name) const {
        auto shoot = readShootFile(read(name));
        EXPECT_TRUE(shoot) << name << " is no shoot file";
        return shoot.value_or(Shoot{});
    }

    // The sets of the example as a CSV file tells them: no tags, newest first.
    [[nodiscard]] SetList setsReadFromCsv() const {
        auto sets = shootIn("zomer.vantor").sets;
        std::ranges::reverse(sets);
        for (auto& set : sets)
            set.taggedCount = 0;
        return sets;
    }
};

double age(Timestamp moment) {
    return std::abs(Timestamp::now().secondsSinceReference - moment.secondsSinceReference);
}

TEST_F(Convert, CsvToShootFile) {
    for (const std::string to : {"uit.vantor", "uit.json"}) {
        convert("zomer.csv", to);
        const auto shoot = shootIn(to);
        EXPECT_EQ(shoot.name, "zomer");
        EXPECT_EQ(shoot.client, "");
        EXPECT_EQ(shoot.location, "");
        EXPECT_LT(age(shoot.date), 120);
        EXPECT_TRUE(shoot.activationLog.empty());
        EXPECT_EQ(differences(shoot.sets, setsReadFromCsv(), Ignoring::Identity), "");
        EXPECT_EQ(writeShootFile(shoot), read(to));
    }
}

TEST_F(Convert, CsvToCsvTurnsTheLinesRound) {
    convert("zomer.csv", "om.csv");
    Shoot turned;
    turned.sets = setsReadFromCsv();
    EXPECT_EQ(read("om.csv"), writeSetCSV(turned));
    convert("om.csv", "terug.csv");
    std::ranges::reverse(turned.sets);
    EXPECT_EQ(read("terug.csv"), writeSetCSV(turned));
}

TEST_F(Convert, ShootFileToCsv) {
    convert("zomer.vantor", "uit.csv");
    EXPECT_EQ(read("uit.csv"), example("zomer-op-texel.csv"));
    write("zomer.json", read("zomer.vantor"));
    convert("zomer.json", "uit-json.csv");
    EXPECT_EQ(read("uit-json.csv"), example("zomer-op-texel.csv"));
}

TEST_F(Convert, ShootFileToShootFileIsAnImportedShoot) {
    write("zomer.json", read("zomer.vantor"));
    for (const std::string from : {"zomer.vantor", "zomer.json"}) {
        for (const std::string to : {"uit.vantor", "uit.json"}) {
            convert(from, to);
            const auto old = shootIn(from);
            const auto made = shootIn(to);
            EXPECT_EQ(made.name, "Zomer op Texel");
            EXPECT_EQ(made.client, "Noorderlicht");
            EXPECT_EQ(made.location, "Texel");
            EXPECT_NE(made.id, old.id);
            EXPECT_LT(age(made.date), 120);
            EXPECT_TRUE(made.activationLog.empty());
            EXPECT_EQ(differences(made.sets, old.sets, Ignoring::Identity), "");
            ASSERT_EQ(made.sets.size(), old.sets.size());
            for (std::size_t i = 0; i < made.sets.size(); ++i) {
                EXPECT_NE(made.sets[i].id, old.sets[i].id);
                EXPECT_EQ(differences(made.sets[i].items, old.sets[i].items), "");
                EXPECT_EQ(made.sets[i].timestamp.iso8601(), old.sets[i].timestamp.iso8601());
            }
        }
    }
}

TEST_F(Convert, RoundTripKeepsWhatCsvCanTell) {
    write("rond.csv",
          "Extra;Locatie;Set;Item;Merk;Item 2;E-mail;Model;Getagd\n"
          "x;\"Den Hoorn; kerk\";007;trui/crème, muts;Brünn & Daël;riem/a/b;zoe@example.nl;Zoë;12\n"
          ";;;/rood;;;;;\n"
          "\n"
          ";Texel;;;;;;Anna;\n"
          ";;\"3\"\"b\";;Çelik, Zn.;;;Maïté;\n");
    convert("rond.csv", "rond.vantor");
    convert("rond.vantor", "rond-2.csv");
    EXPECT_EQ(read("rond-2.csv"),
              "Set;Merk;Items;Model;Locatie;Email;Getagd\n"
              "3b;Çelik, Zn.;;Maïté;;;0\n"
              "2;;rood;;;;0\n"
              "007;Brünn & Daël;trui/crème, muts, riem/a/b;Zoë;\"Den Hoorn; kerk\";zoe@example.nl;0");
    convert("rond-2.csv", "rond.json");
    auto once = shootIn("rond.vantor");
    const auto twice = shootIn("rond.json");
    EXPECT_EQ(twice.name, "rond-2");
    ASSERT_EQ(twice.sets.size(), 3U);
    std::ranges::reverse(once.sets);
    EXPECT_EQ(differences(twice.sets, once.sets, Ignoring::Identity), "");
    EXPECT_EQ(twice.sets[0].location, "Den Hoorn; kerk");
    EXPECT_EQ(twice.sets[0].items.size(), 3U);
    EXPECT_EQ(twice.sets[0].items[2].color, "a/b");
}

TEST_F(Convert, ReplacesItsOwnInput) {
    convert("zomer.csv", "zomer.csv");
    convert("zomer.csv", "zomer.csv");
    Shoot shoot;
    shoot.sets = setsReadFromCsv();
    std::ranges::reverse(shoot.sets);
    EXPECT_EQ(read("zomer.csv"), writeSetCSV(shoot));
}

TEST_F(Convert, ReplacesALinksTarget) {
    write("echt.csv", "van gisteren");
    fs::create_symlink("echt.csv", at("link.csv"));
    convert("zomer.vantor", "link.csv");
    EXPECT_TRUE(fs::is_symlink(at("link.csv")));
    EXPECT_EQ(read("echt.csv"), example("zomer-op-texel.csv"));
}

TEST_F(Convert, SaysWhereItCannotWrite) {
    fs::create_directory(at("map.csv"));
    const auto before = names();
    for (const std::string to : {"weg/uit.csv", "map.csv", "zomer.csv/uit.csv"}) {
        const auto run = this->run({"convert", "zomer.vantor", "--output", to});
        EXPECT_EQ(run.status, kFailed) << to;
        EXPECT_THAT(run.output, IsEmpty());
        EXPECT_EQ(run.errors, "vantor-prep-cli: " + to + ": kan niet geschreven worden\n");
    }
    EXPECT_EQ(names(), before);
    EXPECT_EQ(read("zomer.csv"), example("zomer-op-texel.csv"));
}

} // namespace
} // namespace vantor::testing
