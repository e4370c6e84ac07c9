// VersionList: the earlier versions that there are, which one is chosen, and what is in it, as a person reads them.
//
// Knows neither files nor threads: whoever shows it reads what it asks for, one version at a time.
#pragma once

#include "base/timestamp.h"
#include "store/versions.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace vantor {

// "Vandaag 14:32", "Gisteren 17:20", "18 november 09:41", with the year where it is another one; of a daily copy the day
// alone. Within a sentence it begins small.
enum class Beginning { Capital, Small };
[[nodiscard]] std::string whenInWords(const Version& version, Timestamp now, Beginning beginning);

// "3 shoots, 74 sets"
[[nodiscard]] std::string countsInWords(const Version::Counts& counts);

struct VersionLine {
    std::string when;
    // What it was kept for, or what it is.
    std::string what;
    std::string counts;
};
[[nodiscard]] VersionLine lineOf(const Version& version, Timestamp now);

struct VersionShootLine {
    std::string name;
    // "28 sets · 21 november · Noorderlicht"
    std::string about;
};
[[nodiscard]] VersionShootLine lineOf(const Shoot& shoot, Timestamp now);

class VersionList {
public:
    // Other versions; none of them is chosen yet.
    void show(std::vector<Version> versions);
    [[nodiscard]] const std::vector<Version>& versions() const { return m_versions; }
    // What tells the version at this place from all others, also when they are shown anew; empty where there is none.
    [[nodiscard]] const std::string& keyAt(std::size_t place) const;

    void choose(std::optional<std::size_t> place);
    // Null when none is.
    [[nodiscard]] const Version* chosen() const;

    // The chosen version, where what is in it is to be read now. finishReading() has to follow.
    [[nodiscard]] std::optional<Version> beginReading();
    // What was read; absent when that was impossible.
    void finishReading(std::optional<LibraryVersion> content);

    // What the chosen version holds; null while that is not known, and where it cannot be read.
    [[nodiscard]] const LibraryVersion* content() const;
    [[nodiscard]] const std::vector<Shoot>& shoots() const;
    // What to say where it shows no shoots; empty while that is not known.
    [[nodiscard]] std::string reasonForNoShoots() const;

private:
    // Whether what was read last is what is chosen now.
    [[nodiscard]] bool isRead() const;

    std::vector<Version> m_versions;
    std::vector<std::string> m_keys;
    std::optional<std::size_t> m_chosen;
    std::optional<std::string> m_reading;
    std::string m_readKey;
    std::optional<LibraryVersion> m_content;
};

} // namespace vantor
