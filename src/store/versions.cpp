#include "store/versions.h"

#include "model/product_json.h"
#include "model/shoot_json.h"
#include "store/restore_point_file.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <utility>

namespace vantor {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kSetAside = ".unreadable-";

std::optional<std::vector<Shoot>> shootsOf(const FileStore& files, const fs::path& path) {
    const auto read = files.read(path);
    return read.bytes ? readShoots(*read.bytes, DateForm::SecondsSinceReference) : std::nullopt;
}

std::optional<CatalogData> catalogOf(std::string_view bytes) {
    if (auto catalog = readCatalog(bytes))
        return catalog;
    auto products = readProducts(bytes);
    return products ? std::optional(CatalogData{*std::move(products), {}, {}}) : std::nullopt;
}

std::optional<CatalogData> catalogIn(const FileStore& files, const fs::path& path) {
    const auto read = path.empty() ? FileStore::ReadResult() : files.read(path);
    return read.bytes ? catalogOf(*read.bytes) : std::nullopt;
}

void addPoints(const FileStore& files, const fs::path& folder, std::vector<Version>& versions) {
    auto names = files.list(folder);
    std::ranges::sort(names, isNewerPoint);
    for (const auto& name : names) {
        const auto at = timeOfName(name);
        if (!at)
            continue;
        Version version{Version::Kind::RestorePoint, *at, {}, {}, folder / name, {}, {}};
        const auto beginning = files.readBeginning(version.point, kMostPointHeadBytes);
        if (auto head = beginning ? readPointHead(*beginning) : std::nullopt) {
            version.before = std::move(head->before);
            version.isReadable = true;
            version.counts = {static_cast<std::size_t>(head->shoots), static_cast<std::size_t>(head->sets)};
        }
        versions.push_back(std::move(version));
    }
}

// Files of both stores that belong together, by the part of their names that tells the moment.
using Pairs = std::map<std::string, Version, std::less<>>;

void addPairs(const FileStore& files, Pairs pairs, std::vector<Version>& versions) {
    for (auto& [key, version] : pairs) {
        if (const auto shoots = version.shoots.empty() ? std::nullopt : shootsOf(files, version.shoots))
            version.counts = countsOf(*shoots);
        version.isReadable = version.counts || catalogIn(files, version.catalog);
        versions.push_back(std::move(version));
    }
}

// "shoots-2026-03-14.json"
void addDailyCopies(const FileStore& files, const fs::path& folder, std::vector<Version>& versions) {
    Pairs pairs;
    for (const auto& name : files.list(folder)) {
        const auto day = dayOfCopy(name);
        const auto at = Timestamp::parseIso8601(day + "T00:00:00Z");
        if (!at)
            continue;
        auto& version = pairs[day];
        version.kind = Version::Kind::DailyCopy;
        version.at = *at;
        (name.starts_with("shoots") ? version.shoots : version.catalog) = folder / name;
    }
    addPairs(files, std::move(pairs), versions);
}

// "shoots.json.unreadable-20260314T093000Z"
void addSetAside(const FileStore& files, const fs::path& folder, std::vector<Version>& versions) {
    Pairs pairs;
    for (const auto& name : files.list(folder)) {
        const auto mark = name.find(kSetAside);
        if (mark == std::string::npos)
            continue;
        const auto moment = name.substr(mark + kSetAside.size());
        const auto at = timeOfName(moment);
        const auto store = std::string_view(name).substr(0, mark);
        if (!at || (store != "shoots.json" && store != "catalog.json"))
            continue;
        auto& version = pairs[moment];
        version.kind = Version::Kind::SetAside;
        version.at = *at;
        (store == "shoots.json" ? version.shoots : version.catalog) = folder / name;
    }
    addPairs(files, std::move(pairs), versions);
}

} // namespace

Version::Counts countsOf(const std::vector<Shoot>& shoots) {
    Version::Counts counts{shoots.size(), 0};
    for (const auto& shoot : shoots)
        counts.sets += shoot.sets.size();
    return counts;
}

std::vector<Version> versionsIn(const FileStore& files, const fs::path& folder) {
    std::vector<Version> versions;
    addPoints(files, folder / kPointFolder, versions);
    addDailyCopies(files, folder / kDailyCopyFolder, versions);
    addSetAside(files, folder, versions);
    std::ranges::stable_sort(versions, std::ranges::greater(),
                             [](const Version& version) { return version.at.secondsSinceReference; });
    return versions;
}

std::optional<LibraryVersion> contentOf(const FileStore& files, const Version& version) {
    LibraryVersion content;
    if (!version.point.empty()) {
        const auto read = files.read(version.point);
        const auto lines = read.bytes ? linesOfPoint(*read.bytes) : std::nullopt;
        if (!lines)
            return std::nullopt;
        content.shoots = readShoots(lines->shoots, DateForm::SecondsSinceReference);
        content.catalog = catalogOf(lines->catalog);
        return content.shoots && content.catalog ? std::optional(std::move(content)) : std::nullopt;
    }
    if (!version.shoots.empty())
        content.shoots = shootsOf(files, version.shoots);
    content.catalog = catalogIn(files, version.catalog);
    return content.shoots || content.catalog ? std::optional(std::move(content)) : std::nullopt;
}

} // namespace vantor
