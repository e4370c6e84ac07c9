// CSV files that other programs wrote, read as sets.

#include "formats/set_csv.h"
#include "tests/support/examples.h"
#include "tests/support/read_file.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace vantor {
namespace {

using testing::kMorning;

TEST(ForeignCsv, IsReadWithEveryFieldOfEverySet) {
    struct Fixture {
        std::string file;
        // What the file starts with, and what its lines end with: the way its program writes.
        std::string start;
        std::string lineEnd;
        // The number 12½ as the program wrote it.
        std::string decimalNumber;
    };
    for (const auto& [file, start, lineEnd, decimalNumber] :
         {Fixture{"libreoffice.csv", "Set;", "Getagd\n", "12,5"},
          Fixture{"libreoffice_all_quoted.csv", "\"Set\"", "\"Getagd\"\n", "12,5"},
          Fixture{"gnumeric.csv", "Set;", "Getagd\r\n", "12.5"},
          Fixture{"python_csv.csv", "\uFEFFSet;", "Getagd\r\n", "12,5"}}) {
        SCOPED_TRACE(file);
        const auto bytes = testing::readFile(VANTOR_TEST_DATA "/foreign/" + file);
        EXPECT_TRUE(bytes.starts_with(start));
        EXPECT_NE(bytes.find(lineEnd), std::string::npos);
        // The line break inside a cell is a line feed in all of them.
        EXPECT_NE(bytes.find("Mokbaai\nbij de steiger\""), std::string::npos);

        std::vector<std::string> sets;
        for (const auto& set : readSetCSV(bytes, kMorning).sets) {
            sets.push_back(testing::summary(set));
            EXPECT_EQ(set.timestamp.secondsSinceReference, kMorning.secondsSinceReference);
            EXPECT_EQ(set.taggedCount, 0) << "of set " << set.setNumber;
        }
        EXPECT_THAT(
            sets,
            ::testing::ElementsAre(
                "1|Marvis|Zoë|Den Hoorn|zoe@example.nl|coated pants+bruin|gebreid vest+écru",
                "007|Brünn; Daël & Co|Björn|De Slufter||spijkerjack+lichtblauw",
                // Quote characters never survive.
                "3|Wolkenveld|Françoise Fré|Paal 9; bij de vlag||rok Eb & vloed+ivoor",
                // The empty row is a line of semicolons: no set, but it counts where a set is numbered by its place.
                "1-2|Zoutkreek|Maïté|3/4||badpak+koraal",
                decimalNumber + "|Noorderlicht|Chloé|14-06-2026||oliejas+geel",
                // A line break ends the line, quotes or not; what stands behind it is a line of its own, without a
                // brand or an item.
                "6|Wolkenveld|Noëlle|Mokbaai||tulen rok+poederroze",
                "9|Marvis|-|'t Hoorntje||=jurk+rood|+sjaal+",
                "00012345678901234567|Noorderlicht, Ëlan|Tijn|Oudeschild, haven||a+b/c|zeegroen+|trui+",
                "10|Zeee\u0308gel||||trui \U0001F9F6+cre\u0300me", "11|Marvis|Loïs|||sjaal lang+wit"));
    }
}

} // namespace
} // namespace vantor
