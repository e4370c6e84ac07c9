#include "base/file_name.h"

#include <gtest/gtest.h>

#include <ostream>

namespace vantor {
namespace {

using namespace std::string_literals;

std::string repeated(int count, std::string_view text) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

struct Part {
    std::string behaviour;
    std::string text;
    std::string part;
};

void PrintTo(const Part& each, std::ostream* out) {
    *out << ::testing::PrintToString(each.text);
}

class FileNamePart : public ::testing::TestWithParam<Part> {};

// With four bytes for an extension.
TEST_P(FileNamePart, IsWhatAFileSystemTakes) {
    EXPECT_EQ(fileNamePart(GetParam().text, 4), GetParam().part);
}

const std::string kFamily = "\U0001F469\u200D\U0001F469\u200D\U0001F467";

INSTANTIATE_TEST_SUITE_P(
    Texts, FileNamePart,
    ::testing::Values(Part{"KeepsAllElse", ".. \\:*?\"<>|\n\u202E☀️ ", ".. \\:*?\"<>|\n\u202E☀️ "},
                      Part{"IsEmptyForNothing", "", ""}, Part{"HasDashesForSlashes", "../../x/", "..-..-x-"},
                      Part{"HasADashForAZeroByte", "a\0b"s, "a-b"},
                      Part{"KeepsWhatFits", repeated(251, "x"), repeated(251, "x")},
                      Part{"CutsWhatDoesNot", repeated(252, "x"), repeated(251, "x")},
                      Part{"CutsNoLetterInTwo", repeated(200, "é"), repeated(125, "é")},
                      Part{"CutsNoAccentOff", repeated(249, "x") + "e\u0301", repeated(249, "x")},
                      Part{"CutsNoEmojiInTwo", repeated(14, kFamily), repeated(13, kFamily)},
                      Part{"CutsACharacterThatIsTooLongItself", "e" + repeated(200, "\u0301"), ""}),
    [](const auto& each) { return each.param.behaviour; });

TEST(FileNamePart, IsEmptyWhereTheRestTakesAllTheRoom) {
    EXPECT_EQ(fileNamePart("x", 255), "");
    EXPECT_EQ(fileNamePart("x", 300), "");
}

} // namespace
} // namespace vantor
