#include "tests/support/read_file.h"
#include "tests/ui/ui_fixture.h"
#include "ui/commands/command_table.h"

#include <QAction>
#include <QKeySequence>
#include <regex>

namespace vantor::testing {
namespace {

using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

using Keys = std::vector<std::pair<std::string, std::string>>;

// The keys of the commands with what they are called, in the order of the menus.
Keys keysOfCommands() {
    Keys keys;
    for (const auto& command : ui::commandTable()) {
        if (!command.shortcut.empty())
            keys.emplace_back(command.shortcut, command.text);
    }
    return keys;
}

TEST(CommandTable, TheManualListsItsShortcutsInOrder) {
    const auto manual = readFile(VANTOR_EXAMPLES "/../docs/handleiding.md");
    const auto begin = manual.find("| toets | in het hoofdvenster |");
    ASSERT_NE(begin, std::string::npos);
    const auto list = manual.substr(begin, manual.find("\n\n", begin) - begin);
    static const std::regex kLine(R"re(\| (\S+) \| \*\*(.+?)\*\*)re");
    Keys keys;
    for (auto line = std::sregex_iterator(list.begin(), list.end(), kLine); line != std::sregex_iterator();
         ++line)
        keys.emplace_back((*line)[1], (*line)[2]);
    EXPECT_THAT(keys, ElementsAreArray(keysOfCommands()));
}

class CommandsTest : public UiTest {};

TEST_F(CommandsTest, EachStandsInAMenuOnceAndNoKeyIsGivenTwice) {
    openMain();
    std::map<QString, int> times;
    std::map<QString, int> keys;
    for (const auto* const menu : find(main(), "menuBar").findChildren<QMenu*>()) {
        for (const auto* const action : menu->actions()) {
            if (!action->isSeparator())
                ++times[action->objectName()];
            if (!action->shortcut().isEmpty())
                ++keys[action->shortcut().toString()];
        }
    }
    for (const auto& command : ui::commandTable())
        EXPECT_EQ(times[QString::fromUtf8(command.name.data(), static_cast<qsizetype>(command.name.size()))],
                  1)
            << command.name;
    EXPECT_EQ(keys.size(), keysOfCommands().size());
}

TEST_F(CommandsTest, TheListOfShortcutsShowsThemAll) {
    openMain();
    give("shortcuts");
    std::vector<std::string> lines{"Sneltoetsen"};
    for (const auto& [key, text] : keysOfCommands())
        lines.push_back(key + " / " + text);
    lines.emplace_back("Sluiten");
    EXPECT_EQ(linesOf(sheet("shortcutsSheet")), lines);
}

} // namespace
} // namespace vantor::testing
