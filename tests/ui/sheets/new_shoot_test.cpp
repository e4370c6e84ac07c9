#include "tests/ui/sheets/sheet_test.h"

namespace vantor::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class NewShootSheetTest : public SheetTest {
protected:
    static QComboBox& picker(const QWidget& sheet) { return find<QComboBox>(sheet, "clientPicker"); }
};

TEST_F(NewShootSheetTest, SaysWhatItIsForAndStartsEmpty) {
    const auto& sheet = openNewShoot();
    EXPECT_THAT(linesOf(sheet),
                ElementsAre("Nieuwe Shoot", "[Naam (bijv. Ibiza Zomer 2026)]", "[Locatie (optioneel)]",
                            "Klant (optioneel)", "<Geen klant> / Beheer klanten", "Annuleer / Aanmaken"));
    EXPECT_EQ(textOf(sheet, "shootNameField"), "");
    EXPECT_EQ(textOf(sheet, "shootLocationField"), "");
    EXPECT_EQ(picker(sheet).currentText(), "Geen klant");
    EXPECT_FALSE(find(sheet, "createButton").isEnabled());
    type(sheet, "shootNameField", "x");
    EXPECT_THAT(tabWalk(), ElementsAre("shootNameField", "shootLocationField", "clientPicker",
                                       "manageClientsButton", "cancelButton", "createButton"));
}

TEST_F(NewShootSheetTest, MakesTheActiveShootOfWhatWasTyped) {
    openMain();
    addShoot("Oud", "Nike");
    auto& sheet = openNewShoot();
    // Names are taken as they are, of any language.
    find<QLineEdit>(sheet, "shootNameField").setText(QString::fromUtf8(" 李娜 \U0001F9E5 <b>é</b> & \"q\" "));
    type(sheet, "shootLocationField", " Strand");
    choose(picker(sheet), "Nike");
    click(sheet, "createButton");
    EXPECT_FALSE(isOpen("newShootSheet"));
    ASSERT_THAT(manager().shoots(), SizeIs(2));
    EXPECT_EQ(&manager().shoots().front(), manager().activeShoot());
    EXPECT_EQ(shoot().name, " 李娜 \U0001F9E5 <b>é</b> & \"q\" ");
    EXPECT_EQ(shoot().location, " Strand");
    EXPECT_EQ(shoot().client, "Nike");
    EXPECT_THAT(m_files.files.at("/data/Vantor/shoots.json"), ::testing::HasSubstr("Strand"));
}

TEST_F(NewShootSheetTest, NeedsANameIfOnlyOfSpaces) {
    const auto& sheet = openNewShoot();
    for (const auto* const name : {"  ", "", "  "}) {
        type(sheet, "shootNameField", name);
        EXPECT_EQ(find(sheet, "createButton").isEnabled(), *name != '\0');
    }
    click(sheet, "createButton");
    EXPECT_EQ(shoot().name, "  ");
}

TEST_F(NewShootSheetTest, OffersClientsUpperCaseFirstAndStoresNoneAgain) {
    openMain();
    addShoot("a", "nike");
    addShoot("b", "Zara");
    catalog().addClient("Zara");
    catalog().addClient("bijenkorf");
    const auto& sheet = openNewShoot();
    EXPECT_EQ(entries(picker(sheet)), QStringList({"Geen klant", "Zara", "bijenkorf", "nike"}));
    type(sheet, "shootNameField", "Texel");
    choose(picker(sheet), "nike");
    choose(picker(sheet), "Geen klant");
    click(sheet, "createButton");
    EXPECT_EQ(shoot().name, "Texel");
    EXPECT_EQ(shoot().client, "");
}

TEST_F(NewShootSheetTest, ShowsAClientThatIsAddedOverItAtOnceAndKeepsTheChoice) {
    openMain();
    addShoot("Oud", "Nike");
    const auto& sheet = openNewShoot();
    choose(picker(sheet), "Nike");
    const auto& clients = openFrom(sheet, "manageClientsButton", "clientsSheet");
    EXPECT_THAT(rowTexts(clients, "clientName"), ElementsAre("Nike"));
    type(clients, "newClientField", "Marvis");
    press(Qt::Key_Return);
    EXPECT_EQ(entries(picker(sheet)), QStringList({"Geen klant", "Marvis", "Nike"}));
    EXPECT_EQ(picker(sheet).currentText(), "Nike");
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
    EXPECT_THAT(manager().shoots(), SizeIs(1));
}

} // namespace
} // namespace vantor::testing
