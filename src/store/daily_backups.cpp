#include "store/daily_backups.h"

#include "store/kept_files.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace vantor {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kDayForm = "0000-00-00";

struct Copy {
    fs::path of;
    std::string day;

    [[nodiscard]] std::string name() const {
        return of.stem().string() + "-" + day + of.extension().string();
    }
};

// Absent: the name is not one of a copy.
std::optional<Copy> copyNamed(const std::string& name) {
    const fs::path path(name);
    const auto stem = path.stem().string();
    if (stem.size() <= kDayForm.size() || stem[stem.size() - kDayForm.size() - 1] != '-')
        return std::nullopt;
    const auto begin = stem.size() - kDayForm.size();
    auto day = stem.substr(begin);
    auto form = day;
    std::ranges::replace_if(
        form, [](char c) { return c >= '0' && c <= '9'; }, '0');
    if (form != kDayForm)
        return std::nullopt;
    return Copy{stem.substr(0, begin - 1) + path.extension().string(), std::move(day)};
}

bool hasRoom(const FileStore& files, const fs::path& folder, std::size_t size) {
    const auto free = files.freeSpace(folder);
    return !free || *free / (DailyBackups::kSizesLeftFree + 1) >= size;
}

void writeCopy(const FileStore& files, const fs::path& folder, const Copy& copy, const std::string& bytes) {
    // Another copy may have taken the room.
    if (std::ranges::count(files.list(folder), copy.name()) > 0 || !hasRoom(files, folder, bytes.size()))
        return;
    files.createFolders(folder, FileStore::Access::OwnerOnly);
    // No older copy goes for one that could not be made.
    if (!files.replace(folder / copy.name(), bytes, FileStore::Access::OwnerOnly))
        return;
    removeOldFiles(files, folder, DailyBackups::kMostCopies, copy.name(), [&](const std::string& name) {
        const auto other = copyNamed(name);
        return other && other->of == copy.of;
    });
}

} // namespace

DailyBackups::DailyBackups(const FileStore& files, fs::path folder, Clock clock, Background background)
    : m_files(files),
      m_folder(std::move(folder)),
      m_clock(std::move(clock)),
      m_background(std::move(background)) {}

void DailyBackups::keep(const fs::path& name, std::string_view bytes) {
    auto today = m_clock().iso8601().substr(0, kDayForm.size());
    auto& lastDay = m_lastDay[name];
    if (lastDay == today || !hasRoom(m_files, m_folder, bytes.size()))
        return;
    lastDay = today;
    m_background([&files = m_files, folder = m_folder, copy = Copy{name, std::move(today)},
                  bytes = std::string(bytes)] { writeCopy(files, folder, copy, bytes); });
}

bool DailyBackups::removeOldest() const {
    std::vector<Copy> copies;
    for (const auto& name : m_files.list(m_folder)) {
        auto copy = copyNamed(name);
        if (copy && m_lastDay.contains(copy->of))
            copies.push_back(*std::move(copy));
    }
    std::ranges::sort(copies, {}, &Copy::day);
    for (const auto& copy : copies) {
        const auto ofSameFile =
            std::ranges::count_if(copies, [&](const Copy& other) { return other.of == copy.of; });
        if (ofSameFile > static_cast<std::ptrdiff_t>(kFewestCopies))
            return m_files.remove(m_folder / copy.name());
    }
    return false;
}

} // namespace vantor
