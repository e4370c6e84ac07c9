#include "store/daily_backups.h"

#include "store/kept_files.h"

#include <algorithm>
#include <utility>

namespace vantor {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kDayLength = std::string_view("2026-03-14").size();

struct Copy {
    fs::path folder;
    // What stands before and behind the day.
    std::string stem;
    std::string extension;
    std::string day;

    [[nodiscard]] std::string name() const { return stem + day + extension; }
    [[nodiscard]] bool isOfSameFile(const std::string& other) const {
        return other.size() == name().size() && other.starts_with(stem) && other.ends_with(extension);
    }
};

void writeCopy(const FileStore& files, const Copy& copy, const std::string& bytes) {
    if (std::ranges::count(files.list(copy.folder), copy.name()) > 0)
        return;
    files.createFolders(copy.folder);
    // No older copy goes for one that could not be made.
    if (files.replace(copy.folder / copy.name(), bytes))
        removeOldFiles(files, copy.folder, DailyBackups::kMostCopies, copy.name(),
                       [&](const std::string& name) { return copy.isOfSameFile(name); });
}

} // namespace

DailyBackups::DailyBackups(const FileStore& files, fs::path folder, Clock clock, Background background)
    : m_files(files),
      m_folder(std::move(folder)),
      m_clock(std::move(clock)),
      m_background(std::move(background)) {}

void DailyBackups::keep(const fs::path& name, std::string_view bytes) {
    auto today = m_clock().iso8601().substr(0, kDayLength);
    auto& lastDay = m_lastDay[name];
    if (lastDay == today)
        return;
    lastDay = today;
    m_background(
        [&files = m_files,
         copy = Copy{m_folder, name.stem().string() + "-", name.extension().string(), std::move(today)},
         bytes = std::string(bytes)] { writeCopy(files, copy, bytes); });
}

} // namespace vantor
