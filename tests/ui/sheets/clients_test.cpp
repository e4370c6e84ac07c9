#include "tests/ui/ui_fixture.h"

namespace vantor::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ClientsSheetTest : public UiTest {
protected:
    ClientsSheetTest() { openMain(); }

    static std::vector<std::string> names(const QWidget& sheet) { return textsOf(sheet, "clientName"); }
    static std::vector<QAbstractButton*> removers(const QWidget& sheet) {
        return allVisible<QAbstractButton>(sheet, "deleteClientButton");
    }
};

TEST_F(ClientsSheetTest, AddsByButtonOrReturnTrimmedAndSortedEachSpellingOnce) {
    const auto& sheet = openWindow("clientsSheet");
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
    click(sheet, "closeButton");
    EXPECT_FALSE(isOpen("clientsSheet"));
}

TEST_F(ClientsSheetTest, DeletesAStoredClientAtOnceAndSaves) {
    addShoot("a", "Zara");
    for (const auto* const name : {"Anna", "Bo", "Zara"})
        catalog().addClient(name);
    const auto& sheet = openWindow("clientsSheet");
    click(*removers(sheet).at(0));
    EXPECT_THAT(catalog().clients(), ElementsAre("Bo", "Zara"));
    EXPECT_THAT(names(sheet), ElementsAre("Bo", "Zara"));
    EXPECT_THAT(m_files.files.at("/data/Vantor/catalog.json"), ::testing::Not(::testing::HasSubstr("Anna")));
    // Twice in a row before the window is redrawn.
    auto& list = find(sheet, "clientList");
    list.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&list, Qt::Key_Delete);
    QTest::keyClick(&list, Qt::Key_Delete);
    settle();
    EXPECT_THAT(catalog().clients(), IsEmpty());
    EXPECT_THAT(names(sheet), ElementsAre("Zara")) << "one that a shoot still names";
    EXPECT_THAT(removers(sheet), IsEmpty());
    EXPECT_EQ(shoot().client, "Zara");
}

} // namespace
} // namespace vantor::testing
