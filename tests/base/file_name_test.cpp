#include "base/file_name.h"
#include "tests/support/table.h"

#include <gtest/gtest.h>

namespace vantor {
namespace {

using testing::repeated;
using testing::TextCase;
using namespace std::string_literals;

const std::string kFamily = "\U0001F469\u200D\U0001F469\u200D\U0001F467";

// With four bytes for an extension.
TEST(FileNamePart, IsWhatAFileSystemTakes) {
    for (const auto& [behaviour, text, part] :
         {TextCase{"KeepsAllElse", ".. \\:*?\"<>|\n\u202E☀️ ", ".. \\:*?\"<>|\n\u202E☀️ "},
          TextCase{"IsEmptyForNothing", "", ""}, TextCase{"HasDashesForSlashes", "../../x/", "..-..-x-"},
          TextCase{"HasADashForAZeroByte", "a\0b"s, "a-b"},
          TextCase{"KeepsWhatFits", repeated(251, "x"), repeated(251, "x")},
          TextCase{"CutsWhatDoesNot", repeated(252, "x"), repeated(251, "x")},
          TextCase{"CutsNoLetterInTwo", repeated(200, "é"), repeated(125, "é")},
          TextCase{"CutsNoAccentOff", repeated(249, "x") + "e\u0301", repeated(249, "x")},
          TextCase{"CutsNoEmojiInTwo", repeated(14, kFamily), repeated(13, kFamily)},
          TextCase{"CutsACharacterThatIsTooLongItself", "e" + repeated(200, "\u0301"), ""}})
        EXPECT_EQ(fileNamePart(text, 4), part) << behaviour;
    // Where the rest takes all the room.
    EXPECT_EQ(fileNamePart("x", 255), "");
    EXPECT_EQ(fileNamePart("x", 300), "");
}

} // namespace
} // namespace vantor
