// Holds the sources against the map of the rooms in docs/architecture.md.

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

// What each room may use besides itself, which is a room above it or a library; a row that says anything else fails.
std::map<std::string, Names> readMap() {
    static const std::regex kRow(R"re(\| `([a-z/]+)/` \| [^|]+ \| ([A-Za-z/, ]+) \|)re");
    static const std::regex kComma(", ");
    std::map<std::string, Names> rooms;
    std::ifstream in(fs::path(VANTOR_SOURCE) / "docs/architecture.md");
    std::string line;
    while (std::getline(in, line) && line != "| room | holds | may use |") {
    }
    std::getline(in, line);
    while (std::getline(in, line) && line.starts_with('|')) {
        std::smatch cells;
        EXPECT_TRUE(std::regex_match(line, cells, kRow)) << line;
        const auto list = cells[2].str();
        const Names mayUse(std::sregex_token_iterator(list.begin(), list.end(), kComma, -1), {});
        for (const auto& name : mayUse)
            EXPECT_TRUE(rooms.contains(name) || libraries().contains(name)) << name << " in " << line;
        EXPECT_TRUE(rooms.emplace(cells[1], mayUse).second) << line;
    }
    return rooms;
}

const std::map<std::string, Names>& map() {
    static const auto kMap = readMap();
    return kMap;
}

// A folder of platform/ is a room of its own; those of other rooms are not.
std::string roomOf(const std::string& path) {
    const auto folder = fs::path(path).parent_path().string();
    return folder.substr(0, folder.find('/', folder.starts_with("platform/") ? 9 : 0));
}

const Names& mayUse(const std::string& file) {
    static const Names kNothing;
    const auto room = map().find(roomOf(file));
    return room != map().end() ? room->second : kNothing;
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

TEST(Rooms, AreThoseOfTheMap) {
    Names rooms;
    for (const auto& file : sourceFiles())
        rooms.insert(roomOf(file));
    Names onMap;
    for (const auto& [room, mayUse] : readMap())
        onMap.insert(room);
    EXPECT_EQ(onMap, rooms);
}

TEST(Rooms, IncludeOnlyTheRoomsAndLibrariesTheyMayUse) {
    int rooms = 0;
    int libraries = 0;
    for (const auto& [file, header, ours] : allIncludes()) {
        if (ours) {
            ++rooms;
            EXPECT_TRUE(roomOf(file) == roomOf(header) || mayUse(file).contains(roomOf(header)))
                << file << " includes " << header;
        } else if (const auto library = libraryOf(header); !library.empty()) {
            ++libraries;
            EXPECT_TRUE(mayUse(file).contains(library))
                << file << " includes " << header << " of " << library;
            EXPECT_FALSE(file.starts_with("base/") && file.ends_with(".h"))
                << file << " shows its users " << header;
        }
    }
    EXPECT_GT(rooms, 50);
    EXPECT_GT(libraries, 10);
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
