#include "tests/ui/ui_fixture.h"
#include "ui/frame/theme.h"

#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <tuple>

namespace vantor::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using Pairs = std::vector<std::pair<std::string, std::string>>;

Pairs lines(const QWidget& sheet) {
    Pairs found;
    const auto names = textsOf(sheet, "itemName");
    const auto colors = textsOf(sheet, "itemColor");
    for (std::size_t i = 0; i < names.size(); ++i)
        found.emplace_back(names[i], colors.at(i));
    return found;
}

Pairs items(const SetData& set) {
    Pairs found;
    for (const auto& item : set.items)
        found.emplace_back(item.name, item.color);
    return found;
}

QLineEdit& field(const QWidget& sheet, const char* name, std::size_t line) {
    return *allVisible<QLineEdit>(sheet, name).at(line);
}

std::vector<QAbstractButton*> removers(const QWidget& sheet) {
    return allVisible<QAbstractButton>(sheet, "removeItemButton");
}

class SetFormTest : public UiTest {
protected:
    SetFormTest() { openMainWithSets(2); }
};

TEST_F(SetFormTest, LabelsAndSmallButtonsAreCaptions) {
    const auto& sheet = openWindow("newSetSheet");
    std::vector<const QWidget*> small{&find(sheet, "addItemButton"), &find(sheet, "catalogPicker")};
    for (const auto* const label : sheet.findChildren<QLabel*>()) {
        if (label->objectName() != "sheetTitle" && label->window() == &sheet)
            small.push_back(label);
    }
    for (const auto* const caption : small)
        EXPECT_EQ(caption->font().pointSizeF(), ui::theme::captionFont().pointSizeF())
            << textOf(*caption).toStdString();
    EXPECT_EQ(small.back()->palette().color(QPalette::WindowText), ui::theme::secondaryText(sheet.palette()));
}

TEST_F(SetFormTest, NeedsABrandOrANamedItem) {
    const auto& sheet = openWindow("newSetSheet");
    for (const auto* const name :
         {"setNumberField", "modelField", "locationField", "emailField", "itemColor"}) {
        type(sheet, name, "x");
        EXPECT_FALSE(find(sheet, "confirmButton").isEnabled()) << name;
    }
    press(Qt::Key_Return);
    EXPECT_TRUE(isOpen("newSetSheet"));
    for (const auto* const name : {"itemName", "brandField"}) {
        for (const auto* const text : {" ", ""}) {
            type(sheet, name, text);
            EXPECT_EQ(find(sheet, "confirmButton").isEnabled(), *text != '\0') << name;
        }
    }
    type(sheet, "itemName", "jas");
    click(sheet, "addItemButton");
    click(*removers(sheet).at(0));
    EXPECT_FALSE(find(sheet, "confirmButton").isEnabled()) << "the only line with a name was removed";
}

TEST_F(SetFormTest, StoresWhatWasTypedInTheShootItWasOpenedFor) {
    const auto meant = shoot().id;
    const auto& sheet = openWindow("newSetSheet");
    const std::vector<std::tuple<const char*, QString, std::string SetData::*>> typed{
        {"setNumberField", " 12b ", &SetData::setNumber},
        {"brandField", " Nike", &SetData::brand},
        {"modelField", "Anna ", &SetData::model},
        {"locationField", " Studio A", &SetData::location},
        {"emailField", "a@b.nl ", &SetData::email}};
    for (const auto& [name, text, member] : typed)
        type(sheet, name, text);
    type(field(sheet, "itemColor", 0), "rood");
    click(sheet, "addItemButton");
    EXPECT_EQ(&focused(), &field(sheet, "itemName", 1)) << "a new line takes the focus";
    type(field(sheet, "itemName", 1), " jas ");
    type(field(sheet, "itemColor", 1), " blauw");
    addShoot("Texel");
    click(sheet, "confirmButton");
    EXPECT_FALSE(isOpen("newSetSheet"));
    EXPECT_THAT(shoot().sets, IsEmpty());
    const auto& made = manager().shoot(meant)->sets.front();
    for (const auto& [name, text, member] : typed)
        EXPECT_EQ(made.*member, text.toStdString());
    EXPECT_THAT(items(made), ElementsAre(std::pair(" jas ", " blauw")));
}

TEST_F(SetFormTest, RemovingLinesStopsAtOneAndTabFollowsThem) {
    const auto& sheet = openWindow("newSetSheet");
    for (const std::size_t line : {0U, 1U, 2U}) {
        if (line > 0)
            click(sheet, "addItemButton");
        type(field(sheet, "itemName", line), QString::number(line));
    }
    click(*removers(sheet).at(1));
    EXPECT_THAT(lines(sheet), ElementsAre(std::pair("0", ""), std::pair("2", "")));
    find(sheet, "setNumberField").setFocus();
    EXPECT_THAT(namesOf(tabWalk()), ElementsAre("setNumberField", "brandField", "modelField", "locationField",
                                                "emailField", "itemName", "itemColor", "removeItemButton",
                                                "itemName", "itemColor", "removeItemButton", "addItemButton",
                                                "catalogPicker", "cancelButton", "confirmButton"));
    click(*removers(sheet).at(0));
    EXPECT_THAT(lines(sheet), ElementsAre(std::pair("2", "")));
    EXPECT_THAT(removers(sheet), IsEmpty());
}

TEST_F(SetFormTest, OpensAtTheFirstOfManyItemsAndTabScrollsToTheOthers) {
    std::vector<SetItem> many;
    for (int i = 0; i < 12; ++i)
        many.push_back(SetItem::make("item " + std::to_string(i), ""));
    addSet("7", "Nike", many);
    const auto& sheet = openWindow("editSetSheet");
    const auto& scroll = find<QScrollArea>(sheet, "sheetPane");
    EXPECT_EQ(scroll.verticalScrollBar()->value(), 0);
    find(sheet, "emailField").setFocus();
    const QRect sight(scroll.viewport()->mapToGlobal(QPoint()), scroll.viewport()->size());
    for (int i = 0; i < 12 * 3; ++i) {
        press(Qt::Key_Tab);
        EXPECT_TRUE(sight.contains(QRect(focused().mapToGlobal(QPoint()), focused().size())))
            << i << focused().objectName().toStdString();
    }
}

TEST_F(SetFormTest, ReturnGoesFromFieldToFieldAndAddsFromTheLastOnly) {
    const auto& sheet = openWindow("newSetSheet");
    type(sheet, "brandField", "Nike");
    find(sheet, "setNumberField").setFocus();
    std::vector<std::string> walked;
    for (; isOpen("newSetSheet") && walked.size() < 20; press(Qt::Key_Return)) {
        ASSERT_THAT(shoot().sets, SizeIs(2));
        walked.push_back(focused().objectName().toStdString());
    }
    EXPECT_THAT(walked, ElementsAre("setNumberField", "brandField", "modelField", "locationField",
                                    "emailField", "itemName", "itemColor"));
    EXPECT_THAT(shoot().sets, SizeIs(3));
}

TEST_F(SetFormTest, SaysWhatIsGoneAndKeepsWhatWasTyped) {
    for (const bool edits : {false, true}) {
        auto& sheet = edits ? openWindow("editSetSheet") : openWindow("newSetSheet");
        type(sheet, "brandField", "Nike");
        const auto before = shoot().id;
        addShoot("Texel");
        addSet("1");
        manager().deleteShoot(before);
        click(sheet, "confirmButton");
        EXPECT_EQ(textOf(sheet, "sheetProblem"),
                  edits ? "Deze set bestaat niet meer." : "Deze shoot bestaat niet meer.");
        EXPECT_EQ(textOf(sheet, "brandField"), "Nike");
        EXPECT_THAT(shoot().sets, SizeIs(1));
        sheet.close();
        settle();
        returnToMain();
    }
}

TEST_F(SetFormTest, EditingShowsTheSetAndKeepsWhatIsNotOnTheForm) {
    auto set = noorderlicht();
    set.email = "anna@example.nl";
    set.taggedCount = 41;
    manager().addSet(shoot().id, set);
    settle();
    const auto& sheet = openWindow("editSetSheet");
    for (const auto& [name, text] :
         {std::pair("setNumberField", "12"), std::pair("brandField", "Noorderlicht"),
          std::pair("modelField", "Anna"), std::pair("locationField", "Studio A"),
          std::pair("emailField", "anna@example.nl")})
        EXPECT_EQ(textOf(sheet, name), text) << name;
    EXPECT_THAT(lines(sheet),
                ElementsAre(std::pair("coated pants", "brown"), std::pair("sweater", "blue navy")));
    type(sheet, "modelField", "Zoe");
    type(field(sheet, "itemName", 1), "");
    click(sheet, "confirmButton");
    EXPECT_FALSE(isOpen("editSetSheet"));
    const auto& edited = shoot().sets.front();
    EXPECT_EQ(edited.id, set.id);
    EXPECT_EQ(edited.taggedCount, 41);
    EXPECT_EQ(edited.model, "Zoe");
    EXPECT_THAT(items(edited), ElementsAre(std::pair("coated pants", "brown")));
}

} // namespace
} // namespace vantor::testing
