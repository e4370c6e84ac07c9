#include "app/start_arguments.h"

#include <gmock/gmock.h>

namespace vantor {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Wish = StartArguments::Wish;

StartArguments read(const std::vector<std::string_view>& arguments) {
    return readStartArguments(arguments, "/home/anna");
}

TEST(StartArguments, NoneOpenNoFile) {
    EXPECT_EQ(read({}).wish, Wish::Run);
    EXPECT_THAT(read({}).files, IsEmpty());
}

TEST(StartArguments, KeepFilesInOrderAndAnyBytes) {
    EXPECT_THAT(read({"/b c/\xC3\xA9\n.vantor", "/a\xFF.vantor", "/a\xFF.vantor"}).files,
                ElementsAre("/b c/\xC3\xA9\n.vantor", "/a\xFF.vantor", "/a\xFF.vantor"));
}

TEST(StartArguments, TakeRelativePathsFromTheFolder) {
    EXPECT_THAT(read({"a.vantor", "../b.vantor", "-"}).files,
                ElementsAre("/home/anna/a.vantor", "/home/anna/../b.vantor", "/home/anna/-"));
}

TEST(StartArguments, TakeFileAddresses) {
    EXPECT_THAT(read({"file:///a%20b%FF.vantor", "file://localhost/c"}).files,
                ElementsAre("/a b\xFF.vantor", "/c"));
    // A file of another machine cannot be opened, and that is to be said.
    EXPECT_THAT(read({"file://studio/c"}).files, ElementsAre("/home/anna/file://studio/c"));
}

TEST(StartArguments, TakeWhatStandsBehindTwoDashesAsFiles) {
    EXPECT_THAT(read({"a", "--", "--help", "-x", "--"}).files,
                ElementsAre("/home/anna/a", "/home/anna/--help", "/home/anna/-x", "/home/anna/--"));
    EXPECT_EQ(read({"--", "--help"}).wish, Wish::Run);
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
