#include "tests/ui/sheets/sheet_test.h"
#include "ui/frame/theme.h"

#include <QScrollArea>
#include <QScrollBar>

namespace vantor::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using Pairs = std::vector<std::pair<std::string, std::string>>;

Pairs lines(const QWidget& sheet) {
    Pairs found;
    const auto names = sheet.findChildren<QLineEdit*>("itemName");
    const auto colors = sheet.findChildren<QLineEdit*>("itemColor");
    for (qsizetype i = 0; i < names.size(); ++i)
        found.emplace_back(names[i]->text().toStdString(), colors[i]->text().toStdString());
    return found;
}

Pairs items(const SetData& set) {
    Pairs found;
    for (const auto& item : set.items)
        found.emplace_back(item.name, item.color);
    return found;
}

QLineEdit& field(const QWidget& sheet, const char* name, qsizetype line) {
    return *sheet.findChildren<QLineEdit*>(QLatin1String(name)).at(line);
}

std::vector<QAbstractButton*> removers(const QWidget& sheet) {
    return allVisible<QAbstractButton>(sheet, "removeItemButton");
}

class SetFormTest : public SheetTest {
protected:
    SetFormTest() { openMainWithSets(2); }

    [[nodiscard]] const SetData& newest() { return shoot().sets.front(); }
};

TEST_F(SetFormTest, SaysWhatItIsForAndTakesAsManyItemsAsItHas) {
    addSet("7", "Nike", {SetItem::make("jurk", "rood"), SetItem::make("jas", "")});
    for (const bool edits : {false, true}) {
        const auto& sheet = edits ? openEditSet() : openNewSet();
        // What is edited needs no example of a brand.
        std::vector<std::string> expected{edits ? "Set bewerken" : "Nieuwe Set",
                                          "Set nummer",
                                          "[]",
                                          "Merk",
                                          edits ? "[]" : "[bijv. Marvis]",
                                          "Model",
                                          "[Naam]",
                                          "Locatie",
                                          "[Studio]",
                                          "E-mail (optioneel)",
                                          "[bijv. voor portretsessies per persoon]",
                                          "Items"};
        expected.insert(expected.end(), edits ? 2 : 1,
                        edits ? "[Item] / [Kleur] / {Item verwijderen}" : "[Item] / [Kleur]");
        expected.insert(expected.end(), {"+ Item toevoegen / Uit catalogus",
                                         edits ? "Annuleer / Opslaan" : "Annuleer / Toevoegen"});
        EXPECT_EQ(linesOf(sheet), expected);
        EXPECT_EQ(find(sheet, "setNumberField").width(), 60);
        EXPECT_EQ(field(sheet, "itemColor", 0).width(), 100);
        click(sheet, "cancelButton");
        returnToMain();
    }
}

TEST_F(SetFormTest, LabelsAndSmallButtonsAreCaptions) {
    const auto& sheet = openNewSet();
    for (const auto* const label : sheet.findChildren<QLabel*>()) {
        if (label->objectName() == "sheetTitle")
            continue;
        EXPECT_EQ(label->font().pointSizeF(), ui::theme::captionFont().pointSizeF())
            << label->text().toStdString();
        EXPECT_EQ(label->palette().color(QPalette::WindowText), ui::theme::secondaryText(sheet.palette()))
            << label->text().toStdString();
    }
    for (const auto* const name : {"addItemButton", "catalogPicker"})
        EXPECT_EQ(find(sheet, name).font().pointSizeF(), ui::theme::captionFont().pointSizeF()) << name;
}

TEST_F(SetFormTest, TabFollowsTheFormAlsoThroughLinesThatWereAdded) {
    const auto& sheet = openNewSet();
    click(sheet, "addItemButton");
    click(sheet, "addItemButton");
    click(*removers(sheet).at(1));
    type(sheet, "brandField", "Nike");
    find(sheet, "setNumberField").setFocus();
    EXPECT_THAT(tabWalk(), ElementsAre("setNumberField", "brandField", "modelField", "locationField",
                                       "emailField", "itemName", "itemColor", "removeItemButton", "itemName",
                                       "itemColor", "removeItemButton", "addItemButton", "catalogPicker",
                                       "cancelButton", "confirmButton"));
}

TEST_F(SetFormTest, NeedsABrandOrANamedItem) {
    const auto& sheet = openNewSet();
    const auto& add = find(sheet, "confirmButton");
    EXPECT_THAT(lines(sheet), ElementsAre(std::pair("", "")));
    EXPECT_THAT(removers(sheet), IsEmpty());
    for (const auto* const name :
         {"setNumberField", "modelField", "locationField", "emailField", "itemColor"}) {
        EXPECT_EQ(textOf(sheet, name), "") << name;
        type(sheet, name, "x");
        EXPECT_FALSE(add.isEnabled()) << name;
    }
    press(Qt::Key_Return);
    EXPECT_TRUE(isOpen("newSetSheet"));
    for (const auto* const name : {"itemName", "brandField"}) {
        type(sheet, name, " ");
        EXPECT_TRUE(add.isEnabled()) << name;
        type(sheet, name, "");
        EXPECT_FALSE(add.isEnabled()) << name;
    }
    type(sheet, "itemName", "jas");
    click(sheet, "addItemButton");
    ASSERT_TRUE(add.isEnabled());
    click(*removers(sheet).at(0));
    EXPECT_FALSE(add.isEnabled()) << "the only line with a name was removed";
}

TEST_F(SetFormTest, StoresWhatWasTypedInTheShootItWasOpenedFor) {
    const auto meant = shoot().id;
    const auto& sheet = openNewSet();
    const std::map<const char*, QString> typed{{"setNumberField", " 12b "},
                                               {"brandField", " Nike"},
                                               {"modelField", "Anna "},
                                               {"locationField", " Studio A"},
                                               {"emailField", "a@b.nl "}};
    for (const auto& [name, text] : typed)
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
    EXPECT_EQ(made.setNumber, " 12b ");
    EXPECT_EQ(made.brand, " Nike");
    EXPECT_EQ(made.model, "Anna ");
    EXPECT_EQ(made.location, " Studio A");
    EXPECT_EQ(made.email, "a@b.nl ");
    EXPECT_THAT(items(made), ElementsAre(std::pair(" jas ", " blauw")));
}

TEST_F(SetFormTest, RemovingLinesStopsAtOne) {
    const auto& sheet = openNewSet();
    for (const int line : {0, 1, 2}) {
        if (line > 0)
            click(sheet, "addItemButton");
        type(field(sheet, "itemName", line), QString::number(line));
    }
    ASSERT_THAT(removers(sheet), SizeIs(3));
    click(*removers(sheet).at(1));
    EXPECT_THAT(lines(sheet), ElementsAre(std::pair("0", ""), std::pair("2", "")));
    click(*removers(sheet).at(0));
    EXPECT_THAT(lines(sheet), ElementsAre(std::pair("2", "")));
    EXPECT_THAT(removers(sheet), IsEmpty());
    click(sheet, "addItemButton");
    EXPECT_THAT(removers(sheet), SizeIs(2));
}

TEST_F(SetFormTest, TabScrollsTheLineItComesToIntoSight) {
    const auto& sheet = openNewSet();
    for (int i = 0; i < 10; ++i)
        click(sheet, "addItemButton");
    find(sheet, "emailField").setFocus();
    const auto& scroll = find<QScrollArea>(sheet, "sheetPane");
    const QRect sight(scroll.viewport()->mapToGlobal(QPoint()), scroll.viewport()->size());
    for (int i = 0; i < 11 * 3; ++i) {
        press(Qt::Key_Tab);
        EXPECT_TRUE(sight.contains(QRect(focused().mapToGlobal(QPoint()), focused().size())))
            << i << focused().objectName().toStdString();
    }
}

TEST_F(SetFormTest, ASetOfManyItemsOpensAtItsFirst) {
    std::vector<SetItem> many;
    for (int i = 0; i < 12; ++i)
        many.push_back(SetItem::make("item " + std::to_string(i), ""));
    addSet("7", "Nike", many);
    const auto& sheet = openEditSet();
    settle();
    EXPECT_EQ(find<QScrollArea>(sheet, "sheetPane").verticalScrollBar()->value(), 0);
}

TEST_F(SetFormTest, ReturnGoesFromFieldToFieldAndAddsFromTheLastOnly) {
    const auto& sheet = openNewSet();
    click(sheet, "addItemButton");
    type(sheet, "brandField", "Nike");
    find(sheet, "setNumberField").setFocus();
    std::vector<std::string> walked;
    while (isOpen("newSetSheet") && walked.size() < 20) {
        ASSERT_THAT(shoot().sets, SizeIs(2));
        walked.push_back(focused().objectName().toStdString());
        press(Qt::Key_Return);
    }
    EXPECT_THAT(walked, ElementsAre("setNumberField", "brandField", "modelField", "locationField",
                                    "emailField", "itemName", "itemColor", "itemName", "itemColor"));
    EXPECT_THAT(shoot().sets, SizeIs(3));
}

TEST_F(SetFormTest, SaysWhatIsGoneAndKeepsWhatWasTyped) {
    for (const bool edits : {false, true}) {
        auto& sheet = edits ? openEditSet() : openNewSet();
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
    const auto& sheet = openEditSet();
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
    EXPECT_EQ(newest().id, set.id);
    EXPECT_EQ(newest().taggedCount, 41);
    EXPECT_EQ(newest().model, "Zoe");
    EXPECT_THAT(items(newest()), ElementsAre(std::pair("coated pants", "brown")));
}

} // namespace
} // namespace vantor::testing
