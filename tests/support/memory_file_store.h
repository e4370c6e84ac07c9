// MemoryFileStore: a FileStore without a disk, which can be told to fail and keeps count of what it was
// asked.
#pragma once

#include "platform/file_store.h"

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vantor::testing {

class MemoryFileStore final : public FileStore {
public:
    // Whole files by their path.
    mutable std::map<std::filesystem::path, std::string> files;
    // Files that are there and cannot be read.
    std::set<std::filesystem::path> unreadable;
    bool failsToReplace = false;
    bool failsToRename = false;
    bool failsToCreateFolders = false;

    // What was asked for, in order, whether it succeeded or not.
    mutable std::vector<std::filesystem::path> reads;
    mutable std::vector<std::filesystem::path> replacements;
    mutable std::vector<std::filesystem::path> createdFolders;
    mutable std::vector<std::filesystem::path> cleared;
    // What succeeded.
    mutable std::vector<std::pair<std::filesystem::path, std::filesystem::path>> renames;

    using FileStore::replace;

    [[nodiscard]] ReadResult read(const std::filesystem::path& path, std::uint64_t mostBytes) const override {
        reads.push_back(path);
        const auto found = files.find(path);
        if (found == files.end())
            return {std::nullopt, ReadFailure::Missing};
        if (unreadable.contains(path))
            return {std::nullopt, ReadFailure::Unreadable};
        if (found->second.size() > mostBytes)
            return {std::nullopt, ReadFailure::TooLarge};
        // On success the failure says nothing, so it may as well mislead.
        return {found->second, ReadFailure::Missing};
    }

    bool replace(const std::filesystem::path& path,
                 const std::function<bool(ByteSink&)>& write) const override {
        replacements.push_back(path);
        Sink sink;
        if (failsToReplace || !write(sink))
            return false;
        files[path] = std::move(sink.bytes);
        return true;
    }

    bool createFolders(const std::filesystem::path& folder) const override {
        createdFolders.push_back(folder);
        return !failsToCreateFolders;
    }

    bool rename(const std::filesystem::path& from, const std::filesystem::path& to) const override {
        if (failsToRename || !files.contains(from) || files.contains(to))
            return false;
        files[to] = std::move(files[from]);
        files.erase(from);
        renames.emplace_back(from, to);
        return true;
    }

    [[nodiscard]] std::vector<std::string> list(const std::filesystem::path& folder) const override {
        std::vector<std::string> names;
        for (const auto& [path, bytes] : files) {
            if (path.parent_path() == folder)
                names.push_back(path.filename().string());
        }
        return names;
    }

    bool remove(const std::filesystem::path& path) const override {
        files.erase(path);
        return true;
    }

    void removeLeftovers(const std::filesystem::path& folder) const override { cleared.push_back(folder); }

private:
    struct Sink final : ByteSink {
        std::string bytes;
        bool write(std::string_view more) override {
            bytes += more;
            return true;
        }
    };
};

} // namespace vantor::testing
