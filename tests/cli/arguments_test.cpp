// The command line of the built program: help, version and wrong usage.

#include "tests/cli/program.h"

#include <gmock/gmock.h>

namespace vantor::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

using Arguments = Program;

TEST_F(Arguments, HelpNamesEveryCall) {
    const auto run = this->run({"--help"});
    EXPECT_EQ(run.status, kDone);
    EXPECT_THAT(run.errors, IsEmpty());
    for (const auto* const line :
         {"cards INVOER --output BESTAND.pdf [--density large|compact]", "qr INVOER --output MAP",
          "convert INVOER --output BESTAND", "list INVOER", "parse [BESTAND]"})
        EXPECT_THAT(run.output, HasSubstr(std::string("  vantor-prep-cli ") + line + "\n"));
    EXPECT_THAT(run.output, HasSubstr("--from csv of --from vantor"));
    EXPECT_THAT(run.output, HasSubstr("nieuwste set eerst"));
    EXPECT_THAT(run.output, HasSubstr("Uitgangscode: 0 gelukt, 1 mislukt, 2 verkeerd gebruik."));
}

TEST_F(Arguments, ProgramTellsItsVersion) {
    const auto run = this->run({"--version"});
    EXPECT_EQ(run.status, kDone);
    EXPECT_EQ(run.output, "vantor-prep-cli " VANTOR_VERSION "\n");
    EXPECT_THAT(run.errors, IsEmpty());
}

struct CallHelp {
    std::string call;
    std::string usage;
    std::vector<std::string> tells;
};

void PrintTo(const CallHelp& help, std::ostream* out) {
    *out << help.call;
}

class HelpOfCall : public Program, public ::testing::WithParamInterface<CallHelp> {};

TEST_P(HelpOfCall, TellsItsUsageInDutch) {
    const auto run = this->run({GetParam().call, "--help"});
    EXPECT_EQ(run.status, kDone);
    EXPECT_THAT(run.errors, IsEmpty());
    EXPECT_THAT(run.output, StartsWith("Gebruik: vantor-prep-cli " + GetParam().usage + "\n"));
    for (const auto& word : GetParam().tells)
        EXPECT_THAT(run.output, HasSubstr(word));
}

TEST_P(HelpOfCall, ComesWhateverElseIsAsked) {
    const auto run = this->run({GetParam().call, "weg.csv", "--help", "--onzin"});
    EXPECT_EQ(run.status, kDone);
    EXPECT_THAT(run.output, StartsWith("Gebruik: vantor-prep-cli " + GetParam().call));
}

TEST_P(HelpOfCall, GivesWayToTheVersion) {
    const auto run = this->run({GetParam().call, "--version"});
    EXPECT_EQ(run.status, kDone);
    EXPECT_EQ(run.output, "vantor-prep-cli " VANTOR_VERSION "\n");
}

INSTANTIATE_TEST_SUITE_P(
    Calls, HelpOfCall,
    ::testing::Values(CallHelp{"cards",
                               "cards INVOER --output BESTAND.pdf [--density large|compact]",
                               {"--output", "--density large", "--density compact", "--from csv|vantor",
                                "0,33 mm", "nieuwste set eerst"}},
                      CallHelp{"qr",
                               "qr INVOER --output MAP",
                               {"--output", "--from csv|vantor", "600 bij 600", "SET-nummer-merk.png",
                                "nieuwste set eerst"}},
                      CallHelp{"convert",
                               "convert INVOER --output BESTAND",
                               {"--output", "--from csv|vantor", ".csv, .vantor of", "nieuwste set eerst"}},
                      CallHelp{"list", "list INVOER", {"--from csv|vantor", "een tab", "nieuwste set eerst"}},
                      CallHelp{"parse", "parse [BESTAND]", {"standaardinvoer", "JSON", "uitgangscode is 1"}}),
    [](const auto& made) { return made.param.call; });

struct WrongUsage {
    std::string name;
    std::vector<std::string> arguments;
    std::string problem;
    // What the hint behind the problem names.
    std::string about;
};

void PrintTo(const WrongUsage& wrong, std::ostream* out) {
    *out << wrong.name;
}

class Misuse : public Program, public ::testing::WithParamInterface<WrongUsage> {
protected:
    void SetUp() override { write("a.csv", "Set;Merk\n1;Marvis\n"); }
};

TEST_P(Misuse, IsNamedAndDoesNothing) {
    const auto run = this->run(GetParam().arguments);
    EXPECT_EQ(run.status, kMisused);
    EXPECT_THAT(run.output, IsEmpty());
    EXPECT_EQ(run.errors, "vantor-prep-cli: " + GetParam().problem + " (hulp: vantor-prep-cli" +
                              GetParam().about + " --help)\n");
    EXPECT_THAT(names(), ::testing::ElementsAre("a.csv"));
}

const std::vector<WrongUsage> kWrongUsages{
    {"NoCall", {}, "geen opdracht gegeven", ""},
    {"UnknownCall", {"druk", "a.csv"}, "onbekende opdracht ‘druk’", ""},
    {"UnknownCallBeforeHelp", {"druk", "--help"}, "onbekende opdracht ‘druk’", ""},
    {"CardsWithoutInput", {"cards", "--output", "a.pdf"}, "INVOER ontbreekt", " cards"},
    {"CardsWithoutOutput", {"cards", "a.csv"}, "--output ontbreekt", " cards"},
    {"CardsWithEmptyOutput", {"cards", "a.csv", "--output="}, "--output ontbreekt", " cards"},
    {"CardsWithBareOutput",
     {"cards", "a.csv", "--output"},
     "achter ‘--output’ ontbreekt een waarde",
     " cards"},
    {"UnknownDensity",
     {"cards", "a.csv", "--output", "a.pdf", "--density", "tiny"},
     "--density kent alleen large en compact",
     " cards"},
    {"EmptyDensity",
     {"cards", "a.csv", "--output", "a.pdf", "--density="},
     "--density kent alleen large en compact",
     " cards"},
    {"OutputTwice",
     {"cards", "a.csv", "--output", "a.pdf", "--output", "b.pdf"},
     "optie ‘--output’ staat er meer dan eens",
     " cards"},
    {"TwoInputs", {"cards", "a.csv", "b.csv", "--output", "a.pdf"}, "te veel bestanden: ‘b.csv’", " cards"},
    {"UnknownOption",
     {"cards", "a.csv", "--output", "a.pdf", "--groot"},
     "onbekende optie ‘--groot’",
     " cards"},
    {"InputOfUnknownKind",
     {"cards", "a.txt", "--output", "a.pdf"},
     "‘a.txt’ is geen .vantor-, .json- of .csv-bestand",
     " cards"},
    {"InputWithoutExtension", {"list", "a"}, "‘a’ is geen .vantor-, .json- of .csv-bestand", " list"},
    {"EmptyInput", {"list", ""}, "INVOER ontbreekt", " list"},
    {"EmptyInputOfToldKind", {"list", "", "--from", "csv"}, "INVOER ontbreekt", " list"},
    {"StandardInputOfUnknownKind", {"list", "-"}, "bij INVOER - hoort --from csv of --from vantor", " list"},
    {"UnknownFromForStandardInput",
     {"list", "-", "--from", "xml"},
     "bij INVOER - hoort --from csv of --from vantor",
     " list"},
    {"UnknownFromForFile", {"list", "a.csv", "--from", "xml"}, "--from kent alleen csv en vantor", " list"},
    {"ListWithoutInput", {"list"}, "INVOER ontbreekt", " list"},
    {"ListWithOutput", {"list", "a.csv", "--output", "b.csv"}, "onbekende optie ‘--output’", " list"},
    {"QrWithoutInput", {"qr", "--output", "map"}, "INVOER ontbreekt", " qr"},
    {"QrWithoutOutput", {"qr", "a.csv"}, "--output ontbreekt", " qr"},
    {"QrWithDensity",
     {"qr", "a.csv", "--output", "map", "--density", "large"},
     "onbekende optie ‘--density’",
     " qr"},
    {"ConvertWithoutInput", {"convert", "--output", "b.csv"}, "INVOER ontbreekt", " convert"},
    {"ConvertWithoutOutput", {"convert", "a.csv"}, "--output ontbreekt", " convert"},
    {"ConvertToUnknownKind",
     {"convert", "a.csv", "--output", "b.txt"},
     "‘b.txt’ is geen .vantor-, .json- of .csv-bestand",
     " convert"},
    {"ParseTwoFiles", {"parse", "a.txt", "b.txt"}, "te veel bestanden: ‘b.txt’", " parse"},
    {"ParseEmptyName", {"parse", ""}, "de naam van BESTAND is leeg", " parse"},
    {"ParseWithFrom", {"parse", "--from", "csv"}, "onbekende optie ‘--from’", " parse"},
};

INSTANTIATE_TEST_SUITE_P(Table, Misuse, ::testing::ValuesIn(kWrongUsages),
                         [](const auto& made) { return made.param.name; });

TEST_F(Arguments, OptionsStandBeforeOrBehindTheInput) {
    write("a.csv", "Set;Merk\n1;Marvis\n");
    EXPECT_EQ(run({"convert", "--output", "1.csv", "a.csv"}).status, kDone);
    EXPECT_EQ(run({"convert", "a.csv", "--output=2.csv"}).status, kDone);
    EXPECT_EQ(read("1.csv"), read("2.csv"));
}

TEST_F(Arguments, NamesBehindTwoDashesAreFiles) {
    write("--help.csv", "Set;Merk\n1;Marvis\n");
    const auto run = this->run({"list", "--", "--help.csv"});
    EXPECT_EQ(run.status, kDone);
    EXPECT_EQ(run.output, "Set 1 — Marvis\t\n");
}

TEST_F(Arguments, ExtensionsCountInAnyCase) {
    write("A.CSV", "Set;Merk\n1;Marvis\n");
    EXPECT_EQ(run({"convert", "A.CSV", "--output", "B.Vantor"}).status, kDone);
    EXPECT_EQ(run({"list", "B.Vantor"}).output, "Set 1 — Marvis\t\n");
}

TEST_F(Arguments, FromOverrulesTheExtension) {
    write("sets.txt", "Set;Merk\n1;Marvis\n");
    const auto run = this->run({"list", "sets.txt", "--from", "csv"});
    EXPECT_EQ(run.status, kDone);
    EXPECT_EQ(run.output, "Set 1 — Marvis\t\n");
}

} // namespace
} // namespace vantor::testing
