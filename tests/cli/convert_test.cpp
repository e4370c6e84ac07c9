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

class Convert : public Program {
protected:
    void SetUp() override {
        write("zomer.csv", example("zomer-op-texel.csv"));
        for (const auto* const name : {"zomer.vantor", "zomer.json"})
            write(name, example("zomer-op-texel.vantor"));
    }

    void convert(const std::string& from, const std::string& to) const {
        EXPECT_EQ(done({"convert", from, "--output", to}), "");
    }

    [[nodiscard]] Shoot shootIn(const std::string& name) const { return readShootFile(read(name)).value(); }

    // The sets of the example as a CSV file tells them: no tags, newest first.
    [[nodiscard]] Shoot readFromCsv() const {
        auto shoot = shootIn("zomer.vantor");
        std::ranges::reverse(shoot.sets);
        for (auto& set : shoot.sets)
            set.taggedCount = 0;
        return shoot;
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
        EXPECT_EQ(shoot.client + shoot.location, "");
        EXPECT_LT(age(shoot.date), 120);
        EXPECT_EQ(differences(shoot.sets, readFromCsv().sets, Ignoring::Identity), "");
        EXPECT_EQ(writeShootFile(shoot), read(to));
    }
}

// Into another file, and in its own place.
TEST_F(Convert, CsvToCsvTurnsTheLinesRoundAndShootFilesToCsvDoNot) {
    auto turned = readFromCsv();
    const auto once = writeSetCSV(turned);
    std::ranges::reverse(turned.sets);
    for (const std::string to : {"om.csv", "zomer.csv"}) {
        convert("zomer.csv", to);
        EXPECT_EQ(read(to), once);
        convert(to, to);
        EXPECT_EQ(read(to), writeSetCSV(turned));
    }
    for (const std::string from : {"zomer.vantor", "zomer.json"}) {
        convert(from, "uit.csv");
        EXPECT_EQ(read("uit.csv"), example("zomer-op-texel.csv")) << from;
    }
}

TEST_F(Convert, ShootFileToShootFileIsAnImportedShoot) {
    const auto old = shootIn("zomer.vantor");
    for (const std::string from : {"zomer.vantor", "zomer.json"}) {
        for (const std::string to : {"uit.vantor", "uit.json"}) {
            convert(from, to);
            const auto made = shootIn(to);
            EXPECT_EQ(made.name, "Zomer op Texel");
            EXPECT_EQ(made.client, "Noorderlicht");
            EXPECT_EQ(made.location, "Texel");
            EXPECT_NE(made.id, old.id);
            EXPECT_LT(age(made.date), 120);
            EXPECT_TRUE(made.activationLog.empty());
            EXPECT_EQ(differences(made.sets, old.sets, Ignoring::Identity), "");
            EXPECT_NE(made.sets[0].id, old.sets[0].id);
        }
    }
}

TEST_F(Convert, SaysWhereItCannotWrite) {
    std::filesystem::create_directory(at("map.csv"));
    const auto before = names();
    for (const std::string to : {"weg/uit.csv", "map.csv", "zomer.csv/uit.csv"})
        expectFailure({"convert", "zomer.vantor", "--output", to}, to + ": kan niet geschreven worden");
    EXPECT_EQ(names(), before);
    EXPECT_EQ(read("zomer.csv"), example("zomer-op-texel.csv"));
}

} // namespace
} // namespace vantor::testing
