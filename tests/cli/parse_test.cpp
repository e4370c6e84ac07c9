// vantor-prep-cli parse, as a process.

#include "tests/cli/program.h"

#include <gmock/gmock.h>

#include <regex>

namespace vantor::testing {
namespace {

using ::testing::HasSubstr;

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

TEST_F(Parse, ShowsTheSetOfStandardInputOrAFileAsTheScannerFieldTakesIt) {
    const std::string sloppy = "\uFEFFset : 12\r\n\r\nonzin\r\n Brand:Noorderlicht \r\nitem: trui / crème\r\n"
                               "ITEM:muts\r\nModel:Zoë\r\nlocation:Studio \"A\"\r\nEMAIL:zoe@example.nl\r\n";
    for (const auto& card : {std::string(kCard), sloppy}) {
        write("kaart van Zoë", card);
        for (const auto& arguments :
             std::vector<std::vector<std::string>>{{"parse"}, {"parse", "-"}, {"parse", "kaart van Zoë"}})
            EXPECT_EQ(steady(done(arguments, {.input = card})), kJson);
    }
}

TEST_F(Parse, ShowsControlCharactersExactlyAndToNoTerminal) {
    const auto json = done({"parse"}, {.input = "SET:1\x1B\x7F\nBRAND:\u0080\u009F\u00A0\u202Ex"});
    EXPECT_THAT(json, HasSubstr(R"("setNumber": "1\u001B\u007F")"));
    EXPECT_THAT(json, HasSubstr("\"brand\": \"\\u0080\\u009F\u00A0\u202Ex\""));
}

TEST_F(Parse, SaysWhatItCannotRead) {
    static const std::string kNoSet = "geen set gevonden; een kaart heeft een regel SET: of BRAND:";
    struct Case {
        std::string text;
        std::string problem;
    };
    for (const auto& [text, problem] : {Case{"", kNoSet}, Case{"ITEM:trui/crème\nset 12\nBRAND: ", kNoSet},
                                        Case{"SET:1\nBRAND:Zo\xEB", "regel 2: geen geldige UTF-8"}}) {
        write("kaart.txt", text);
        expectFailure({"parse", "kaart.txt"}, "kaart.txt: " + problem);
        expectFailure({"parse"}, "standaardinvoer: " + problem, {.input = text});
    }
    expectFailure({"parse", "weg.txt"}, "weg.txt: bestaat niet");
}

} // namespace
} // namespace vantor::testing
