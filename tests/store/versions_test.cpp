#include "store/restore_point_file.h"
#include "store/versions.h"
#include "tests/store/store_fixture.h"
#include "tests/support/examples.h"
#include "tests/support/memory_file_store.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vantor {
namespace {

const std::filesystem::path kFolder = "/home/anna/.local/share/Vantor";

const auto kShoots = testing::jsonOf(std::vector{testing::ibiza()});
const auto kCatalog = testing::jsonOf(testing::storedCatalog());

// A version, as it is listed and read.
struct Found {
    std::string moment;
    std::string before;
    // Shoots and sets; empty where they cannot be told.
    std::string counts;
    // Which stores it gives back.
    std::string content;

    friend bool operator==(const Found&, const Found&) = default;
};

void PrintTo(const Found& found, std::ostream* out) {
    *out << found.moment << '|' << found.before << '|' << found.counts << '|' << found.content;
}

std::vector<Found> foundIn(const FileStore& files) {
    std::vector<Found> all;
    for (const auto& version : versionsIn(files, kFolder)) {
        Found found{version.at.iso8601(), version.before, {}, {}};
        if (version.counts)
            found.counts =
                std::to_string(version.counts->shoots) + "/" + std::to_string(version.counts->sets);
        const auto content = contentOf(files, version);
        if (content && content->shoots)
            found.content += *content->shoots == std::vector{testing::ibiza()} ? "shoots " : "others ";
        if (content && content->catalog)
            found.content += *content->catalog == testing::storedCatalog() ? "catalog" : "other";
        all.push_back(std::move(found));
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
    const std::vector<Found> expected{
        {"2026-03-14T09:30:00Z", "", "0/0", "others catalog"},
        {"2026-03-14T09:30:00Z", "Import", "1/2", "shoots catalog"},
        {"2026-03-13T12:00:00Z", "", "", "catalog"},
        {"2026-03-13T09:30:00Z", "", "", ""},
        {"2026-03-13T00:00:00Z", "", "1/2", "shoots catalog"},
        {"2026-03-12T09:30:00Z", "Import", "1/2", ""},
        {"2026-03-11T00:00:00Z", "", "", "other"},
        {"2026-03-10T12:00:00Z", "", "1/2", "shoots "},
    };
    EXPECT_EQ(foundIn(files), expected);
    files.files.clear();
    EXPECT_EQ(foundIn(files), std::vector<Found>());
}

} // namespace
} // namespace vantor
