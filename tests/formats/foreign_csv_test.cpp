// CSV files that other programs wrote, read as sets.

#include "formats/set_csv.h"
#include "tests/support/differences.h"
#include "tests/support/read_file.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vantor {
namespace {

struct Fixture {
    std::string_view file;
    // What the file starts with, and what its lines end with.
    std::string_view start;
    std::string_view lineEnd;
    // The number 12½ as the program wrote it.
    std::string_view decimalNumber;
};

void PrintTo(const Fixture& fixture, std::ostream* out) {
    *out << fixture.file;
}

SetData setOf(std::string_view setNumber, std::string_view brand,
              const std::vector<std::pair<std::string, std::string>>& items, std::string_view model,
              std::string_view location, std::string_view email) {
    SetData set;
    set.setNumber = setNumber;
    set.brand = brand;
    for (const auto& [name, color] : items)
        set.items.push_back(SetItem::make(name, color));
    set.model = model;
    set.location = location;
    set.email = email;
    return set;
}

std::string pathOf(const Fixture& fixture) {
    return VANTOR_TEST_DATA "/foreign/" + std::string(fixture.file);
}

class ForeignCsv : public ::testing::TestWithParam<Fixture> {};

TEST_P(ForeignCsv, IsWrittenTheWayItsProgramWrites) {
    const auto bytes = testing::readFile(pathOf(GetParam()));
    EXPECT_TRUE(bytes.starts_with(GetParam().start));
    EXPECT_NE(bytes.find("Getagd" + std::string(GetParam().start.ends_with('"') ? "\"" : "") +
                         std::string(GetParam().lineEnd)),
              std::string::npos);
    // The line break inside a cell is a line feed in all of them.
    EXPECT_NE(bytes.find("Mokbaai\nbij de steiger\""), std::string::npos);
}

TEST_P(ForeignCsv, ReadsEveryFieldOfEverySet) {
    const Timestamp now{795173400};
    const auto sets = readSetCSV(testing::readFile(pathOf(GetParam())), now).sets;
    const std::vector<SetData> expected{
        setOf("1", "Marvis", {{"coated pants", "bruin"}, {"gebreid vest", "écru"}}, "Zoë", "Den Hoorn",
              "zoe@example.nl"),
        setOf("007", "Brünn; Daël & Co", {{"spijkerjack", "lichtblauw"}}, "Björn", "De Slufter", ""),
        // Quote characters never survive.
        setOf("3", "Wolkenveld", {{"rok Eb & vloed", "ivoor"}}, "Françoise Fré", "Paal 9; bij de vlag", ""),
        // The empty row is a line of semicolons: no set, but it counts where a set is numbered by its place.
        setOf("1-2", "Zoutkreek", {{"badpak", "koraal"}}, "Maïté", "3/4", ""),
        setOf(GetParam().decimalNumber, "Noorderlicht", {{"oliejas", "geel"}}, "Chloé", "14-06-2026", ""),
        // A line break ends the line, quotes or not; what stands behind it is a line of its own, without a
        // brand or an item.
        setOf("6", "Wolkenveld", {{"tulen rok", "poederroze"}}, "Noëlle", "Mokbaai", ""),
        setOf("9", "Marvis", {{"=jurk", "rood"}, {"+sjaal", ""}}, "-", "'t Hoorntje", ""),
        setOf("00012345678901234567", "Noorderlicht, Ëlan", {{"a", "b/c"}, {"zeegroen", ""}, {"trui", ""}},
              "Tijn", "Oudeschild, haven", ""),
        setOf("10", "Zeee\u0308gel", {{"trui \U0001F9F6", "cre\u0300me"}}, "", "", ""),
        setOf("11", "Marvis", {{"sjaal lang", "wit"}}, "Loïs", "", ""),
    };
    EXPECT_EQ(testing::differences(sets, expected, testing::Ignoring::Identity), "");
    for (const auto& set : sets) {
        EXPECT_EQ(set.timestamp.secondsSinceReference, now.secondsSinceReference);
        EXPECT_EQ(set.taggedCount, 0) << "of set " << set.setNumber;
    }
}

INSTANTIATE_TEST_SUITE_P(Programs, ForeignCsv,
                         ::testing::Values(Fixture{"libreoffice.csv", "Set;", "\n", "12,5"},
                                           Fixture{"libreoffice_all_quoted.csv", "\"Set\"", "\n", "12,5"},
                                           Fixture{"gnumeric.csv", "Set;", "\r\n", "12.5"},
                                           Fixture{"python_csv.csv", "\uFEFFSet;", "\r\n", "12,5"}),
                         [](const auto& made) {
                             auto name = std::string(made.param.file.substr(0, made.param.file.find('.')));
                             std::erase(name, '_');
                             return name;
                         });

} // namespace
} // namespace vantor
