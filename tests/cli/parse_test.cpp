// vantor-prep-cli parse, as a process.

#include "base/uuid.h"
#include "tests/cli/program.h"

#include <gmock/gmock.h>

#include <regex>

namespace vantor::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr std::string_view kCard = "SET:12\nBRAND:Noorderlicht\nITEM:trui/crème\nITEM:muts\nMODEL:Zoë\n"
                                   "LOCATION:Studio \"A\"\nEMAIL:zoe@example.nl";

// What changes from run to run, made the same.
std::string steady(const std::string& json) {
    static const std::regex kIds("\"[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}\"");
    static const std::regex kTimes("\"20[0-9]{2}-[01][0-9]-[0-3][0-9]T[0-2][0-9]:[0-5][0-9]:[0-6][0-9]Z\"");
    return std::regex_replace(std::regex_replace(json, kIds, "ID"), kTimes, "NU");
}

constexpr std::string_view kJson = R"({
  "brand": "Noorderlicht",
  "email": "zoe@example.nl",
  "id": ID,
  "items": [
    {
      "color": "crème",
      "id": ID,
      "name": "trui"
    },
    {
      "color": "",
      "id": ID,
      "name": "muts"
    }
  ],
  "location": "Studio \"A\"",
  "model": "Zoë",
  "setNumber": "12",
  "taggedCount": 0,
  "timestamp": NU
}
)";

using Parse = Program;

TEST_F(Parse, ShowsTheSetOfStandardInput) {
    for (const auto& arguments : {std::vector<std::string>{"parse"}, {"parse", "-"}}) {
        const auto run = this->run(arguments, {.input = std::string(kCard)});
        EXPECT_EQ(run.status, kDone);
        EXPECT_EQ(steady(run.output), kJson);
        EXPECT_THAT(run.errors, IsEmpty());
    }
}

TEST_F(Parse, ShowsTheSetOfAFile) {
    write("kaart van Zoë", kCard);
    const auto run = this->run({"parse", "kaart van Zoë"});
    EXPECT_EQ(run.status, kDone);
    EXPECT_EQ(steady(run.output), kJson);
    EXPECT_THAT(run.errors, IsEmpty());
}

TEST_F(Parse, TakesSloppyTextsAsTheScannerFieldDoes) {
    const auto run = this->run(
        {"parse"}, {.input = "\uFEFFset : 12\r\n\r\nonzin\r\n Brand:Noorderlicht \r\nitem: trui / crème"
                             "\r\nITEM:muts\r\nModel:Zoë\r\nlocation:Studio \"A\"\r\n"
                             "EMAIL:zoe@example.nl\r\n"});
    EXPECT_EQ(steady(run.output), kJson);
}

TEST_F(Parse, ShowsControlCharactersExactlyAndToNoTerminal) {
    const auto run = this->run({"parse"}, {.input = "SET:1\x1B\x7F\nBRAND:\u0080\u009F\u00A0\u202Ex"});
    EXPECT_EQ(run.status, kDone);
    EXPECT_THAT(run.output, HasSubstr(R"("setNumber": "1\u001B\u007F")"));
    EXPECT_THAT(run.output, HasSubstr("\"brand\": \"\\u0080\\u009F\u00A0\u202Ex\""));
}

TEST_F(Parse, MakesEverySetAnew) {
    const Streams card{.input = std::string(kCard)};
    EXPECT_NE(run({"parse"}, card).output, run({"parse"}, card).output);
}

struct NoSet {
    std::string name;
    std::string text;
};

void PrintTo(const NoSet& none, std::ostream* out) {
    *out << none.name;
}

class WithoutSet : public Program, public ::testing::WithParamInterface<NoSet> {};

TEST_P(WithoutSet, Fails) {
    const auto piped = run({"parse"}, {.input = GetParam().text});
    EXPECT_EQ(piped.status, kFailed);
    EXPECT_THAT(piped.output, IsEmpty());
    EXPECT_EQ(piped.errors,
              "vantor-prep-cli: standaardinvoer: geen set gevonden; een kaart heeft een regel SET: of "
              "BRAND:\n");
    write("kaart.txt", GetParam().text);
    const auto filed = run({"parse", "kaart.txt"});
    EXPECT_EQ(filed.status, kFailed);
    EXPECT_THAT(filed.output, IsEmpty());
    EXPECT_EQ(filed.errors,
              "vantor-prep-cli: kaart.txt: geen set gevonden; een kaart heeft een regel SET: of BRAND:\n");
}

INSTANTIATE_TEST_SUITE_P(Texts, WithoutSet,
                         ::testing::Values(NoSet{"Empty", ""}, NoSet{"BlankLines", " \n\t\r\n"},
                                           NoSet{"OnlyItems", "ITEM:trui/crème\nMODEL:Zoë"},
                                           NoSet{"NoColon", "set 12"}, NoSet{"NoValue", "SET:\nBRAND: "}),
                         [](const auto& made) { return made.param.name; });

TEST_F(Parse, SaysWhatItCannotRead) {
    const auto missing = run({"parse", "weg.txt"});
    EXPECT_EQ(missing.status, kFailed);
    EXPECT_EQ(missing.errors, "vantor-prep-cli: weg.txt: bestaat niet\n");

    write("oud.txt", "SET:1\nBRAND:Zo\xEB");
    const auto old = run({"parse", "oud.txt"});
    EXPECT_EQ(old.status, kFailed);
    EXPECT_THAT(old.output, IsEmpty());
    EXPECT_EQ(old.errors, "vantor-prep-cli: oud.txt: regel 2: geen geldige UTF-8\n");

    const auto piped = run({"parse"}, {.input = "SET:1\n\xFF"});
    EXPECT_EQ(piped.status, kFailed);
    EXPECT_EQ(piped.errors, "vantor-prep-cli: standaardinvoer: regel 2: geen geldige UTF-8\n");
}

} // namespace
} // namespace vantor::testing
