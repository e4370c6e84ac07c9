// RestorePoints: copies of both stores, kept from before what takes much away and from before each day's first change.
//
// - A point is one file, "versions/<UTC time>.jsonl" beside the stores: three lines of JSON, which say what it is, and
//   hold shoots.json and catalog.json as they were. It is written in the background; failures are silent.
// - Content that is the newest point's already is not kept again, and nothing is kept where less than kSizesLeftFree
//   times its size would stay free.
// - All points of the last three days are kept, kMostRecent at most, and of the thirty days before those one each.
// - Borrows the file store, which outlives what was given to the background. Called from one thread only.
#pragma once

#include "base/timestamp.h"
#include "model/library.h"
#include "platform/file_store.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <future>
#include <string>
#include <vector>

namespace vantor {

class RestorePoints {
public:
    // Runs what it is given, one after the other, on whatever thread.
    using Background = std::function<void(std::function<void()>)>;

    static constexpr std::size_t kMostRecent = 50;
    static constexpr std::size_t kFewest = 3;
    static constexpr std::uint64_t kSizesLeftFree = 3;

    // `folder` is that of the stores.
    RestorePoints(const FileStore& files, std::filesystem::path folder, Clock clock, Background background);

    // Whether nothing has been kept yet on this day, in UTC.
    [[nodiscard]] bool isFirstOfDay();

    // Keeps the library as it is. `before` says before what, and is empty before the first change of a day.
    void keep(const Library& library, std::string before);

    // Ready once what was given to keep so far stands in its file, or never will.
    [[nodiscard]] std::shared_future<void> allKept();

    // Makes room: removes the oldest point, or copy of a day that an earlier version of the program made, but none of
    // the newest three. False when none went.
    [[nodiscard]] bool removeOldest() const;

private:
    const FileStore& m_files;
    std::filesystem::path m_folder;
    Clock m_clock;
    Background m_background;
    // The day of the newest point; empty until it was looked for.
    std::string m_lastDay;
};

// The names, of points in one folder, that are to go at this moment.
[[nodiscard]] std::vector<std::string> outdatedPoints(std::vector<std::string> names, Timestamp now);

} // namespace vantor
