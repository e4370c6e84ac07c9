// DailyBackups: one good copy of each store's file a day, of the last seven days, in a folder of their own.
//
// - A day is a day in UTC. Its first good content is kept ("shoots-2026-03-14.json"), what follows is not.
// - A copy is made only where three times its size stays free beside it; until then each good content is offered anew.
// - Copies are written in the background, so that nothing waits for them; failures are silent.
// - Borrows the file store, which outlives what was given to the background. Called from one thread only.
#pragma once

#include "base/timestamp.h"
#include "platform/file_store.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace vantor {

class DailyBackups {
public:
    // Runs what it is given, one after the other, on whatever thread.
    using Background = std::function<void(std::function<void()>)>;

    static constexpr std::size_t kMostCopies = 7;
    static constexpr std::size_t kFewestCopies = 3;
    static constexpr std::uint64_t kSizesLeftFree = 3;

    DailyBackups(const FileStore& files, std::filesystem::path folder, Clock clock, Background background);

    // Keeps these bytes as today's copy of the store file of that name, unless there is one.
    void keep(const std::filesystem::path& name, std::string_view bytes);

    // Makes room: removes the oldest copy there is, but none of the newest three of a store. False when none went.
    [[nodiscard]] bool removeOldest() const;

private:
    const FileStore& m_files;
    std::filesystem::path m_folder;
    Clock m_clock;
    Background m_background;
    // The day of the last copy asked for, by file name.
    std::map<std::filesystem::path, std::string> m_lastDay;
};

} // namespace vantor
