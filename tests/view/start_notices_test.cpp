#include "tests/support/manual_timer.h"
#include "tests/support/memory_file_store.h"
#include "tests/support/recording_url_opener.h"
#include "tests/support/standing_clock.h"
#include "view/start_notices.h"

#include <gmock/gmock.h>

#include <memory>
#include <utility>

namespace vantor::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;
using ::testing::UnorderedElementsAre;

constexpr const char* kShoots = "/data/shoots.json";
constexpr const char* kCatalog = "/data/catalog.json";

std::vector<std::string> shootNames(const Document& document) {
    std::vector<std::string> names;
    for (const auto& shoot : document.library().shoots)
        names.push_back(shoot.name);
    return names;
}

class StartNoticesTest : public ::testing::Test {
protected:
    StartNoticesTest() {
        start();
        auto change = changeNamed("made");
        change.shoots = insertion(0, Shoot::make("Zomer", "", "", m_clock.now()));
        change.clients = insertion<std::string>(0, "Noorderlicht");
        m_document->perform(std::move(change));
        // What there is, is kept before the next change of a later day.
        m_clock.set({m_clock.now().secondsSinceReference + 90000});
        addClient("Wolkenveld");
    }

    // The program begins anew, on the files that there are.
    void start() {
        m_notices = std::make_unique<Notices>([] { return std::chrono::milliseconds(0); });
        m_document.reset();
        m_folder = std::make_unique<StoreFolder>(
            m_files, "/data", m_clock.clock(), [](const auto& work) { work(); }, m_timer);
        m_document = std::make_unique<Document>(&m_folder->shoots(), &m_folder->catalog(), m_clock.clock(),
                                                &m_folder->points());
        m_document->loadOnce();
        tellHowItLoaded(*m_document, *m_folder, *m_notices, m_urls, [this](Store store, const auto& onFound) {
            onFound(newestGoodVersion(m_files, "/data", store));
        });
    }

    void addClient(const char* name) {
        auto change = changeNamed(name);
        change.clients = insertion<std::string>(0, name);
        m_document->perform(std::move(change));
    }

    void press(const char* action) {
        ASSERT_NE(m_notices->current(), nullptr);
        const auto actions = m_notices->current()->actions;
        const auto found = std::ranges::find(actions, action, &NoticeAction::text);
        ASSERT_NE(found, actions.end()) << action;
        found->run();
    }

    [[nodiscard]] std::string told() const {
        return m_notices->current() != nullptr ? m_notices->current()->text : "";
    }
    [[nodiscard]] std::vector<std::string> offered() const {
        std::vector<std::string> texts;
        for (const auto& action : m_notices->current()->actions)
            texts.push_back(action.text);
        return texts;
    }
    // The files that were set aside.
    [[nodiscard]] std::vector<std::string> setAside() const {
        std::vector<std::string> contents;
        for (const auto& [path, bytes] : m_files.files) {
            if (path.string().find(".unreadable-") != std::string::npos)
                contents.push_back(bytes);
        }
        return contents;
    }

    MemoryFileStore m_files;
    StandingClock m_clock{Timestamp::parseIso8601("2026-11-20T12:00:00Z").value()};
    ManualTimer m_timer;
    RecordingUrlOpener m_urls;
    std::unique_ptr<Notices> m_notices;
    std::unique_ptr<StoreFolder> m_folder;
    std::unique_ptr<Document> m_document;
};

TEST_F(StartNoticesTest, SayOnceWhichFilesSomethingElseChangedAndNothingOfOthersOrMissingOnes) {
    start();
    EXPECT_EQ(told(), "");
    EXPECT_THAT(shootNames(*m_document), ElementsAre("Zomer"));
    const auto before = m_files.files;
    m_files.files.clear();
    start();
    EXPECT_EQ(told(), "");
    using Case = std::pair<std::vector<const char*>, const char*>;
    for (const auto& [changed, text] :
         {Case{{kShoots}, "shoots.json is buiten Vantor Prep om veranderd"},
          Case{{kCatalog}, "catalog.json is buiten Vantor Prep om veranderd"},
          Case{{kShoots, kCatalog}, "shoots.json en catalog.json zijn buiten Vantor Prep om veranderd"}}) {
        m_files.files = before;
        for (const auto* const path : changed)
            m_files.files[path] += '\n';
        start();
        EXPECT_EQ(told(), text);
        EXPECT_EQ(m_notices->current()->kind, Notice::Kind::Warning) << text;
        EXPECT_THAT(offered(), IsEmpty()) << text;
    }
}

TEST_F(StartNoticesTest, NameTheNewestGoodVersionAndTouchNothing) {
    m_files.files[kShoots] = "broken";
    // Newer ones, of which one says nothing and one holds nothing.
    m_files.files["/data/versions/20261122T120000Z.jsonl"] = "broken too";
    m_files.files["/data/backups/shoots-2026-11-23.json"] = "[]";
    const auto before = m_files.files;
    start();
    EXPECT_EQ(m_notices->current()->kind, Notice::Kind::Error);
    EXPECT_THAT(told(), StartsWith("Shoots niet te lezen, bestand bewaard. Goede versie: vandaag "));
    EXPECT_THAT(told(), ::testing::EndsWith(", 1 shoot, 0 sets."));
    EXPECT_THAT(offered(), ElementsAre("Terugzetten", "Leeg beginnen", "Map openen"));
    press("Map openen");
    EXPECT_THAT(m_urls.addresses, ElementsAre("file:///data"));
    EXPECT_EQ(m_files.files, before);
}

TEST_F(StartNoticesTest, PutTheVersionBackAsOneStepWithWhatWasMadeSince) {
    m_files.files[kShoots] = "broken";
    start();
    auto change = changeNamed("new");
    change.shoots = insertion(0, Shoot::make("Meanwhile", "", "", m_clock.now()));
    m_document->perform(std::move(change));
    press("Terugzetten");
    EXPECT_EQ(told(), "");
    EXPECT_THAT(shootNames(*m_document), ElementsAre("Meanwhile", "Zomer"));
    // The catalogue was read well, and is newer than the version.
    EXPECT_THAT(m_document->library().catalog.clients, UnorderedElementsAre("Wolkenveld", "Noorderlicht"));
    EXPECT_THAT(setAside(), ElementsAre("broken"));
    EXPECT_THAT(m_document->undoName(), StartsWith("Versie van vandaag "));
    m_document->undo();
    EXPECT_THAT(shootNames(*m_document), ElementsAre("Meanwhile"));
}

TEST_F(StartNoticesTest, TellOfEachStoreByItself) {
    m_files.files[kShoots] = "broken";
    m_files.files[kCatalog] = "broken as well";
    start();
    EXPECT_THAT(told(), StartsWith("Shoots"));
    press("Terugzetten");
    EXPECT_THAT(shootNames(*m_document), ElementsAre("Zomer"));
    EXPECT_THAT(m_document->library().catalog.clients, IsEmpty());
    EXPECT_THAT(told(), StartsWith("Catalogus niet te lezen, bestand bewaard. Goede"));
    EXPECT_THAT(told(), ::testing::EndsWith(", producten: 0, klanten: 1."));
    press("Terugzetten");
    EXPECT_THAT(m_document->library().catalog.clients, ElementsAre("Noorderlicht"));
    EXPECT_THAT(setAside(), UnorderedElementsAre("broken", "broken as well"));
}

TEST_F(StartNoticesTest, OfferNoVersionWhereThereIsNoneAndLeaveTheFileToTheFirstSaveOfWhoBeginsEmpty) {
    m_files.files = {{kShoots, "broken"}};
    start();
    EXPECT_EQ(told(), "Shoots niet te lezen, bestand bewaard. Er is geen eerdere versie.");
    EXPECT_THAT(offered(), ElementsAre("Leeg beginnen", "Map openen"));
    press("Leeg beginnen");
    EXPECT_EQ(told(), "");
    EXPECT_EQ(m_files.files.at(kShoots), "broken");
    EXPECT_THAT(setAside(), IsEmpty());
    m_document->saveShoots();
    EXPECT_THAT(setAside(), ElementsAre("broken"));
}

} // namespace
} // namespace vantor::testing
