#include "store/restore_point_file.h"
#include "store/versions.h"
#include "tests/store/store_fixture.h"
#include "tests/support/examples.h"
#include "tests/support/memory_file_store.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <string>
#include <vector>

namespace vantor {
namespace {

const std::filesystem::path kFolder = "/home/anna/.local/share/Vantor";

const auto kShoots = testing::jsonOf(std::vector{testing::ibiza()});
const auto kCatalog = testing::jsonOf(testing::storedCatalog());

// Each as it is listed and read: its moment, before what it was, shoots and sets where they can be told, the stores that
// it gives back.
std::vector<std::string> foundIn(const FileStore& files) {
    std::vector<std::string> all;
    for (const auto& version : versionsIn(files, kFolder)) {
        auto& found = all.emplace_back(version.at.iso8601() + "|" + version.before + "|");
        if (version.counts)
            found += std::to_string(version.counts->shoots) + "/" + std::to_string(version.counts->sets);
        const auto content = contentOf(files, version);
        if (content && content->shoots)
            found += *content->shoots == std::vector{testing::ibiza()} ? "|shoots" : "|others";
        if (content && content->catalog)
            found += *content->catalog == testing::storedCatalog() ? "|catalog" : "|other";
    }
    return all;
}

TEST(Versions, AreListedNewestFirstAndReadAsWhatTheyAre) {
    testing::MemoryFileStore files;
    const auto put = [&](const char* name, std::string bytes) {
        files.files[kFolder / name] = std::move(bytes);
    };
    const auto point = writePoint({testing::kMorning, "Import", 1, 2, "x"}, kShoots, kCatalog);
    put("shoots.json", kShoots);
    put("shoots.json.checksum", "x");
    put("versions/20260314T093000Z.jsonl", point);
    put("versions/20260314T093000Z-2.jsonl", writePoint({testing::kMorning, "", 0, 0, "x"}, "[]", kCatalog));
    put("versions/20260313T093000Z.jsonl", "garbage");
    // Cut off behind its first line.
    put("versions/20260312T093000Z.jsonl", point.substr(0, point.size() - 2));
    put("versions/mine.jsonl", point);
    put("backups/shoots-2026-03-13.json", kShoots);
    put("backups/catalog-2026-03-13.json", kCatalog);
    put("backups/catalog-2026-03-11.json", R"([])");
    put("backups/shoots-from-anna.json", kShoots);
    put("shoots.json.unreadable-20260313T120000Z", "garbage");
    put("catalog.json.unreadable-20260313T120000Z", kCatalog);
    put("shoots.json.unreadable-20260310T120000Z", kShoots);
    put("notes.json.unreadable-20260310T120000Z", kShoots);
    EXPECT_THAT(foundIn(files),
                ::testing::ElementsAre("2026-03-14T09:30:00Z||0/0|others|catalog",
                                       "2026-03-14T09:30:00Z|Import|1/2|shoots|catalog",
                                       "2026-03-13T12:00:00Z|||catalog", "2026-03-13T09:30:00Z||",
                                       "2026-03-13T00:00:00Z||1/2|shoots|catalog",
                                       "2026-03-12T09:30:00Z|Import|1/2", "2026-03-11T00:00:00Z|||other",
                                       "2026-03-10T12:00:00Z||1/2|shoots"));
    files.files.clear();
    EXPECT_THAT(foundIn(files), ::testing::IsEmpty());
}

} // namespace
} // namespace vantor
