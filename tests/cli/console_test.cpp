// Standard output that takes nothing, and how quickly the built program starts.

#include "tests/cli/program.h"

#include <gmock/gmock.h>

namespace vantor::testing {
namespace {

struct Printing {
    std::string name;
    std::vector<std::string> arguments;
};

void PrintTo(const Printing& printing, std::ostream* out) {
    *out << printing.name;
}

class PrintingCall : public Program, public ::testing::WithParamInterface<Printing> {
protected:
    void SetUp() override { write("a.csv", "Set;Merk\n1;Marvis\n"); }

    void expectFailure(Streams streams) const {
        streams.input = "SET:1";
        const auto run = this->run(GetParam().arguments, streams);
        EXPECT_EQ(run.status, kFailed);
        EXPECT_EQ(run.errors, "vantor-prep-cli: standaarduitvoer: kan niet geschreven worden\n");
    }
};

TEST_P(PrintingCall, FailsWhereOutputIsFull) {
    expectFailure({.outputFile = "/dev/full"});
}

TEST_P(PrintingCall, FailsWhereOutputIsClosed) {
    expectFailure({.outputClosed = true});
}

TEST_P(PrintingCall, SucceedsOtherwise) {
    const auto run = this->run(GetParam().arguments, {.input = "SET:1"});
    EXPECT_EQ(run.status, kDone);
    EXPECT_FALSE(run.output.empty());
}

INSTANTIATE_TEST_SUITE_P(Calls, PrintingCall,
                         ::testing::Values(Printing{"Help", {"--help"}}, Printing{"Version", {"--version"}},
                                           Printing{"HelpOfCall", {"cards", "--help"}},
                                           Printing{"List", {"list", "a.csv"}}, Printing{"Parse", {"parse"}}),
                         [](const auto& made) { return made.param.name; });

using Console = Program;

TEST_F(Console, FilesAreMadeWithoutStandardOutput) {
    write("a.csv", "Set;Merk\n1;Marvis\n");
    EXPECT_EQ(run({"cards", "a.csv", "--output", "a.pdf"}, {.outputClosed = true}).status, kDone);
    EXPECT_EQ(run({"convert", "a.csv", "--output", "b.csv"}, {.outputClosed = true}).status, kDone);
    EXPECT_THAT(read("a.pdf"), ::testing::StartsWith("%PDF-"));
    EXPECT_EQ(read("b.csv"), "Set;Merk;Items;Model;Locatie;Email;Getagd\n1;Marvis;;;;;0");
}

TEST_F(Console, ErrorsShowNoControlCharacters) {
    const auto run = this->run({"list", "\x1B]0;x\x07.csv"});
    EXPECT_EQ(run.status, kFailed);
    EXPECT_EQ(run.errors, "vantor-prep-cli: \uFFFD]0;x\uFFFD.csv: bestaat niet\n");
}

} // namespace
} // namespace vantor::testing
