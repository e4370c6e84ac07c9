#include "tests/ui/sheets/sheet_test.h"

namespace vantor::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ClientsSheetTest : public SheetTest {
protected:
    ClientsSheetTest() { openMain(); }

    static std::vector<std::string> names(const QWidget& sheet) { return rowTexts(sheet, "clientName"); }
    static std::vector<QAbstractButton*> removers(const QWidget& sheet) {
        return allVisible<QAbstractButton>(sheet, "deleteClientButton");
    }
};

TEST_F(ClientsSheetTest, SaysWhatItIsForAndThatThereAreNone) {
    EXPECT_THAT(linesOf(openClients()),
                ElementsAre("Klanten",
                            "Eenmaal aangemaakt kies je een klant bij een nieuwe shoot en in de "
                            "productcatalogus, in plaats van steeds opnieuw te typen.",
                            "[Nieuwe klant...] / + Toevoegen", "Nog geen klanten. Voeg er hierboven een toe.",
                            "Sluiten"));
}

TEST_F(ClientsSheetTest, AddsByButtonOrReturnTrimmedAndSortedEachSpellingOnce) {
    const auto& sheet = openClients();
    const auto& add = find(sheet, "addClientButton");
    for (const auto* const blank : {"", "  "}) {
        type(sheet, "newClientField", blank);
        EXPECT_FALSE(add.isEnabled());
        press(Qt::Key_Return);
        EXPECT_THAT(catalog().clients(), IsEmpty());
    }
    type(sheet, "newClientField", " Nike ");
    EXPECT_TRUE(add.isEnabled());
    click(sheet, "addClientButton");
    EXPECT_EQ(textOf(sheet, "newClientField"), "");
    EXPECT_EQ(&focused(), &find(sheet, "newClientField"));
    for (const auto* const name : {"adidas", "Adidas"}) {
        type(sheet, "newClientField", name);
        press(Qt::Key_Return);
        EXPECT_THAT(catalog().clients(), ElementsAre("adidas", "Nike"));
        EXPECT_THAT(names(sheet), ElementsAre("adidas", "Nike"));
        EXPECT_EQ(textOf(sheet, "newClientField"), "");
    }
    type(sheet, "newClientField", "x");
    EXPECT_THAT(tabWalk(), ElementsAre("newClientField", "addClientButton", "clientList",
                                       "deleteClientButton", "closeButton"));
    click(sheet, "closeButton");
    EXPECT_FALSE(isOpen("clientsSheet"));
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
    auto& list = find(openClients(), "clientList");
    list.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&list, Qt::Key_Delete);
    QTest::keyClick(&list, Qt::Key_Delete);
    settle();
    EXPECT_THAT(catalog().clients(), ElementsAre("c"));
}

} // namespace
} // namespace vantor::testing
