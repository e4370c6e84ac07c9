#include "tests/ui/sheets/sheet_test.h"

namespace vantor::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

class ClientsSheetTest : public SheetTest {
protected:
    ClientsSheetTest() { openMain(); }

    static std::vector<std::string> names(const QWidget& sheet) { return rowTexts(sheet, "clientName"); }
    static std::vector<QAbstractButton*> removers(const QWidget& sheet) {
        return allVisible<QAbstractButton>(sheet, "deleteClientButton");
    }
};

TEST_F(ClientsSheetTest, SaysWhatItIsForAndThatThereAreNone) {
    const auto& sheet = openClients();
    EXPECT_EQ(sheet.windowTitle(), "Klanten");
    EXPECT_THAT(linesOf(sheet),
                ElementsAre("Klanten",
                            "Eenmaal aangemaakt kies je een klant bij een nieuwe shoot en in de "
                            "productcatalogus, in plaats van steeds opnieuw te typen.",
                            "[Nieuwe klant...] / + Toevoegen", "Nog geen klanten. Voeg er hierboven een toe.",
                            "Sluiten"));
    EXPECT_EQ(&focused(), &find(sheet, "newClientField"));
}

TEST_F(ClientsSheetTest, TabFollowsTheFormWithTheCurrentRowsButton) {
    catalog().addClient("Anna");
    catalog().addClient("Bo");
    const auto& sheet = openClients();
    type(sheet, "newClientField", "x");
    EXPECT_THAT(tabWalk(), ElementsAre("newClientField", "addClientButton", "clientList",
                                       "deleteClientButton", "closeButton"));
}

TEST_F(ClientsSheetTest, AddsByButtonOrReturnTrimmedAndSorted) {
    const auto& sheet = openClients();
    const auto& add = find(sheet, "addClientButton");
    EXPECT_FALSE(add.isEnabled());
    type(sheet, "newClientField", "  ");
    EXPECT_FALSE(add.isEnabled());
    press(Qt::Key_Return);
    EXPECT_THAT(catalog().clients(), IsEmpty());
    type(sheet, "newClientField", " Nike ");
    EXPECT_TRUE(add.isEnabled());
    click(sheet, "addClientButton");
    EXPECT_EQ(textOf(sheet, "newClientField"), "");
    EXPECT_EQ(&focused(), &find(sheet, "newClientField"));
    EXPECT_FALSE(add.isEnabled());
    type(sheet, "newClientField", "adidas");
    press(Qt::Key_Return);
    EXPECT_THAT(catalog().clients(), ElementsAre("adidas", "Nike"));
    EXPECT_THAT(names(sheet), ElementsAre("adidas", "Nike"));
    EXPECT_TRUE(isOpen("clientsSheet"));
}

TEST_F(ClientsSheetTest, AddingANameInAnotherCaseChangesNothing) {
    catalog().addClient("anna");
    const auto& sheet = openClients();
    type(sheet, "newClientField", "Anna");
    press(Qt::Key_Return);
    EXPECT_THAT(catalog().clients(), ElementsAre("anna"));
    EXPECT_THAT(names(sheet), ElementsAre("anna"));
    EXPECT_EQ(textOf(sheet, "newClientField"), "");
}

TEST_F(ClientsSheetTest, ListsWhatOnlyAShootNamesAndEachSpellingOnce) {
    addShoot("a", "Zara");
    addShoot("b", "NIKE");
    addShoot("c", "");
    addShoot("d", "Marvis");
    catalog().addClient("nike");
    catalog().addClient("Marvis");
    const auto& sheet = openClients();
    EXPECT_THAT(names(sheet), UnorderedElementsAre("Marvis", "NIKE", "nike", "Zara"));
    EXPECT_EQ(names(sheet).front(), "Marvis");
    EXPECT_EQ(names(sheet).back(), "Zara");
    EXPECT_EQ(catalog().clients(), (std::vector<std::string>{"Marvis", "nike"}));
}

TEST_F(ClientsSheetTest, DeletesAStoredClientAtOnceAndSaves) {
    catalog().addClient("Anna");
    catalog().addClient("Bo");
    const auto& sheet = openClients();
    EXPECT_EQ(removers(sheet).at(0)->toolTip(),
              "Verwijderen uit de lijst (shoots/producten met deze klant blijven bestaan)");
    click(*removers(sheet).at(0));
    EXPECT_THAT(catalog().clients(), ElementsAre("Bo"));
    EXPECT_THAT(names(sheet), ElementsAre("Bo"));
    EXPECT_THAT(m_files.files.at("/data/Vantor/catalog.json"), ::testing::Not(::testing::HasSubstr("Anna")));
    click(*removers(sheet).at(0));
    EXPECT_THAT(linesOf(sheet), ::testing::Contains("Nog geen klanten. Voeg er hierboven een toe."));
}

TEST_F(ClientsSheetTest, AClientThatAShootStillNamesStaysListedWithoutItsButton) {
    addShoot("a", "Zara");
    catalog().addClient("Zara");
    const auto& sheet = openClients();
    ASSERT_EQ(removers(sheet).size(), 1U);
    click(*removers(sheet).at(0));
    EXPECT_THAT(catalog().clients(), IsEmpty());
    EXPECT_THAT(names(sheet), ElementsAre("Zara"));
    EXPECT_THAT(removers(sheet), IsEmpty());
    EXPECT_EQ(shoot().client, "Zara");
}

TEST_F(ClientsSheetTest, DeletingTwiceInARowDeletesTwoInTheirOrder) {
    for (const auto* const name : {"a", "b", "c"})
        catalog().addClient(name);
    const auto& sheet = openClients();
    auto& list = find(sheet, "clientList");
    list.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&list, Qt::Key_Delete);
    QTest::keyClick(&list, Qt::Key_Delete);
    settle();
    EXPECT_THAT(catalog().clients(), ElementsAre("c"));
}

TEST_F(ClientsSheetTest, ClosesWithItsButtonAndForgetsWhatWasTyped) {
    const auto& sheet = openClients();
    type(sheet, "newClientField", "half");
    click(sheet, "closeButton");
    EXPECT_FALSE(isOpen("clientsSheet"));
    EXPECT_THAT(catalog().clients(), IsEmpty());
    EXPECT_EQ(textOf(openClients(), "newClientField"), "");
}

} // namespace
} // namespace vantor::testing
