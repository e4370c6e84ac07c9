// vantor-prep-cli list, as a process.

#include "tests/cli/program.h"

namespace vantor::testing {
namespace {

using ListCall = Program;

TEST_F(ListCall, ShowsALineWithOneTabASetInTheOrderOfTheShoot) {
    writeShoot("a.vantor",
               {setOf("12", "Noorderlicht", {SetItem::make("trui", "crème"), SetItem::make("muts", "")}),
                setOf("12b", "Zoë & Çelik"), setOf("", "Marvis"), setOf("7", ""), setOf("", ""),
                setOf("1\t2", "Mar\nvis", {SetItem::make("trui\r\nlang", "cr\tème")})});
    EXPECT_EQ(done({"list", "a.vantor"}), "Set 12 — Noorderlicht\ttrui crème, muts\n"
                                          "Set 12b — Zoë & Çelik\t\n"
                                          "Marvis\t\n"
                                          "Set 7\t\n"
                                          "\t\n"
                                          "Set 1 2 — Mar vis\ttrui lang cr ème\n");
    writeShoot("leeg.vantor", {});
    EXPECT_EQ(done({"list", "leeg.vantor"}), "");
}

} // namespace
} // namespace vantor::testing
