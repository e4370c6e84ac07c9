// vantor-prep-cli list, as a process.

#include "base/timestamp.h"
#include "formats/shoot_file.h"
#include "tests/cli/program.h"

#include <gmock/gmock.h>

namespace vantor::testing {
namespace {

using ::testing::IsEmpty;

class ListCall : public Program {
protected:
    void writeShoot(const std::string& name, SetList sets) const {
        auto shoot = Shoot::make("Proef", "", "", Timestamp{0});
        shoot.sets = std::move(sets);
        write(name, writeShootFile(shoot));
    }

    static SetData set(std::string number, std::string brand, std::vector<SetItem> items = {}) {
        auto made = SetData::make(Timestamp{0});
        made.setNumber = std::move(number);
        made.brand = std::move(brand);
        made.items = std::move(items);
        return made;
    }
};

TEST_F(ListCall, ShowsALineASetInTheOrderOfTheShoot) {
    writeShoot("a.vantor",
               {set("12", "Noorderlicht", {SetItem::make("trui", "crème"), SetItem::make("muts", "")}),
                set("12b", "Zoë & Çelik"), set("", "Marvis"), set("7", ""), set("", "")});
    const auto run = this->run({"list", "a.vantor"});
    EXPECT_EQ(run.status, kDone);
    EXPECT_THAT(run.errors, IsEmpty());
    EXPECT_EQ(run.output, "Set 12 — Noorderlicht\ttrui crème, muts\n"
                          "Set 12b — Zoë & Çelik\t\n"
                          "Marvis\t\n"
                          "Set 7\t\n"
                          "\t\n");
}

TEST_F(ListCall, KeepsEachSetOnOneLineWithOneTab) {
    writeShoot("a.vantor", {set("1\t2", "Mar\nvis", {SetItem::make("trui\r\nlang", "cr\tème")})});
    EXPECT_EQ(run({"list", "a.vantor"}).output, "Set 1 2 — Mar vis\ttrui lang cr ème\n");
}

TEST_F(ListCall, ShowsNoControlCharacters) {
    writeShoot("a.vantor", {set("1", "\x1B[31mrood\x07\x7F \u009B2J")});
    EXPECT_EQ(run({"list", "a.vantor"}).output, "Set 1 — \uFFFD[31mrood\uFFFD\uFFFD \uFFFD2J\t\n");
}

TEST_F(ListCall, ShowsNothingOfAShootWithoutSets) {
    writeShoot("leeg.vantor", {});
    const auto run = this->run({"list", "leeg.vantor"});
    EXPECT_EQ(run.status, kDone);
    EXPECT_THAT(run.output, IsEmpty());
    EXPECT_THAT(run.errors, IsEmpty());
}

TEST_F(ListCall, ShowsTheExampleInEitherForm) {
    write("a.csv", example("zomer-op-texel.csv"));
    write("a.vantor", example("zomer-op-texel.vantor"));
    const auto fromCsv = run({"list", "a.csv"}).output;
    const auto fromShoot = run({"list", "a.vantor"}).output;
    std::string reversed;
    for (std::size_t from = 0; from < fromCsv.size();) {
        const auto end = fromCsv.find('\n', from) + 1;
        reversed.insert(0, fromCsv, from, end - from);
        from = end;
    }
    EXPECT_EQ(reversed, fromShoot);
    EXPECT_THAT(fromShoot,
                ::testing::HasSubstr("\nSet 12b — Marvis\tcoated pants navy, gebreid vest antraciet\n"));
}

} // namespace
} // namespace vantor::testing
