#include "app/start_arguments.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <string_view>
#include <vector>

namespace vantor {
namespace {

using Wish = StartArguments::Wish;

StartArguments read(const std::vector<std::string_view>& arguments) {
    return readStartArguments(arguments, "/home/anna");
}

TEST(StartArguments, NameFilesByPathsOrAddresses) {
    struct Case {
        std::vector<std::string_view> arguments;
        std::vector<std::filesystem::path> files;
    };
    const Case cases[] = {
        {{}, {}},
        // In their order, and any bytes.
        {{"/b c/\xC3\xA9\n.vantor", "/a\xFF.vantor", "/a\xFF.vantor"},
         {"/b c/\xC3\xA9\n.vantor", "/a\xFF.vantor", "/a\xFF.vantor"}},
        // Relative ones, from the folder.
        {{"a.vantor", "../b.vantor", "-"}, {"/home/anna/a.vantor", "/home/anna/../b.vantor", "/home/anna/-"}},
        {{"file:///a%20b%FF.vantor", "file://localhost/c"}, {"/a b\xFF.vantor", "/c"}},
        // A file of another machine cannot be opened, and that is to be said.
        {{"file://studio/c"}, {"/home/anna/file://studio/c"}},
        {{"a", "--", "--help", "-x", "--"},
         {"/home/anna/a", "/home/anna/--help", "/home/anna/-x", "/home/anna/--"}},
    };
    for (const auto& [arguments, files] : cases) {
        EXPECT_EQ(read(arguments).wish, Wish::Run);
        EXPECT_EQ(read(arguments).files, files);
    }
}

TEST(StartArguments, KnowTheirOptions) {
    EXPECT_EQ(read({"a", "--help"}).wish, Wish::Help);
    EXPECT_EQ(read({"--version", "--help"}).wish, Wish::Version);
}

TEST(StartArguments, SayWhichOptionIsUnknown) {
    for (const auto* const option : {"--helpp", "-h", "--help=1", "--Version"}) {
        const auto arguments = read({"a", option, "--help"});
        EXPECT_EQ(arguments.wish, Wish::UnknownOption);
        EXPECT_EQ(arguments.option, option);
    }
}

TEST(StartArguments, AreExplained) {
    for (const auto* const part : {"Gebruik: vantor-prep", "--help", "--version", "--  "})
        EXPECT_THAT(helpText(), ::testing::HasSubstr(part));
}

} // namespace
} // namespace vantor
