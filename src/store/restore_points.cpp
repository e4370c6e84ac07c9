#include "store/restore_points.h"

#include "base/checksum.h"
#include "model/product_json.h"
#include "model/shoot_json.h"
#include "store/restore_point_file.h"
#include "store/versions.h"

#include <algorithm>
#include <memory>
#include <set>
#include <utility>

namespace vantor {
namespace {

namespace fs = std::filesystem;

constexpr double kDay = 24 * 60 * 60;
constexpr double kRecent = 3 * kDay;
constexpr double kKept = 33 * kDay;

std::string dayOf(Timestamp at) {
    return at.iso8601().substr(0, std::string_view("2026-03-14").size());
}

// The newest first.
std::vector<std::string> pointsIn(const FileStore& files, const fs::path& folder) {
    auto names = files.list(folder);
    std::erase_if(names, [](const std::string& name) { return !timeOfName(name); });
    std::ranges::sort(names, isNewerPoint);
    return names;
}

bool isKeptAlready(const FileStore& files, const fs::path& folder, const std::vector<std::string>& points,
                   const std::string& checksum) {
    if (points.empty())
        return false;
    const auto beginning = files.readBeginning(folder / points.front(), kMostPointHeadBytes);
    const auto head = beginning ? readPointHead(*beginning) : std::nullopt;
    return head && head->checksum == checksum;
}

void writeNewPoint(const FileStore& files, const fs::path& folder, PointHead head, const std::string& shoots,
                   const std::string& catalog) {
    constexpr int kMostOfOneSecond = 100;
    const auto points = pointsIn(files, folder);
    head.checksum = checksumOf(shoots + '\n' + catalog);
    const auto free = files.freeSpace(folder);
    const bool hasRoom =
        !free || *free / (RestorePoints::kSizesLeftFree + 1) >= shoots.size() + catalog.size();
    if (!hasRoom || isKeptAlready(files, folder, points, head.checksum) ||
        !files.createFolders(folder, FileStore::Access::OwnerOnly))
        return;
    const auto stem = compactTime(head.at);
    auto name = stem + ".jsonl";
    for (int i = 2; i <= kMostOfOneSecond && std::ranges::count(points, name) > 0; ++i)
        name = stem + "-" + std::to_string(i) + ".jsonl";
    // No older point goes for one that could not be made.
    if (!files.replace(folder / name, writePoint(head, shoots, catalog), FileStore::Access::OwnerOnly))
        return;
    for (const auto& old : outdatedPoints(pointsIn(files, folder), head.at)) {
        if (old != name)
            files.remove(folder / old);
    }
}

} // namespace

RestorePoints::RestorePoints(const FileStore& files, fs::path folder, Clock clock, Background background)
    : m_files(files),
      m_folder(std::move(folder) / kPointFolder),
      m_clock(std::move(clock)),
      m_background(std::move(background)) {}

bool RestorePoints::isFirstOfDay() {
    if (m_lastDay.empty()) {
        const auto points = pointsIn(m_files, m_folder);
        m_lastDay = points.empty() ? "-" : dayOf(*timeOfName(points.front()));
    }
    return m_lastDay != dayOf(m_clock());
}

void RestorePoints::keep(const Library& library, std::string before) {
    const auto now = m_clock();
    m_lastDay = dayOf(now);
    const auto counts = countsOf(library.shoots);
    if (counts.shoots == 0 && library.catalog == CatalogData())
        return;
    JsonWriter shoots(JsonWriter::Layout::Compact);
    writeShoots(shoots, library.shoots, DateForm::SecondsSinceReference);
    JsonWriter catalog(JsonWriter::Layout::Compact);
    writeCatalog(catalog, library.catalog);
    PointHead head{now,
                   std::move(before),
                   static_cast<std::int64_t>(counts.shoots),
                   static_cast<std::int64_t>(counts.sets),
                   {}};
    m_background(
        [&files = m_files, folder = m_folder, head = std::move(head), shoots = std::string(shoots.written()),
         catalog = std::string(catalog.written())] { writeNewPoint(files, folder, head, shoots, catalog); });
}

std::shared_future<void> RestorePoints::allKept() {
    const auto kept = std::make_shared<std::promise<void>>();
    m_background([kept] { kept->set_value(); });
    return kept->get_future().share();
}

bool RestorePoints::removeOldest() const {
    // Points and copies of days, by the moments in their names.
    std::vector<std::pair<std::string, fs::path>> all;
    for (const auto& name : pointsIn(m_files, m_folder))
        all.emplace_back(timeOfName(name)->iso8601(), m_folder / name);
    const auto copies = m_folder.parent_path() / kDailyCopyFolder;
    for (const auto& name : m_files.list(copies)) {
        if (const auto day = dayOfCopy(name); !day.empty())
            all.emplace_back(day, copies / name);
    }
    std::ranges::sort(all);
    return all.size() > kFewest && m_files.remove(all.front().second);
}

std::vector<std::string> outdatedPoints(std::vector<std::string> names, Timestamp now) {
    std::ranges::sort(names, isNewerPoint);
    std::vector<std::string> outdated;
    std::set<std::string> daysKept;
    std::size_t recent = 0;
    for (auto& name : names) {
        const auto at = timeOfName(name);
        const auto age = at ? now.secondsSinceReference - at->secondsSinceReference : 0;
        // What a wrong clock dated later than now is as good as new.
        if (at && age > kRecent && (age > kKept || !daysKept.insert(dayOf(*at)).second))
            outdated.push_back(std::move(name));
        else if (at && age <= kRecent && ++recent > RestorePoints::kMostRecent)
            outdated.push_back(std::move(name));
    }
    return outdated;
}

} // namespace vantor
