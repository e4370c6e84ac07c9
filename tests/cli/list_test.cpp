// vantor-prep-cli list, as a process.

#include "tests/cli/program.h"

#include <gmock/gmock.h>

namespace vantor::testing {
namespace {

using ListCall = Program;

TEST_F(ListCall, ShowsALineASetInTheOrderOfTheShoot) {
    writeShoot("a.vantor",
               {setOf("12", "Noorderlicht", {SetItem::make("trui", "crème"), SetItem::make("muts", "")}),
                setOf("12b", "Zoë & Çelik"), setOf("", "Marvis"), setOf("7", ""), setOf("", "")});
    EXPECT_EQ(done({"list", "a.vantor"}), "Set 12 — Noorderlicht\ttrui crème, muts\n"
                                          "Set 12b — Zoë & Çelik\t\n"
                                          "Marvis\t\n"
                                          "Set 7\t\n"
                                          "\t\n");
    writeShoot("leeg.vantor", {});
    EXPECT_EQ(done({"list", "leeg.vantor"}), "");
}

TEST_F(ListCall, KeepsEachSetOnOneLineWithOneTab) {
    writeShoot("a.vantor", {setOf("1\t2", "Mar\nvis", {SetItem::make("trui\r\nlang", "cr\tème")})});
    EXPECT_EQ(done({"list", "a.vantor"}), "Set 1 2 — Mar vis\ttrui lang cr ème\n");
}

TEST_F(ListCall, ShowsTheExampleInEitherForm) {
    write("a.csv", example("zomer-op-texel.csv"));
    write("a.vantor", example("zomer-op-texel.vantor"));
    const auto fromCsv = done({"list", "a.csv"});
    std::string reversed;
    for (std::size_t from = 0; from < fromCsv.size();) {
        const auto end = fromCsv.find('\n', from) + 1;
        reversed.insert(0, fromCsv, from, end - from);
        from = end;
    }
    EXPECT_EQ(reversed, done({"list", "a.vantor"}));
    EXPECT_THAT(reversed,
                ::testing::HasSubstr("\nSet 12b — Marvis\tcoated pants navy, gebreid vest antraciet\n"));
}

} // namespace
} // namespace vantor::testing
