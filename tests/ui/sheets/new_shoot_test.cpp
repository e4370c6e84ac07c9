#include "tests/ui/ui_fixture.h"

namespace vantor::testing {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

class NewShootSheetTest : public UiTest {
protected:
    static QComboBox& picker(const QWidget& sheet) { return find<QComboBox>(sheet, "clientPicker"); }
};

TEST_F(NewShootSheetTest, MakesTheActiveShootOfWhatWasTyped) {
    openMain();
    addShoot("Oud", "Nike");
    const auto& sheet = openWindow("newShootSheet");
    // Names are taken as they are, of any language.
    const auto* const name = " 李娜 \U0001F9E5 <b>é</b> & \"q\" ";
    find<QLineEdit>(sheet, "shootNameField").setText(name);
    type(sheet, "shootLocationField", " Strand");
    choose(picker(sheet), "Nike");
    click(sheet, "createButton");
    EXPECT_FALSE(isOpen("newShootSheet"));
    ASSERT_THAT(manager().shoots(), SizeIs(2));
    EXPECT_EQ(&manager().shoots().front(), manager().activeShoot());
    EXPECT_EQ(shoot().name, name);
    EXPECT_EQ(shoot().location, " Strand");
    EXPECT_EQ(shoot().client, "Nike");
    EXPECT_THAT(m_files.files.at("/data/Vantor/shoots.json"), ::testing::HasSubstr("Strand"));
}

TEST_F(NewShootSheetTest, NeedsANameIfOnlyOfSpacesAlsoByReturn) {
    const auto& sheet = openWindow("newShootSheet");
    for (const auto* const name : {"  ", "", "  "}) {
        type(sheet, "shootNameField", name);
        EXPECT_EQ(find(sheet, "createButton").isEnabled(), *name != '\0');
    }
    type(sheet, "shootNameField", "");
    type(sheet, "shootLocationField", "Strand");
    press(Qt::Key_Return);
    EXPECT_TRUE(isOpen("newShootSheet"));
    EXPECT_THAT(manager().shoots(), IsEmpty());
    type(sheet, "shootNameField", "  ");
    find(sheet, "shootLocationField").setFocus();
    press(Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_FALSE(isOpen("newShootSheet"));
    EXPECT_EQ(shoot().name, "  ");
}

TEST_F(NewShootSheetTest, OffersClientsUpperCaseFirstAndThoseAddedOverItAtOnce) {
    openMain();
    addShoot("a", "nike");
    addShoot("b", "Zara");
    catalog().addClient("Zara");
    const auto& sheet = openWindow("newShootSheet");
    EXPECT_EQ(entries(picker(sheet)), QStringList({"Geen klant", "Zara", "nike"}));
    choose(picker(sheet), "nike");
    click(sheet, "manageClientsButton");
    const auto& clients = awaitSheet("clientsSheet");
    type(clients, "newClientField", "bijenkorf");
    press(Qt::Key_Return);
    EXPECT_EQ(entries(picker(sheet)), QStringList({"Geen klant", "Zara", "bijenkorf", "nike"}));
    EXPECT_EQ(picker(sheet).currentText(), "nike") << "the choice is kept";
    click(clients, "closeButton");
    type(sheet, "shootNameField", "Texel");
    choose(picker(sheet), "Geen klant");
    click(sheet, "createButton");
    EXPECT_EQ(shoot().name, "Texel");
    EXPECT_EQ(shoot().client, "");
}

} // namespace
} // namespace vantor::testing
