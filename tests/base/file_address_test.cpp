#include "base/file_address.h"
#include "tests/support/table.h"

#include <gmock/gmock.h>

namespace vantor {
namespace {

using ::testing::ElementsAre;

TEST(FileAddress, NamesItsFile) {
    struct Case {
        const char* name;
        std::string address;
        std::optional<std::string> file;
    };
    for (const auto& [name, address, file] : testing::tableOf(
             Case{"Plain", "file:///home/anna/a.vantor", "/home/anna/a.vantor"},
             Case{"Decoded", "file:///a%20b/caf%C3%A9%0A.vantor", "/a b/caf\xC3\xA9\n.vantor"},
             Case{"BytesThatAreNoUtf8", "file:///%ff%FE.vantor", "/\xFF\xFE.vantor"},
             Case{"OfThisMachine", "file://localhost/a", "/a"},
             Case{"OfThisMachineInAnyCase", "FILE://LocalHost/a", "/a"},
             Case{"WithoutAuthority", "file:/a", "/a"},
             Case{"LettersThatShouldBeCoded", "file:///caf\xC3\xA9 #1?.vantor", "/caf\xC3\xA9 #1?.vantor"},
             Case{"PercentThatIsNoCode", "file:///100%/5%2/%zz/%", "/100%/5%2/%zz/%"},
             Case{"CodeAtTheEnd", "file:///a%2F", "/a/"},
             Case{"OfAnotherMachine", "file://studio/a", std::nullopt},
             Case{"OfAMachineWithALongerName", "file://localhost2/a", std::nullopt},
             Case{"WithAZeroByte", "file:///a%00b", std::nullopt},
             Case{"WithoutAPath", "file://localhost", std::nullopt}, Case{"Relative", "file:a", std::nullopt},
             Case{"Web", "https://vantor.example/a", std::nullopt}, Case{"Path", "/a", std::nullopt},
             Case{"Nothing", "", std::nullopt})) {
        SCOPED_TRACE(name);
        const auto named = fileOfAddress(address);
        EXPECT_EQ(named ? std::optional(named->native()) : std::nullopt, file);
    }
    // And a list passes over all but files.
    EXPECT_THAT(
        filesOfAddressList("# two\r\nfile:///a\r\nhttps://vantor.example/x\r\n\r\nfile:///b%0Ac\nfile:///d"),
        ElementsAre("/a", "/b\nc", "/d"));
    EXPECT_THAT(filesOfAddressList(""), ElementsAre());
}

} // namespace
} // namespace vantor
