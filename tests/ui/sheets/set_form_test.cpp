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

TEST_F(SetFormTest, NewSetSaysWhatItIsFor) {
    const auto& sheet = openNewSet();
    EXPECT_EQ(sheet.windowTitle(), "Nieuwe Set");
    EXPECT_THAT(linesOf(sheet),
                ElementsAre("Nieuwe Set", "Set nummer", "[]", "Merk", "[bijv. Marvis]", "Model", "[Naam]",
                            "Locatie", "[Studio]", "E-mail (optioneel)",
                            "[bijv. voor portretsessies per persoon]", "Items", "[Item] / [Kleur]",
                            "+ Item toevoegen / Uit catalogus", "Annuleer / Toevoegen"));
}

TEST_F(SetFormTest, EditSetSaysWhatItIsForAndHasNoExampleOfABrand) {
    addSet("7", "Nike", {SetItem::make("jurk", "rood"), SetItem::make("jas", "")});
    const auto& sheet = openEditSet();
    EXPECT_EQ(sheet.windowTitle(), "Set bewerken");
    EXPECT_THAT(linesOf(sheet),
                ElementsAre("Set bewerken", "Set nummer", "[]", "Merk", "[]", "Model", "[Naam]", "Locatie",
                            "[Studio]", "E-mail (optioneel)", "[bijv. voor portretsessies per persoon]",
                            "Items", "[Item] / [Kleur] / {Item verwijderen}",
                            "[Item] / [Kleur] / {Item verwijderen}", "+ Item toevoegen / Uit catalogus",
                            "Annuleer / Opslaan"));
}

TEST_F(SetFormTest, HasItsStatedWidths) {
    const auto check = [](const QWidget& sheet) {
        EXPECT_EQ(sheet.width(), 450);
        EXPECT_EQ(find(sheet, "setNumberField").width(), 60);
        EXPECT_EQ(find(sheet, "itemColor").width(), 100);
        EXPECT_NE(dynamic_cast<ui::ProminentButton*>(&find(sheet, "confirmButton")), nullptr);
        click(sheet, "cancelButton");
    };
    check(openNewSet());
    check(openEditSet());
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

TEST_F(SetFormTest, StartsInTheSetNumberWithOneBlankLine) {
    const auto& sheet = openNewSet();
    EXPECT_EQ(&focused(), &find(sheet, "setNumberField"));
    for (const auto* const name :
         {"setNumberField", "brandField", "modelField", "locationField", "emailField"})
        EXPECT_EQ(textOf(sheet, name), "") << name;
    EXPECT_THAT(lines(sheet), ElementsAre(std::pair("", "")));
    EXPECT_THAT(removers(sheet), IsEmpty());
    EXPECT_FALSE(find(sheet, "confirmButton").isEnabled());
}

TEST_F(SetFormTest, NeedsABrandOrANamedItem) {
    const auto& sheet = openNewSet();
    const auto& add = find(sheet, "confirmButton");
    for (const auto* const name : {"setNumberField", "modelField", "locationField", "emailField"}) {
        type(sheet, name, "x");
        EXPECT_FALSE(add.isEnabled()) << name;
    }
    type(field(sheet, "itemColor", 0), "rood");
    EXPECT_FALSE(add.isEnabled());
    type(field(sheet, "itemName", 0), " ");
    EXPECT_TRUE(add.isEnabled());
    type(field(sheet, "itemName", 0), "");
    EXPECT_FALSE(add.isEnabled());
    type(sheet, "brandField", " ");
    EXPECT_TRUE(add.isEnabled());
    type(sheet, "brandField", "");
    EXPECT_FALSE(add.isEnabled());
}

TEST_F(SetFormTest, ABrandAloneIsASetWithTheNextNumberAndNoItems) {
    const auto& sheet = openNewSet();
    m_clock.set({795173999});
    type(sheet, "brandField", "Nike");
    click(sheet, "confirmButton");
    EXPECT_FALSE(isOpen("newSetSheet"));
    ASSERT_THAT(shoot().sets, SizeIs(3));
    EXPECT_EQ(newest().setNumber, "3");
    EXPECT_EQ(newest().brand, "Nike");
    EXPECT_THAT(newest().items, IsEmpty());
    EXPECT_EQ(newest().timestamp.secondsSinceReference, 795173999);
    EXPECT_EQ(newest().taggedCount, 0);
}

TEST_F(SetFormTest, StoresTextsAsTypedAndOnlyLinesWithAName) {
    const auto& sheet = openNewSet();
    type(sheet, "setNumberField", " 12b ");
    type(sheet, "brandField", " Nike");
    type(sheet, "modelField", "Anna ");
    type(sheet, "locationField", " Studio A");
    type(sheet, "emailField", "a@b.nl ");
    type(field(sheet, "itemColor", 0), "rood");
    click(sheet, "addItemButton");
    type(field(sheet, "itemName", 1), " jas ");
    type(field(sheet, "itemColor", 1), " blauw");
    click(sheet, "addItemButton");
    click(sheet, "addItemButton");
    type(field(sheet, "itemName", 3), "broek");
    click(sheet, "confirmButton");

    EXPECT_EQ(newest().setNumber, " 12b ");
    EXPECT_EQ(newest().brand, " Nike");
    EXPECT_EQ(newest().model, "Anna ");
    EXPECT_EQ(newest().location, " Studio A");
    EXPECT_EQ(newest().email, "a@b.nl ");
    EXPECT_THAT(items(newest()), ElementsAre(std::pair(" jas ", " blauw"), std::pair("broek", "")));
}

TEST_F(SetFormTest, NewItemLineTakesTheFocus) {
    const auto& sheet = openNewSet();
    click(sheet, "addItemButton");
    EXPECT_EQ(&focused(), &field(sheet, "itemName", 1));
    EXPECT_THAT(lines(sheet), SizeIs(2));
    click(sheet, "addItemButton");
    EXPECT_EQ(&focused(), &field(sheet, "itemName", 2));
}

TEST_F(SetFormTest, RemovingLinesStopsAtOne) {
    const auto& sheet = openNewSet();
    click(sheet, "addItemButton");
    click(sheet, "addItemButton");
    type(field(sheet, "itemName", 0), "een");
    type(field(sheet, "itemName", 1), "twee");
    type(field(sheet, "itemName", 2), "drie");
    ASSERT_THAT(removers(sheet), SizeIs(3));
    click(*removers(sheet).at(1));
    EXPECT_THAT(lines(sheet), ElementsAre(std::pair("een", ""), std::pair("drie", "")));
    ASSERT_THAT(removers(sheet), SizeIs(2));
    click(*removers(sheet).at(0));
    EXPECT_THAT(lines(sheet), ElementsAre(std::pair("drie", "")));
    EXPECT_THAT(removers(sheet), IsEmpty());
    click(sheet, "addItemButton");
    EXPECT_THAT(removers(sheet), SizeIs(2));
}

TEST_F(SetFormTest, RemovingTheOnlyNamedLineTakesTheButtonBack) {
    const auto& sheet = openNewSet();
    type(field(sheet, "itemName", 0), "jas");
    click(sheet, "addItemButton");
    ASSERT_TRUE(find(sheet, "confirmButton").isEnabled());
    click(*removers(sheet).at(0));
    EXPECT_FALSE(find(sheet, "confirmButton").isEnabled());
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
    for (auto* const field : std::vector<QWidget*>{
             &find(sheet, "setNumberField"), &find(sheet, "brandField"), &find(sheet, "modelField"),
             &find(sheet, "locationField"), &find(sheet, "emailField"), &field(sheet, "itemName", 0),
             &field(sheet, "itemColor", 0), &field(sheet, "itemName", 1), &field(sheet, "itemColor", 1)}) {
        if (field->objectName() == QLatin1String("setNumberField"))
            field->setFocus();
        ASSERT_EQ(&focused(), field);
        ASSERT_THAT(shoot().sets, SizeIs(2));
        press(Qt::Key_Return);
    }
    EXPECT_FALSE(isOpen("newSetSheet"));
    EXPECT_THAT(shoot().sets, SizeIs(3));
}

TEST_F(SetFormTest, ReturnInTheLastFieldAddsNothingWhileThatIsNotPossible) {
    const auto& sheet = openNewSet();
    find(sheet, "itemColor").setFocus();
    press(Qt::Key_Return);
    EXPECT_TRUE(isOpen("newSetSheet"));
    EXPECT_THAT(shoot().sets, SizeIs(2));
}

TEST_F(SetFormTest, AddsToTheShootItWasOpenedFor) {
    const auto meant = shoot().id;
    const auto& sheet = openNewSet();
    type(sheet, "brandField", "Nike");
    addShoot("Texel");
    click(sheet, "confirmButton");
    EXPECT_FALSE(isOpen("newSetSheet"));
    EXPECT_THAT(shoot().sets, IsEmpty());
    EXPECT_EQ(manager().shoot(meant)->sets.front().setNumber, "3");
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

TEST_F(SetFormTest, CancellingAddsNothingAndTheNextStartsAfresh) {
    const auto& sheet = openNewSet();
    type(sheet, "brandField", "Nike");
    click(sheet, "addItemButton");
    click(sheet, "cancelButton");
    EXPECT_THAT(shoot().sets, SizeIs(2));
    const auto& again = openNewSet();
    EXPECT_EQ(textOf(again, "brandField"), "");
    EXPECT_THAT(lines(again), SizeIs(1));
}

TEST_F(SetFormTest, EditingShowsTheSetAndKeepsWhatIsNotOnTheForm) {
    auto set = noorderlicht();
    set.email = "anna@example.nl";
    set.taggedCount = 41;
    manager().addSet(shoot().id, set);
    settle();
    m_clock.set({795179999});
    const auto& sheet = openEditSet();
    EXPECT_EQ(&focused(), &find(sheet, "setNumberField"));
    EXPECT_EQ(textOf(sheet, "setNumberField"), "12");
    EXPECT_EQ(textOf(sheet, "brandField"), "Noorderlicht");
    EXPECT_EQ(textOf(sheet, "modelField"), "Anna");
    EXPECT_EQ(textOf(sheet, "locationField"), "Studio A");
    EXPECT_EQ(textOf(sheet, "emailField"), "anna@example.nl");
    EXPECT_THAT(lines(sheet),
                ElementsAre(std::pair("coated pants", "brown"), std::pair("sweater", "blue navy")));

    type(sheet, "modelField", "Zoe");
    type(field(sheet, "itemName", 1), "");
    click(sheet, "confirmButton");
    EXPECT_FALSE(isOpen("editSetSheet"));
    EXPECT_EQ(newest().id, set.id);
    EXPECT_EQ(newest().timestamp.secondsSinceReference, set.timestamp.secondsSinceReference);
    EXPECT_EQ(newest().taggedCount, 41);
    EXPECT_EQ(newest().model, "Zoe");
    EXPECT_EQ(newest().email, "anna@example.nl");
    EXPECT_THAT(items(newest()), ElementsAre(std::pair("coated pants", "brown")));
    EXPECT_NE(newest().items.front().id, set.items.front().id);
}

TEST_F(SetFormTest, EditingMayEmptyEverything) {
    addSet("7", "Nike", {SetItem::make("jas", "rood")});
    const auto& sheet = openEditSet();
    type(sheet, "setNumberField", "");
    type(sheet, "brandField", "");
    type(field(sheet, "itemName", 0), "");
    ASSERT_TRUE(find(sheet, "confirmButton").isEnabled());
    click(sheet, "confirmButton");
    EXPECT_EQ(newest().setNumber, "");
    EXPECT_EQ(newest().brand, "");
    EXPECT_THAT(newest().items, IsEmpty());
}

TEST_F(SetFormTest, EditingASetWithoutItemsShowsABlankLine) {
    const auto& sheet = openEditSet();
    EXPECT_THAT(lines(sheet), ElementsAre(std::pair("", "")));
    EXPECT_THAT(removers(sheet), IsEmpty());
}

TEST_F(SetFormTest, CancellingAnEditChangesNothing) {
    const auto& sheet = openEditSet();
    type(sheet, "brandField", "Nike");
    press(Qt::Key_Escape);
    EXPECT_FALSE(isOpen("editSetSheet"));
    EXPECT_EQ(newest().brand, "Marvis");
    EXPECT_EQ(textOf(openEditSet(), "brandField"), "Marvis");
}

} // namespace
} // namespace vantor::testing
