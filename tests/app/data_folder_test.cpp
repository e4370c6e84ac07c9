#include "app/data_folder.h"
#include "tests/support/environment_variable.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace vantor {
namespace {

using testing::EnvironmentVariable;

TEST(DataFolder, IsInAnAbsoluteFolderOfTheEnvironmentOrElseInTheUsersOwn) {
    const EnvironmentVariable home("HOME", "/home/anna");
    struct Case {
        std::optional<std::string> folder;
        std::filesystem::path expected;
    };
    for (const auto& [folder, expected] :
         {Case{"/data/anna", "/data/anna/Vantor"}, Case{std::nullopt, "/home/anna/.local/share/Vantor"},
          Case{"", "/home/anna/.local/share/Vantor"}, Case{"data", "/home/anna/.local/share/Vantor"},
          Case{"./data", "/home/anna/.local/share/Vantor"},
          Case{"~/data", "/home/anna/.local/share/Vantor"}}) {
        const EnvironmentVariable variable("XDG_DATA_HOME", folder);
        ignoreRelativeBaseFolders();
        EXPECT_EQ(dataFolder(), expected) << folder.value_or("(not set)");
    }
}

TEST(DataFolder, SettingsAreNotWhereTheProgramWasStartedEither) {
    const EnvironmentVariable relative("XDG_CONFIG_HOME", "config");
    const EnvironmentVariable absolute("XDG_CACHE_HOME", "/cache");
    ignoreRelativeBaseFolders();
    EXPECT_EQ(std::getenv("XDG_CONFIG_HOME"), nullptr);
    EXPECT_STREQ(std::getenv("XDG_CACHE_HOME"), "/cache");
}

} // namespace
} // namespace vantor
