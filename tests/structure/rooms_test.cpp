// Holds the map of the rooms in docs/architecture.md against what the sources include.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

// What stands in angle brackets, by the library that it comes from; nothing said means the standard library.
const std::map<std::string, std::regex>& libraries() {
    static const std::map<std::string, std::regex> all{
        {"icu", std::regex("unicode/.*")},
        {"rapidjson", std::regex("rapidjson/.*")},
        {"cairo", std::regex("cairo.*|pango/.*")},
        {"curl", std::regex("curl/.*")},
        {"qrencode", std::regex("qrencode\\.h")},
        {"libpng", std::regex("png\\.h")},
        {"posix", std::regex("(unistd|fcntl|sys/.*|dirent|signal|poll)\\.h")},
        {"qt", std::regex("Q[A-Za-z]+")},
    };
    return all;
}

struct Room {
    Names rooms;
    Names libraries;
};

// A folder of platform/ that is named after a library is a room of its own.
const std::map<std::string, Room>& rooms() {
    static const std::map<std::string, Room> all{
        {"base", {{}, {"icu", "rapidjson"}}},
        {"model", {{"base"}, {}}},
        {"formats", {{"base", "model"}, {}}},
        {"platform", {{"base"}, {}}},
        {"platform/cairo", {{"base", "platform"}, {"cairo"}}},
        {"platform/curl", {{"base", "platform"}, {"curl"}}},
        {"platform/libpng", {{"base", "platform"}, {"libpng"}}},
        {"platform/posix", {{"base", "platform"}, {"posix"}}},
        {"platform/qrencode", {{"base", "platform"}, {"qrencode"}}},
        {"platform/qt", {{"base", "platform"}, {"qt"}}},
        {"edit", {{"base", "model"}, {}}},
        {"store", {{"base", "model", "edit", "formats", "platform"}, {}}},
        {"output", {{"base", "model", "formats", "platform"}, {}}},
        {"update", {{"base", "platform"}, {}}},
        {"view", {{"base", "model", "edit", "formats", "platform", "store", "output", "update"}, {}}},
        {"ui",
         {{"base", "model", "edit", "formats", "platform", "store", "output", "update", "view"}, {"qt"}}},
        {"app",
         {{"base", "model", "edit", "formats", "platform", "platform/cairo", "platform/curl",
           "platform/libpng", "platform/posix", "platform/qrencode", "platform/qt", "store", "output",
           "update", "view", "ui"},
          {"qt"}}},
        {"cli",
         {{"base", "model", "edit", "formats", "platform", "platform/cairo", "platform/libpng",
           "platform/posix", "platform/qrencode", "store", "output"},
          {}}},
    };
    return all;
}

std::string roomOf(const std::string& path) {
    const auto folder = fs::path(path).parent_path().string();
    return rooms().contains(folder) ? folder : folder.substr(0, folder.find('/'));
}

struct Include {
    std::string file;
    std::string header;
    bool ours;
};

std::vector<Include> allIncludes() {
    static const std::regex kInclude(R"re(^#include +([<"])([^>"]+)[>"])re");
    const fs::path source = fs::path(VANTOR_SOURCE) / "src";
    std::vector<Include> includes;
    for (const auto& entry : fs::recursive_directory_iterator(source)) {
        if (entry.path().extension() != ".h" && entry.path().extension() != ".cpp")
            continue;
        std::ifstream in(entry.path());
        std::string line;
        std::smatch match;
        while (std::getline(in, line)) {
            if (std::regex_search(line, match, kInclude))
                includes.push_back({fs::relative(entry.path(), source).string(), match[2], match[1] == "\""});
        }
    }
    return includes;
}

std::string libraryOf(const std::string& header) {
    for (const auto& [name, pattern] : libraries()) {
        if (std::regex_match(header, pattern))
            return name;
    }
    return "";
}

TEST(Rooms, AreAllOnTheMap) {
    for (const auto& include : allIncludes())
        EXPECT_TRUE(rooms().contains(roomOf(include.file)))
            << include.file << " stands in no room of the map";
}

TEST(Rooms, IncludeOnlyTheRoomsTheyMayUse) {
    int checked = 0;
    for (const auto& [file, header, ours] : allIncludes()) {
        if (!ours)
            continue;
        ++checked;
        const auto from = roomOf(file);
        const auto to = roomOf(header);
        EXPECT_TRUE(from == to || rooms().at(from).rooms.contains(to)) << file << " includes " << header;
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
        EXPECT_TRUE(rooms().at(roomOf(file)).libraries.contains(library)) << file << " includes " << header;
    }
    EXPECT_GT(checked, 10);
}

TEST(Rooms, HeadersOfBaseKeepTheirLibrariesToThemselves) {
    for (const auto& [file, header, ours] : allIncludes()) {
        if (file.starts_with("base/") && file.ends_with(".h")) {
            EXPECT_EQ(libraryOf(header), "") << file << " shows its users " << header;
        }
    }
}

} // namespace
