#include "tests/ui/sheets/sheet_test.h"
#include "ui/sheets/versions_sheet.h"

namespace vantor::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class VersionsSheetTest : public SheetTest {
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

    QDialog& openVersions() {
        (new ui::VersionsSheet(m_main.get(), m_services))->open();
        auto& opened = awaitSheet("versionsSheet");
        settleReads();
        return opened;
    }

    [[nodiscard]] std::vector<std::string> shootNames() {
        std::vector<std::string> names;
        for (const auto& shoot : manager().shoots())
            names.push_back(shoot.name);
        return names;
    }
};

TEST_F(VersionsSheetTest, SaysWhatItDoesAndThatThereAreNoVersions) {
    const auto& sheet = openVersions();
    EXPECT_THAT(linesOf(sheet),
                ElementsAre("Eerdere versies",
                            "Terugzetten kun je ongedaan maken; wat er nu is, blijft zelf "
                            "ook als versie bewaard.",
                            "In deze versie", "Nog geen eerdere versies.", "Sluiten / Alles terugzetten"));
    EXPECT_FALSE(find(sheet, "restoreAllButton").isEnabled());
    EXPECT_EQ(focused().objectName(), "closeButton");
}

TEST_F(VersionsSheetTest, ShowsWhatIsInTheChosenVersion) {
    deleteOneOfTwo();
    m_files.files["/data/Vantor/shoots.json.unreadable-20200101T120000Z"] = "broken";
    const auto& sheet = openVersions();
    EXPECT_EQ(focused().objectName(), "versionList");
    EXPECT_THAT(rowTexts(sheet, "versionReason"),
                ElementsAre("voor: Shoot \"Zomer op Texel\" verwijderd", "niet te lezen, opzij gezet"));
    EXPECT_THAT(rowTexts(sheet, "versionCounts"), ElementsAre("2 shoots, 1 set", "—"));
    EXPECT_THAT(rowTexts(sheet, "versionShootName"), ElementsAre("Najaar studio", "Zomer op Texel"));
    EXPECT_THAT(rowTexts(sheet, "versionShootAbout").back(), HasSubstr("1 set · "));
    EXPECT_TRUE(find(sheet, "restoreAllButton").isEnabled());
    EXPECT_THAT(tabWalk(), ElementsAre("versionList", "versionShootList", "restoreShootButton", "closeButton",
                                       "restoreAllButton"));
    press(Qt::Key_Down);
    settleReads();
    EXPECT_THAT(rowTexts(sheet, "versionShootName"), IsEmpty());
    EXPECT_EQ(textOf(sheet, "noVersionShoots"), "Deze versie is niet te lezen.");
    EXPECT_FALSE(find(sheet, "restoreAllButton").isEnabled());
    click(sheet, "closeButton");
    EXPECT_FALSE(isOpen("versionsSheet"));
}

TEST_F(VersionsSheetTest, PutsAllBackAsOneStepAndListsWhatWasThere) {
    deleteOneOfTwo();
    const auto& sheet = openVersions();
    click(sheet, "restoreAllButton");
    settleReads();
    EXPECT_THAT(shootNames(), ElementsAre("Najaar studio", "Zomer op Texel"));
    EXPECT_TRUE(isOpen("versionsSheet"));
    EXPECT_THAT(rowTexts(sheet, "versionCounts"), ElementsAre("1 shoot, 0 sets", "2 shoots, 1 set"));
    // What was chosen is still.
    EXPECT_THAT(rowTexts(sheet, "versionShootName"), ElementsAre("Najaar studio", "Zomer op Texel"));
    m_document.undo();
    EXPECT_THAT(shootNames(), ElementsAre("Najaar studio"));
}

TEST_F(VersionsSheetTest, PutsOneShootBackByButtonOrReturn) {
    deleteOneOfTwo();
    const auto& sheet = openVersions();
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

TEST_F(VersionsSheetTest, SaysSoWhereNothingWouldChange) {
    deleteOneOfTwo();
    const auto& sheet = openVersions();
    click(sheet, "restoreAllButton");
    settleReads();
    const auto step = m_document.newestStep();
    click(sheet, "restoreAllButton");
    EXPECT_EQ(m_document.newestStep(), step);
    ASSERT_NE(m_notices.current(), nullptr);
    EXPECT_EQ(m_notices.current()->text, "Zo is het al; er is niets veranderd");
}

TEST_F(VersionsSheetTest, TakesBackACatalogueThatWasSetAsideWithoutShoots) {
    addProduct("coated pants");
    m_files.files["/data/Vantor/catalog.json.unreadable-20300101T120000Z"] =
        R"({"products":[],"clients":["Anna"],"brands":[]})";
    const auto& sheet = openVersions();
    EXPECT_EQ(rowTexts(sheet, "versionReason").front(), "opzij gezet");
    EXPECT_EQ(textOf(sheet, "noVersionShoots"), "Alleen de productcatalogus, zonder shoots.");
    click(sheet, "restoreAllButton");
    EXPECT_THAT(catalog().clients(), ElementsAre("Anna"));
    EXPECT_THAT(catalog().products(), IsEmpty());
}

} // namespace
} // namespace vantor::testing
