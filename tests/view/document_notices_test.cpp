#include "store/product_catalog.h"
#include "store/shoot_manager.h"
#include "tests/support/manual_timer.h"
#include "tests/support/memory_file_store.h"
#include "tests/support/standing_clock.h"
#include "view/document_notices.h"

#include <gmock/gmock.h>

namespace vantor::testing {
namespace {

using ::testing::ElementsAre;

class DocumentNoticesTest : public ::testing::Test {
protected:
    DocumentNoticesTest() { m_shoots.addShoot(Shoot::make("Texel", "", "", m_clock.now())); }

    [[nodiscard]] std::string told() const {
        return m_notices.current() != nullptr ? m_notices.current()->text : std::string();
    }
    // What can be done about it.
    [[nodiscard]] std::vector<std::string> actions() const {
        std::vector<std::string> texts;
        for (const auto& action : m_notices.current()->actions)
            texts.push_back(action.text);
        return texts;
    }
    void press() { m_notices.current()->actions.front().run(); }
    int import(const std::string& csv) { return m_shoots.importCSV(csv, *m_shoots.activeShootId()); }

    StandingClock m_clock;
    MemoryFileStore m_files;
    ManualTimer m_timer;
    StoreFolder m_folder{m_files, "/data", m_clock.clock(), [](const auto& work) { work(); }, m_timer};
    Document m_document{&m_folder.shoots(), &m_folder.catalog(), m_clock.clock(), &m_folder.points()};
    ShootManager m_shoots{m_document};
    ProductCatalog m_catalog{m_document};
    Notices m_notices{[] { return std::chrono::milliseconds(0); }};
    DocumentNotices m_tells{m_document, &m_folder, m_notices};
};

TEST_F(DocumentNoticesTest, TellsOfADeletionWithTheWayBackAsLongAsItIsTheNewestStep) {
    import("Set;Merk\n12;Marvis");
    m_shoots.deleteSet(m_shoots.activeShoot()->sets[0].id);
    EXPECT_EQ(told(), "Set 12 — Marvis verwijderd");
    EXPECT_THAT(actions(), ElementsAre("Ongedaan maken"));
    press();
    EXPECT_EQ(told(), "Ongedaan gemaakt: Set 12 — Marvis verwijderd");
    EXPECT_THAT(actions(), ElementsAre("Opnieuw"));
    press();
    EXPECT_TRUE(m_shoots.activeShoot()->sets.empty());
    m_catalog.addClient("Nike");
    EXPECT_EQ(told(), "");
}

TEST_F(DocumentNoticesTest, TellsWhichLinesAnImportLeftOut) {
    import("Set;Merk;Items\r\n1;Marvis\r\n\r\n2\r\n3;Nike");
    EXPECT_EQ(told(), "2 sets geïmporteerd; 1 regel overgeslagen: regel 4");
    import("Set;Merk\n1\n2\n3\n4\n5\n6\n7");
    EXPECT_EQ(told(), "Niets geïmporteerd; 7 regels overgeslagen: regel 2, 3, 4, 5, 6, …");
    m_catalog.importCSV("Naam;Kleuren\nbroek;rood\nTrui\nBROEK\n;blauw\nnaam", "");
    EXPECT_EQ(told(), "2 producten geïmporteerd; 3 regels overgeslagen: regel 4, 5, 6");
    m_document.undo();
    EXPECT_EQ(told(), "Ongedaan gemaakt: 2 producten geïmporteerd");
}

TEST_F(DocumentNoticesTest, TellsThatNothingIsSavedAndWhyAndOnceWhenItIs) {
    m_files.capacity = 0;
    m_catalog.addClient("Nike");
    EXPECT_EQ(told(), "Niet bewaard: de schijf is vol");
    EXPECT_THAT(actions(), ElementsAre("Opnieuw proberen"));
    press();
    EXPECT_EQ(told(), "Niet bewaard: de schijf is vol");
    m_files.capacity.reset();
    press();
    EXPECT_EQ(told(), "Alles is weer bewaard");
}

} // namespace
} // namespace vantor::testing
