#include "tests/ui/sheets/sheet_test.h"

namespace vantor::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class NewShootSheetTest : public SheetTest {};

TEST_F(NewShootSheetTest, SaysWhatItIsFor) {
    const auto& sheet = openNewShoot();
    EXPECT_EQ(sheet.windowTitle(), "Nieuwe Shoot");
    EXPECT_THAT(linesOf(sheet),
                ElementsAre("Nieuwe Shoot", "[Naam (bijv. Ibiza Zomer 2026)]", "[Locatie (optioneel)]",
                            "Klant (optioneel)", "<Geen klant> / Beheer klanten", "Annuleer / Aanmaken"));
    EXPECT_EQ(sheet.width(), 400);
    EXPECT_NE(dynamic_cast<ui::ProminentButton*>(&find(sheet, "createButton")), nullptr);
}

TEST_F(NewShootSheetTest, TabFollowsTheForm) {
    const auto& sheet = openNewShoot();
    type(sheet, "shootNameField", "x");
    EXPECT_THAT(tabWalk(), ElementsAre("shootNameField", "shootLocationField", "clientPicker",
                                       "manageClientsButton", "cancelButton", "createButton"));
}

TEST_F(NewShootSheetTest, StartsInTheNameWithNothingTypedAndNoClient) {
    const auto& sheet = openNewShoot();
    EXPECT_EQ(&focused(), &find(sheet, "shootNameField"));
    EXPECT_EQ(textOf(sheet, "shootNameField"), "");
    EXPECT_EQ(textOf(sheet, "shootLocationField"), "");
    EXPECT_EQ(find<QComboBox>(sheet, "clientPicker").currentText(), "Geen klant");
    EXPECT_FALSE(find(sheet, "createButton").isEnabled());
}

TEST_F(NewShootSheetTest, ForgetsWhatWasTypedBefore) {
    openMain();
    addShoot("Oud", "Nike");
    auto& first = openNewShoot();
    type(first, "shootNameField", "Texel");
    type(first, "shootLocationField", "Strand");
    choose(find<QComboBox>(first, "clientPicker"), "Nike");
    click(first, "cancelButton");
    EXPECT_FALSE(isOpen("newShootSheet"));
    EXPECT_THAT(manager().shoots(), SizeIs(1));

    const auto& second = openNewShoot();
    EXPECT_EQ(textOf(second, "shootNameField"), "");
    EXPECT_EQ(textOf(second, "shootLocationField"), "");
    EXPECT_EQ(find<QComboBox>(second, "clientPicker").currentText(), "Geen klant");
}

TEST_F(NewShootSheetTest, MakesTheActiveShootInFrontOfTheOthers) {
    openMain();
    addShoot("Oud", "Nike");
    auto& sheet = openNewShoot();
    m_clock.set({795173500});
    type(sheet, "shootNameField", " Texel ");
    type(sheet, "shootLocationField", " Strand");
    choose(find<QComboBox>(sheet, "clientPicker"), "Nike");
    click(sheet, "createButton");

    EXPECT_FALSE(isOpen("newShootSheet"));
    ASSERT_THAT(manager().shoots(), SizeIs(2));
    const auto& made = manager().shoots().front();
    EXPECT_EQ(&made, manager().activeShoot());
    EXPECT_EQ(made.name, " Texel ");
    EXPECT_EQ(made.location, " Strand");
    EXPECT_EQ(made.client, "Nike");
    EXPECT_EQ(made.date.secondsSinceReference, 795173500);
    EXPECT_THAT(made.sets, IsEmpty());
    EXPECT_THAT(made.activationLog, IsEmpty());
    EXPECT_FALSE(made.watchFolderPath.has_value());
    EXPECT_THAT(m_files.files.at("/data/Vantor/shoots.json"), ::testing::HasSubstr("Texel"));
}

TEST_F(NewShootSheetTest, TakesANameOfSpacesAsItStands) {
    const auto& sheet = openNewShoot();
    type(sheet, "shootNameField", "  ");
    ASSERT_TRUE(find(sheet, "createButton").isEnabled());
    type(sheet, "shootNameField", "");
    EXPECT_FALSE(find(sheet, "createButton").isEnabled());
    type(sheet, "shootNameField", "  ");
    click(sheet, "createButton");
    EXPECT_EQ(shoot().name, "  ");
    EXPECT_EQ(shoot().client, "");
}

TEST_F(NewShootSheetTest, OffersEachClientOnceUpperCaseFirst) {
    openMain();
    addShoot("a", "nike");
    addShoot("b", "Zara");
    addShoot("c", "Zara");
    addShoot("d", "");
    addShoot("e", "Adidas");
    catalog().addClient("Marvis");
    catalog().addClient("Adidas");
    catalog().addClient("bijenkorf");
    const auto& sheet = openNewShoot();
    EXPECT_EQ(entries(find<QComboBox>(sheet, "clientPicker")),
              QStringList({"Geen klant", "Adidas", "Marvis", "Zara", "bijenkorf", "nike"}));
}

TEST_F(NewShootSheetTest, GoingBackToNoClientStoresNone) {
    openMain();
    addShoot("Oud", "Nike");
    const auto& sheet = openNewShoot();
    type(sheet, "shootNameField", "Texel");
    choose(find<QComboBox>(sheet, "clientPicker"), "Nike");
    choose(find<QComboBox>(sheet, "clientPicker"), "Geen klant");
    click(sheet, "createButton");
    EXPECT_EQ(shoot().name, "Texel");
    EXPECT_EQ(shoot().client, "");
}

TEST_F(NewShootSheetTest, ShowsAClientThatIsAddedOverItAtOnceAndKeepsTheChoice) {
    openMain();
    addShoot("Oud", "Nike");
    const auto& sheet = openNewShoot();
    choose(find<QComboBox>(sheet, "clientPicker"), "Nike");
    const auto& clients = openFrom(sheet, "manageClientsButton", "clientsSheet");
    EXPECT_THAT(rowTexts(clients, "clientName"), ElementsAre("Nike"));
    type(clients, "newClientField", "Marvis");
    press(Qt::Key_Return);
    EXPECT_EQ(entries(find<QComboBox>(sheet, "clientPicker")), QStringList({"Geen klant", "Marvis", "Nike"}));
    EXPECT_EQ(find<QComboBox>(sheet, "clientPicker").currentText(), "Nike");
    click(clients, "closeButton");
    EXPECT_TRUE(isOpen("newShootSheet"));
}

TEST_F(NewShootSheetTest, ReturnInTheLastFieldMakesTheShootOnceItHasAName) {
    const auto& sheet = openNewShoot();
    type(sheet, "shootLocationField", "Strand");
    press(Qt::Key_Return);
    EXPECT_TRUE(isOpen("newShootSheet"));
    EXPECT_THAT(manager().shoots(), IsEmpty());
    type(sheet, "shootNameField", "Texel");
    find(sheet, "shootLocationField").setFocus();
    press(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_FALSE(isOpen("newShootSheet"));
    ASSERT_THAT(manager().shoots(), SizeIs(1));
    EXPECT_EQ(shoot().location, "Strand");
}

TEST_F(NewShootSheetTest, TakesTextsOfAnyLanguageToTheByte) {
    const auto& sheet = openNewShoot();
    find<QLineEdit>(sheet, "shootNameField").setText(QString::fromUtf8("李娜 \U0001F9E5 <b>é</b> & \"q\""));
    click(sheet, "createButton");
    EXPECT_EQ(shoot().name, "李娜 \U0001F9E5 <b>é</b> & \"q\"");
}

} // namespace
} // namespace vantor::testing
