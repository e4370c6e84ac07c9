#include "base/file_name.h"

#include <gtest/gtest.h>

namespace vantor {
namespace {

using namespace std::string_literals;

std::string repeated(int count, std::string_view text) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

const std::string kFamily = "\U0001F469\u200D\U0001F469\u200D\U0001F467";

// With four bytes for an extension.
TEST(FileNamePart, IsWhatAFileSystemTakes) {
    struct Part {
        std::string behaviour;
        std::string text;
        std::string part;
    };
    for (const auto& [behaviour, text, part] :
         {Part{"KeepsAllElse", ".. \\:*?\"<>|\n\u202E☀️ ", ".. \\:*?\"<>|\n\u202E☀️ "},
          Part{"IsEmptyForNothing", "", ""}, Part{"HasDashesForSlashes", "../../x/", "..-..-x-"},
          Part{"HasADashForAZeroByte", "a\0b"s, "a-b"},
          Part{"KeepsWhatFits", repeated(251, "x"), repeated(251, "x")},
          Part{"CutsWhatDoesNot", repeated(252, "x"), repeated(251, "x")},
          Part{"CutsNoLetterInTwo", repeated(200, "é"), repeated(125, "é")},
          Part{"CutsNoAccentOff", repeated(249, "x") + "e\u0301", repeated(249, "x")},
          Part{"CutsNoEmojiInTwo", repeated(14, kFamily), repeated(13, kFamily)},
          Part{"CutsACharacterThatIsTooLongItself", "e" + repeated(200, "\u0301"), ""}})
        EXPECT_EQ(fileNamePart(text, 4), part) << behaviour;
    // Where the rest takes all the room.
    EXPECT_EQ(fileNamePart("x", 255), "");
    EXPECT_EQ(fileNamePart("x", 300), "");
}

} // namespace
} // namespace vantor
