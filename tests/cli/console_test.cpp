// What the built program prints, and standard output that takes nothing.

#include "tests/cli/program.h"

namespace vantor::testing {
namespace {

using Console = Program;

TEST_F(Console, CallsThatPrintFailWhereOutputIsFullOrClosed) {
    write("a.csv", "Set;Merk\n1;Marvis\n");
    for (const auto& arguments : std::vector<std::vector<std::string>>{
             {"--help"}, {"--version"}, {"cards", "--help"}, {"list", "a.csv"}, {"parse"}}) {
        EXPECT_NE(done(arguments, {.input = "SET:1"}), "");
        for (const auto& streams : {Streams{.input = "SET:1", .outputFile = "/dev/full"},
                                    Streams{.input = "SET:1", .outputClosed = true}})
            expectFailure(arguments, "standaarduitvoer: kan niet geschreven worden", streams);
    }
    // Files need none.
    done({"cards", "a.csv", "--output", "a.pdf"}, {.outputClosed = true});
    done({"convert", "a.csv", "--output", "b.csv"}, {.outputClosed = true});
    EXPECT_TRUE(read("a.pdf").starts_with("%PDF-"));
    EXPECT_EQ(read("b.csv"), "Set;Merk;Items;Model;Locatie;Email;Getagd\n1;Marvis;;;;;0");
}

TEST_F(Console, NoControlCharacterReachesATerminal) {
    expectFailure({"list", "\x1B]0;x\x07.csv"}, "\uFFFD]0;x\uFFFD.csv: bestaat niet");
    writeShoot("a.vantor", {setOf("1", "\x1B[31mrood\x07\x7F \u009B2J")});
    EXPECT_EQ(done({"list", "a.vantor"}), "Set 1 — \uFFFD[31mrood\uFFFD\uFFFD \uFFFD2J\t\n");
}

} // namespace
} // namespace vantor::testing
