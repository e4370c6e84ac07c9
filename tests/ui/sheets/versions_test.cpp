#include "tests/ui/ui_fixture.h"

namespace vantor::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class VersionsSheetTest : public UiTest {
protected:
    VersionsSheetTest() { openMain(); }
    // What is still being read borrows the files.
    ~VersionsSheetTest() override { settleReads(); }

    // Two shoots, of which the one behind is deleted, and the version from before that.
    void deleteOneOfTwo() {
        addShoot("Zomer op Texel", "Noorderlicht");
        addSet("1", "Marvis");
        addShoot("Najaar studio");
        m_files.files.erase(m_files.files.lower_bound("/data/Vantor/versions/"),
                            m_files.files.lower_bound("/data/Vantor/versions0"));
        manager().deleteShoot(manager().shoots().back().id);
        settle();
    }

    [[nodiscard]] std::vector<std::string> shootNames() {
        std::vector<std::string> names;
        for (const auto& shoot : manager().shoots())
            names.push_back(shoot.name);
        return names;
    }
};

TEST_F(VersionsSheetTest, ShowsWhatIsInTheChosenVersion) {
    deleteOneOfTwo();
    m_files.files["/data/Vantor/shoots.json.unreadable-20200101T120000Z"] = "broken";
    const auto& sheet = openWindow("versionsSheet");
    EXPECT_EQ(focused().objectName(), "versionList");
    EXPECT_THAT(textsOf(sheet, "versionReason"),
                ElementsAre("voor: Shoot \"Zomer op Texel\" verwijderd", "niet te lezen, opzij gezet"));
    EXPECT_THAT(textsOf(sheet, "versionCounts"), ElementsAre("2 shoots, 1 set", "—"));
    EXPECT_THAT(textsOf(sheet, "versionShootName"), ElementsAre("Najaar studio", "Zomer op Texel"));
    EXPECT_THAT(textsOf(sheet, "versionShootAbout").back(), HasSubstr("1 set · "));
    EXPECT_TRUE(find(sheet, "restoreAllButton").isEnabled());
    press(Qt::Key_Down);
    settleReads();
    EXPECT_THAT(textsOf(sheet, "versionShootName"), IsEmpty());
    EXPECT_EQ(textOf(sheet, "noVersionShoots"), "Deze versie is niet te lezen.");
    EXPECT_FALSE(find(sheet, "restoreAllButton").isEnabled());
}

TEST_F(VersionsSheetTest, PutsAllBackAsOneStepListsWhatWasThereAndSaysWhereNothingWouldChange) {
    deleteOneOfTwo();
    const auto& sheet = openWindow("versionsSheet");
    click(sheet, "restoreAllButton");
    settleReads();
    EXPECT_THAT(shootNames(), ElementsAre("Najaar studio", "Zomer op Texel"));
    EXPECT_TRUE(isOpen("versionsSheet"));
    EXPECT_THAT(textsOf(sheet, "versionCounts"), ElementsAre("1 shoot, 0 sets", "2 shoots, 1 set"));
    // What was chosen is still.
    EXPECT_THAT(textsOf(sheet, "versionShootName"), ElementsAre("Najaar studio", "Zomer op Texel"));
    const auto step = m_document.newestStep();
    click(sheet, "restoreAllButton");
    EXPECT_EQ(m_document.newestStep(), step);
    ASSERT_NE(m_notices.current(), nullptr);
    EXPECT_EQ(m_notices.current()->text, "Zo is het al; er is niets veranderd");
    m_document.undo();
    EXPECT_THAT(shootNames(), ElementsAre("Najaar studio"));
}

TEST_F(VersionsSheetTest, PutsOneShootBackByButtonOrReturn) {
    deleteOneOfTwo();
    const auto& sheet = openWindow("versionsSheet");
    click(*allVisible<QAbstractButton>(sheet, "restoreShootButton").at(1));
    settleReads();
    EXPECT_THAT(shootNames(), ElementsAre("Zomer op Texel", "Najaar studio"));
    EXPECT_EQ(shoot().name, "Zomer op Texel");
    m_document.undo();
    settle();
    EXPECT_THAT(shootNames(), ElementsAre("Najaar studio"));
    find(sheet, "versionShootList").setFocus(Qt::TabFocusReason);
    press(Qt::Key_End);
    press(Qt::Key_Return);
    EXPECT_THAT(shootNames(), ElementsAre("Zomer op Texel", "Najaar studio"));
}

TEST_F(VersionsSheetTest, TakesBackACatalogueThatWasSetAsideWithoutShoots) {
    addProduct("coated pants");
    m_files.files["/data/Vantor/catalog.json.unreadable-20300101T120000Z"] =
        R"({"products":[],"clients":["Anna"],"brands":[]})";
    const auto& sheet = openWindow("versionsSheet");
    EXPECT_EQ(textsOf(sheet, "versionReason").front(), "opzij gezet");
    EXPECT_EQ(textOf(sheet, "noVersionShoots"), "Alleen de productcatalogus, zonder shoots.");
    click(sheet, "restoreAllButton");
    EXPECT_THAT(catalog().clients(), ElementsAre("Anna"));
    EXPECT_THAT(catalog().products(), IsEmpty());
}

} // namespace
} // namespace vantor::testing
