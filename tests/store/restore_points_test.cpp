#include "formats/shoot_file.h"
#include "store/product_catalog.h"
#include "store/restore_point_file.h"
#include "store/restore_points.h"
#include "store/shoot_manager.h"
#include "store/store_folder.h"
#include "tests/support/examples.h"
#include "tests/support/manual_timer.h"
#include "tests/support/memory_file_store.h"
#include "tests/support/standing_clock.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "edit/restore_edits.h"

namespace vantor {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

const fs::path kFolder = "/home/anna/.local/share/Vantor";
const fs::path kPoints = kFolder / "versions";
const fs::path kCopies = kFolder / "backups";
const fs::path kShoots = kFolder / "shoots.json";
constexpr double kDay = 86400;

// A run of the program, up to the end of the background work.
class Running {
public:
    Running(const FileStore& files, const Clock& clock)
        : m_folder(
              files, kFolder, clock,
              [this](std::function<void()> work) { waiting.push_back(std::move(work)); }, m_timer),
          document(&m_folder.shoots(), &m_folder.catalog(), clock, &m_folder.points()) {
        document.loadOnce();
    }
    ~Running() { letGo(); }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

    void letGo() {
        for (auto& work : std::exchange(waiting, {}))
            work();
    }
    [[nodiscard]] const Shoot& shoot() const { return document.library().shoots.front(); }
    [[nodiscard]] bool isSaved() const { return !m_folder.unsaved(); }

    std::vector<std::function<void()>> waiting;

private:
    testing::ManualTimer m_timer;
    StoreFolder m_folder;

public:
    Document document;
    ShootManager shoots{document};
    ProductCatalog catalog{document};
};

class RestorePointsTest : public ::testing::Test {
protected:
    RestorePointsTest() { Running(m_files, m_clock.clock()).shoots.addShoot(testing::ibiza()); }

    void later(double seconds) { m_clock.set({m_clock.now().secondsSinceReference + seconds}); }
    [[nodiscard]] Names names(const fs::path& folder = kPoints) const {
        auto all = m_files.list(folder);
        std::ranges::sort(all);
        return all;
    }
    void putFiles(const fs::path& folder, const Names& names) {
        for (const auto& name : names)
            m_files.files[folder / name] = std::string(1000, ' ');
    }

    testing::MemoryFileStore m_files;
    testing::StandingClock m_clock{testing::kMorning};
};

TEST_F(RestorePointsTest, AreKeptBeforeWhatTakesOrBringsMuchAndBeforeTheFirstChangeOfADay) {
    const auto activate = [](Running& run) { run.shoots.activateSet(run.shoot().sets.front().id); };
    // And before what a point is kept; absent: none is.
    const std::vector<std::pair<std::function<void(Running&)>, std::optional<std::string>>> acts{
        {[](Running& run) { run.shoots.addSet(run.shoot().id, testing::noorderlicht()); }, std::nullopt},
        {activate, std::nullopt},
        {[](Running& run) { run.shoots.deleteSet(run.shoot().sets.back().id); }, std::nullopt},
        {[](Running& run) { run.shoots.importCSV("Set;Merk\n1;Marvis\n2;Nike", run.shoot().id); },
         "2 sets geïmporteerd"},
        {[](Running& run) { run.shoots.importShoot(testing::ibiza()); },
         "Shoot \"Ibiza Zomer 2026\" geopend"},
        {[](Running& run) { run.shoots.deleteShoot(run.shoot().id); },
         "Shoot \"Ibiza Zomer 2026\" verwijderd"},
        {[](Running& run) { run.catalog.importCSV("broek;rood", ""); }, "1 producten geïmporteerd"},
        {[](Running& run) {
             run.document.perform(restoreAll(run.document.library(), {{}, CatalogData()}, "gisteren"));
         },
         "Versie van gisteren teruggezet"},
        {[this, activate](Running& run) {
             later(kDay);
             activate(run);
         },
         std::nullopt},
        {[](Running& run) { run.catalog.addBrand("Marvis"); }, ""},
        {[](Running& run) { run.catalog.addBrand("Nike"); }, std::nullopt},
    };
    {
        Running first(m_files, m_clock.clock());
        EXPECT_THAT(names(), ::testing::IsEmpty()) << "there was nothing to keep before the first shoot";
        first.catalog.addBrand("Élan");
    }
    EXPECT_THAT(names(), SizeIs(1));
    Running run(m_files, m_clock.clock());
    for (const auto& [act, expected] : acts) {
        SCOPED_TRACE(expected.value_or("no point"));
        later(1);
        const auto content =
            m_files.files.at(kShoots) + "\n" + m_files.files.at(kFolder / "catalog.json") + "\n";
        const auto before = names();
        act(run);
        EXPECT_EQ(names(), before) << "it is made in the background";
        run.letGo();
        const auto after = names();
        ASSERT_EQ(after.size(), before.size() + (expected ? 1 : 0));
        if (!expected)
            continue;
        EXPECT_EQ(after.back(), compactTime(m_clock.now()) + ".jsonl");
        const auto& bytes = m_files.files.at(kPoints / after.back());
        EXPECT_EQ(readPointHead(bytes)->before, expected);
        EXPECT_EQ(bytes.substr(bytes.find('\n') + 1), content) << "as all was before";
    }
}

TEST_F(RestorePointsTest, KeepNothingThatTheNewestPointHolds) {
    Running run(m_files, m_clock.clock());
    RestorePoints points(m_files, kFolder, m_clock.clock(),
                         [](const std::function<void()>& work) { work(); });
    points.keep(run.document.library(), "het eerste");
    later(1);
    points.keep(run.document.library(), "hetzelfde");
    EXPECT_THAT(names(), ElementsAre("20260314T093000Z.jsonl"));
    // Twelve in one second, each another one.
    for (unsigned i = 0; i < 12; ++i) {
        run.shoots.addSet(run.shoot().id, testing::noorderlicht());
        points.keep(run.document.library(), std::to_string(i));
        points.keep(run.document.library(), "hetzelfde");
    }
    EXPECT_THAT(names(), SizeIs(13));
    EXPECT_EQ(readPointHead(m_files.files.at(kPoints / "20260314T093001Z-12.jsonl"))->before, "11");
    points.keep({}, "niets");
    EXPECT_THAT(names(), SizeIs(13)) << "there is nothing to keep";
}

TEST_F(RestorePointsTest, AreMadeOnlyWhereThreeTimesTheirSizeStaysFree) {
    Running run(m_files, m_clock.clock());
    run.shoots.importCSV("Set;Merk\n1;Marvis", run.shoot().id);
    run.letGo();
    const auto point = m_files.files.extract(kPoints / "20260314T093000Z.jsonl");
    const auto lines = linesOfPoint(point.mapped()).value();
    const auto size = lines.shoots.size() + lines.catalog.size();
    for (const bool fits : {false, true}) {
        run.document.undo();
        run.document.redo();
        run.document.undo();
        run.shoots.importCSV("Set;Merk\n1;Marvis", run.shoot().id);
        m_files.leave(4 * size - (fits ? 0 : 1));
        run.letGo();
        m_files.capacity.reset();
        EXPECT_THAT(names(), SizeIs(fits ? 1 : 0)) << "by what is free once it is made";
    }
}

TEST_F(RestorePointsTest, GoWhenThereAreNewerOnesEnough) {
    Names recent;
    for (unsigned i = 0; i < 52; ++i)
        recent.push_back(compactTime({testing::kMorning.secondsSinceReference - 60 * i}) + ".jsonl");
    // Those there are, and those that go.
    const std::vector<std::tuple<const char*, Names, Names>> cases{
        {"fifty of the last three days", recent, {recent[50], recent[51]}},
        {"of a day before, the last one",
         {"20260310T080000Z.jsonl", "20260310T180000Z.jsonl", "20260309T080000Z.jsonl"},
         {"20260310T080000Z.jsonl"}},
        {"of three days ago, all", {"20260311T093000Z.jsonl", "20260311T093001Z.jsonl"}, {}},
        {"of one second, the last one",
         {"20260310T080000Z.jsonl", "20260310T080000Z-2.jsonl", "20260310T080000Z-10.jsonl"},
         {"20260310T080000Z-2.jsonl", "20260310T080000Z.jsonl"}},
        {"thirty days before those",
         {"20260209T093000Z.jsonl", "20260208T093000Z.jsonl"},
         {"20260208T093000Z.jsonl"}},
        {"of a clock that was ahead", {"20990101T000000Z.jsonl", "20990101T000001Z.jsonl"}, {}},
        {"not ours", {"mine.jsonl", "20260001T000000Z.jsonl"}, {}},
    };
    for (const auto& [what, names, outdated] : cases)
        EXPECT_EQ(outdatedPoints(names, testing::kMorning), outdated) << what;
}

TEST_F(RestorePointsTest, GoOnlyForOneThatCouldBeMadeAlsoWhileTheClockIsWrong) {
    const Names old{"20200101T000000Z.jsonl", "20200101T000001Z.jsonl"};
    putFiles(kPoints, old);
    const auto keep = [&] {
        Running run(m_files, m_clock.clock());
        run.shoots.addShoot(testing::ibiza());
        run.letGo();
    };
    m_files.failsToReplace = true;
    keep();
    EXPECT_EQ(names(), old);
    m_files.failsToReplace = false;
    m_clock.set({0});
    keep();
    EXPECT_THAT(names(), ElementsAre("20010101T000000Z.jsonl", old[0], old[1])) << "not the one just made";
    m_clock.set(testing::kMorning);
    keep();
    EXPECT_THAT(names(), ElementsAre("20260314T093000Z.jsonl"));
}

TEST_F(RestorePointsTest, GoOldestFirstOnlyForASaveThatWantsRoom) {
    putFiles(kCopies, {"shoots-2026-03-01.json", "catalog-2026-03-01.json", "shoots-2026-03-03.json",
                       "mine-2026-01-01.json", "shoots-from-annas.json"});
    putFiles(kPoints,
             {"20260302T080000Z.jsonl", "20260304T080000Z.jsonl", "20260305T080000Z.jsonl", "mine.jsonl"});
    Running run(m_files, m_clock.clock());
    // What is left, and whether the save succeeds, where the room is short of so many files.
    const auto save = [&](std::size_t files) {
        m_files.leave(m_files.files.at(kShoots).size() + 500 - files * 1000);
        run.document.saveShoots();
        return std::pair(names().size() + names(kCopies).size(), run.isSaved());
    };
    m_files.files[kShoots].append(2000, ' ');
    run.document.loadShoots();
    m_files.failsToReplace = true;
    EXPECT_EQ(save(0), std::pair(9UL, false)) << "it was not for want of room";
    m_files.failsToReplace = false;
    EXPECT_EQ(save(0), std::pair(9UL, true));
    EXPECT_EQ(save(2), std::pair(7UL, true));
    EXPECT_THAT(names(kCopies),
                ElementsAre("mine-2026-01-01.json", "shoots-2026-03-03.json", "shoots-from-annas.json"));
    EXPECT_EQ(save(1), std::pair(6UL, true));
    EXPECT_THAT(names(), ElementsAre("20260304T080000Z.jsonl", "20260305T080000Z.jsonl", "mine.jsonl"));
    EXPECT_EQ(save(1), std::pair(6UL, false)) << "the newest three stay";
}

} // namespace
} // namespace vantor
