// Holds the sources against the map of the rooms in docs/architecture.md.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

using Names = std::set<std::string>;

const fs::path kSources = fs::path(VANTOR_SOURCE) / "src";

// What stands in angle brackets, by the name that the map has for its library.
const std::map<std::string, std::regex>& libraries() {
    static const std::map<std::string, std::regex> all{
        {"ICU", std::regex("unicode/.*")},
        {"RapidJSON", std::regex("rapidjson/.*")},
        {"zlib", std::regex("zlib\\.h")},
        {"cairo", std::regex("cairo.*")},
        {"Pango", std::regex("pango/.*")},
        {"libcurl", std::regex("curl/.*")},
        {"libqrencode", std::regex("qrencode\\.h")},
        {"libpng", std::regex("png\\.h")},
        {"POSIX", std::regex("(unistd|fcntl|sys/.*|dirent|signal|poll)\\.h")},
        {"Qt", std::regex("Q[A-Za-z]+")},
    };
    return all;
}

// What each room may use besides itself.
struct Map {
    std::map<std::string, Names> rooms;
    std::vector<std::string> faults;
};

void readRow(Map& map, const std::string& row) {
    static const std::regex kRow(R"re(\| `([a-z/]+)/` \| [^|]+ \| ([A-Za-z/, ]+) \|)re");
    std::smatch cells;
    if (!std::regex_match(row, cells, kRow)) {
        map.faults.push_back("no row of three cells, the first a folder, the last names: " + row);
        return;
    }
    const std::string room = cells[1];
    const std::string list = cells[2];
    static const std::regex kComma(", ");
    Names mayUse;
    for (std::sregex_token_iterator name(list.begin(), list.end(), kComma, -1), end; name != end; ++name) {
        if (!map.rooms.contains(*name) && !libraries().contains(*name))
            map.faults.push_back(room +
                                 " may use what is neither a room above it nor a library: " + name->str());
        mayUse.insert(*name);
    }
    if (!map.rooms.emplace(room, mayUse).second)
        map.faults.push_back("a second row of " + room);
}

Map readMap() {
    Map map;
    std::ifstream in(fs::path(VANTOR_SOURCE) / "docs/architecture.md");
    std::string line;
    while (std::getline(in, line) && line != "| room | holds | may use |") {
    }
    std::getline(in, line);
    while (std::getline(in, line) && line.starts_with('|'))
        readRow(map, line);
    return map;
}

const Map& map() {
    static const Map kMap = readMap();
    return kMap;
}

// A folder of platform/ is a room of its own; those of other rooms are not.
std::string roomOf(const std::string& path) {
    const auto folder = fs::path(path).parent_path().string();
    return folder.substr(0, folder.find('/', folder.starts_with("platform/") ? 9 : 0));
}

const Names& mayUse(const std::string& file) {
    static const Names kNothing;
    const auto room = map().rooms.find(roomOf(file));
    return room != map().rooms.end() ? room->second : kNothing;
}

// Paths below src/.
std::vector<std::string> sourceFiles() {
    std::vector<std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(kSources)) {
        if (entry.path().extension() == ".h" || entry.path().extension() == ".cpp")
            files.push_back(fs::relative(entry.path(), kSources).string());
    }
    return files;
}

struct Include {
    std::string file;
    std::string header;
    bool ours;
};

std::vector<Include> allIncludes() {
    static const std::regex kInclude(R"re(^#include +([<"])([^>"]+)[>"])re");
    std::vector<Include> includes;
    for (const auto& file : sourceFiles()) {
        std::ifstream in(kSources / file);
        std::string line;
        std::smatch match;
        while (std::getline(in, line)) {
            if (std::regex_search(line, match, kInclude))
                includes.push_back({file, match[2], match[1] == "\""});
        }
    }
    return includes;
}

// Empty for the standard library.
std::string libraryOf(const std::string& header) {
    static const std::regex kStandard("[a-z_]+");
    if (std::regex_match(header, kStandard))
        return "";
    const auto found = std::ranges::find_if(
        libraries(), [&](const auto& library) { return std::regex_match(header, library.second); });
    return found != libraries().end() ? found->first : "a library of no name";
}

TEST(Rooms, StandOnAMapThatCanBeRead) {
    EXPECT_THAT(map().faults, ::testing::IsEmpty());
    Names rooms;
    for (const auto& file : sourceFiles())
        rooms.insert(roomOf(file));
    Names onMap;
    for (const auto& [room, mayUse] : map().rooms)
        onMap.insert(room);
    EXPECT_EQ(onMap, rooms);
}

TEST(Rooms, RowsThatSayNothingExactAreFaults) {
    for (const auto* const row :
         {"| `a/` | this | |", "| `a/` | this | base", "| a | this | base |", "| `a/` | this | that | base |",
          "| `a/` | this | all above |", "| `a/` | this | base, ui |", "| `a/` | this | base and model |",
          "| `a/` | this | `base` |", "| `base/` | this | ICU |"}) {
        Map map{{{"base", {}}, {"model", {}}}, {}};
        readRow(map, row);
        EXPECT_THAT(map.faults, ::testing::SizeIs(1)) << row;
    }
}

TEST(Rooms, IncludeOnlyTheRoomsTheyMayUse) {
    int checked = 0;
    for (const auto& [file, header, ours] : allIncludes()) {
        if (!ours)
            continue;
        ++checked;
        EXPECT_TRUE(roomOf(file) == roomOf(header) || mayUse(file).contains(roomOf(header)))
            << file << " includes " << header;
    }
    EXPECT_GT(checked, 50);
}

TEST(Rooms, IncludeOnlyTheLibrariesTheyMayUse) {
    int checked = 0;
    for (const auto& [file, header, ours] : allIncludes()) {
        const auto library = libraryOf(header);
        if (ours || library.empty())
            continue;
        ++checked;
        EXPECT_TRUE(mayUse(file).contains(library)) << file << " includes " << header << " of " << library;
        EXPECT_FALSE(file.starts_with("base/") && file.ends_with(".h"))
            << file << " shows its users " << header;
    }
    EXPECT_GT(checked, 10);
}

TEST(Sources, OfWindowsStayShort) {
    for (const auto& file : sourceFiles()) {
        if (!file.starts_with("ui/"))
            continue;
        std::ifstream in(kSources / file);
        const auto lines = std::count(std::istreambuf_iterator<char>(in), {}, '\n');
        EXPECT_LE(lines, file.starts_with("ui/main/") ? 250 : 400) << file;
    }
}

} // namespace
