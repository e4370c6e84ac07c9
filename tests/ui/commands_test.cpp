#include "tests/support/read_file.h"
#include "tests/ui/ui_fixture.h"
#include "ui/commands/command_table.h"

#include <QAction>
#include <QKeySequence>
#include <QMenu>
#include <regex>
#include <set>

namespace vantor::testing {
namespace {

using ::testing::ElementsAreArray;

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
    std::vector<std::string> names;
    std::set<QString> keys;
    for (const auto* const menu : find(main(), "menuBar").findChildren<QMenu*>()) {
        for (const auto* const action : menu->actions()) {
            if (!action->isSeparator())
                names.push_back(action->objectName().toStdString());
            if (!action->shortcut().isEmpty())
                keys.insert(action->shortcut().toString());
        }
    }
    for (const auto& command : ui::commandTable())
        EXPECT_EQ(std::ranges::count(names, command.name), 1) << command.name;
    EXPECT_EQ(keys.size(), keysOfCommands().size());
}

} // namespace
} // namespace vantor::testing
