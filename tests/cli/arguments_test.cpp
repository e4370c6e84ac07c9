// The command line of the built program: help, version and wrong usage.

#include "tests/cli/program.h"

#include <gmock/gmock.h>

namespace vantor::testing {
namespace {

using ::testing::HasSubstr;

using Arguments = Program;

constexpr auto kVersion = "vantor-prep-cli " VANTOR_VERSION "\n";

TEST_F(Arguments, HelpTellsEveryCallAndEachCallItsOwn) {
    const auto help = done({"--help"});
    EXPECT_THAT(help, HasSubstr("Uitgangscode: 0 gelukt, 1 mislukt, 2 verkeerd gebruik."));
    for (const std::string usage :
         {"cards INVOER --output BESTAND.pdf [--density large|compact]", "qr INVOER --output MAP",
          "convert INVOER --output BESTAND", "list INVOER", "parse [BESTAND]"}) {
        EXPECT_THAT(help, HasSubstr("  vantor-prep-cli " + usage + "\n"));
        const auto call = usage.substr(0, usage.find(' '));
        EXPECT_THAT(done({call, "--help"}),
                    ::testing::StartsWith("Gebruik: vantor-prep-cli " + usage + "\n"));
        // Whatever else is asked.
        EXPECT_EQ(done({call, "weg.csv", "--help", "--onzin"}), done({call, "--help"}));
        EXPECT_EQ(done({call, "--version"}), kVersion);
    }
    EXPECT_EQ(done({"--version"}), kVersion);
}

// The words of a command line, one blank apart; none of an empty one.
std::vector<std::string> wordsOf(std::string line) {
    std::vector<std::string> words;
    for (line += line.empty() ? "" : " "; !line.empty(); line.erase(0, line.find(' ') + 1))
        words.push_back(line.substr(0, line.find(' ')));
    return words;
}

TEST_F(Arguments, MisuseIsNamedAndDoesNothing) {
    write("a.csv", "Set;Merk\n1;Marvis\n");
    for (const auto& [line, problem] : std::vector<std::pair<std::string, std::string>>{
             {"", "geen opdracht gegeven"},
             {"druk a.csv", "onbekende opdracht ‘druk’"},
             {"druk --help", "onbekende opdracht ‘druk’"},
             {"cards --output a.pdf", "INVOER ontbreekt"},
             {"cards a.csv", "--output ontbreekt"},
             {"cards a.csv --output=", "--output ontbreekt"},
             {"cards a.csv --output", "achter ‘--output’ ontbreekt een waarde"},
             {"cards a.csv --output a.pdf --density tiny", "--density kent alleen large en compact"},
             {"cards a.csv --output a.pdf --density=", "--density kent alleen large en compact"},
             {"cards a.csv --output a.pdf --output b.pdf", "optie ‘--output’ staat er meer dan eens"},
             {"cards a.csv b.csv --output a.pdf", "te veel bestanden: ‘b.csv’"},
             {"cards a.csv --output a.pdf --groot", "onbekende optie ‘--groot’"},
             {"cards a.txt --output a.pdf", "‘a.txt’ is geen .vantor-, .json- of .csv-bestand"},
             {"list a", "‘a’ is geen .vantor-, .json- of .csv-bestand"},
             {"list ", "INVOER ontbreekt"},
             {"list  --from csv", "INVOER ontbreekt"},
             {"list -", "bij INVOER - hoort --from csv of --from vantor"},
             {"list - --from xml", "bij INVOER - hoort --from csv of --from vantor"},
             {"list a.csv --from xml", "--from kent alleen csv en vantor"},
             {"list", "INVOER ontbreekt"},
             {"list a.csv --output b.csv", "onbekende optie ‘--output’"},
             {"qr --output map", "INVOER ontbreekt"},
             {"qr a.csv", "--output ontbreekt"},
             {"qr a.csv --output map --density large", "onbekende optie ‘--density’"},
             {"convert --output b.csv", "INVOER ontbreekt"},
             {"convert a.csv", "--output ontbreekt"},
             {"convert a.csv --output b.txt", "‘b.txt’ is geen .vantor-, .json- of .csv-bestand"},
             {"parse a.txt b.txt", "te veel bestanden: ‘b.txt’"},
             {"parse ", "de naam van BESTAND is leeg"},
             {"parse --from csv", "onbekende optie ‘--from’"},
         }) {
        SCOPED_TRACE("vantor-prep-cli " + line);
        const auto run = this->run(wordsOf(line));
        EXPECT_EQ(run.status, kMisused);
        EXPECT_THAT(run.output, ::testing::IsEmpty());
        const auto about = line.empty() || line.starts_with("druk") ? "" : " " + wordsOf(line).front();
        EXPECT_EQ(run.errors,
                  "vantor-prep-cli: " + problem + " (hulp: vantor-prep-cli" + about + " --help)\n");
        EXPECT_THAT(names(), ::testing::ElementsAre("a.csv"));
    }
}

TEST_F(Arguments, OptionsStandBeforeOrBehindTheInputAndFilesAreReadAsTheirNamesOrOptionsSay) {
    for (const std::string name : {"A.CSV", "--help.csv", "sets.txt"})
        write(name, "Set;Merk\n1;Marvis\n");
    done({"convert", "--output", "1.csv", "A.CSV"});
    done({"convert", "A.CSV", "--output=2.csv"});
    EXPECT_EQ(read("1.csv"), read("2.csv"));
    done({"convert", "A.CSV", "--output", "B.Vantor"});
    for (const auto& arguments : std::vector<std::vector<std::string>>{
             {"list", "B.Vantor"}, {"list", "--", "--help.csv"}, {"list", "sets.txt", "--from", "csv"}})
        EXPECT_EQ(done(arguments), "Set 1 — Marvis\t\n");
}

} // namespace
} // namespace vantor::testing
