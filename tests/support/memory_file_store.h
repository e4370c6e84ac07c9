// MemoryFileStore: a FileStore without a disk, which can be told to fail and keeps count of what it was
// asked.
#pragma once

#include "platform/file_store.h"
#include "tests/support/string_sink.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <new>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vantor::testing {

class MemoryFileStore : public FileStore {
public:
    // Whole files by their path.
    mutable std::map<std::filesystem::path, std::string> files;
    // Files that are there and cannot be read.
    std::set<std::filesystem::path> unreadable;
    // Reading finds no memory for the file.
    bool lacksMemory = false;
    bool failsToReplace = false;
    // Replaces, and cannot tell that it will last.
    bool failsToSync = false;
    bool failsToRename = false;
    // A folder that holds something is there already.
    bool failsToCreateFolders = false;
    // Bytes; a new file takes its room beside the old one. Absent: nobody counts them.
    std::optional<std::uint64_t> capacity;

    // Leaves room for so many bytes.
    void leave(std::uint64_t room) { capacity = room + taken(); }

    // What was asked for, in order, whether it succeeded or not.
    mutable std::vector<std::filesystem::path> reads;
    mutable std::vector<std::filesystem::path> replacements;
    mutable std::vector<std::filesystem::path> createdFolders;
    mutable std::vector<std::filesystem::path> cleared;
    // What succeeded.
    mutable std::vector<std::pair<std::filesystem::path, std::filesystem::path>> renames;

    using FileStore::createFolders;
    using FileStore::replace;

    [[nodiscard]] ReadResult read(const std::filesystem::path& path, std::uint64_t mostBytes) const override {
        reads.push_back(path);
        if (lacksMemory)
            throw std::bad_alloc();
        const auto found = files.find(path);
        if (found == files.end())
            return {std::nullopt, ReadFailure::Missing, {}};
        if (unreadable.contains(path))
            return {std::nullopt, ReadFailure::Unreadable, {}};
        if (found->second.size() > mostBytes)
            return {std::nullopt, ReadFailure::TooLarge, {}};
        // On success the failure says nothing, so it may as well mislead.
        return {found->second, ReadFailure::Missing, identityOf(found->second)};
    }

    [[nodiscard]] FileResult identify(const std::filesystem::path& path) const override {
        const auto found = files.find(path);
        if (found == files.end())
            return FileFailure{FileFailure::Reason::Missing};
        return identityOf(found->second);
    }

    FileResult replace(const std::filesystem::path& path, const Write& write, Access) const override {
        replacements.push_back(path);
        if (failsToCreateFolders && list(path.parent_path()).empty())
            return FileFailure{FileFailure::Reason::Missing};
        StringSink sink;
        if (failsToReplace || !write(sink))
            return FileFailure{};
        if (freeSpace(path).value_or(kNoLimit) < sink.bytes().size())
            return FileFailure{FileFailure::Reason::NoSpace};
        FileResult result = identityOf(sink.bytes());
        if (failsToSync)
            result.failure = {FileFailure::Reason::NotDurable};
        files[path] = sink.bytes();
        return result;
    }

    FileResult replaceUnsynced(const std::filesystem::path& path, std::string_view bytes) const override {
        if (failsToReplace || freeSpace(path).value_or(kNoLimit) < bytes.size())
            return FileFailure{FileFailure::Reason::NoSpace};
        files[path] = bytes;
        return {};
    }

    [[nodiscard]] std::optional<std::string> readBeginning(const std::filesystem::path& path,
                                                           std::size_t mostBytes) const override {
        const auto found = files.find(path);
        if (found == files.end() || unreadable.contains(path))
            return std::nullopt;
        return found->second.substr(0, mostBytes);
    }

    FileResult createFolders(const std::filesystem::path& folder, Access) const override {
        createdFolders.push_back(folder);
        return failsToCreateFolders ? FileResult(FileFailure{FileFailure::Reason::NotPermitted})
                                    : FileResult();
    }

    FileResult setAside(const std::filesystem::path& from, const std::filesystem::path& to) const override {
        if (files.contains(to))
            return FileFailure{FileFailure::Reason::NameTaken};
        if (failsToRename || !files.contains(from))
            return FileFailure{};
        files[to] = std::move(files[from]);
        files.erase(from);
        renames.emplace_back(from, to);
        return {};
    }

    [[nodiscard]] std::optional<std::uint64_t> freeSpace(const std::filesystem::path&) const override {
        if (!capacity)
            return std::nullopt;
        return *capacity - std::min(taken(), *capacity);
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
    [[nodiscard]] std::uint64_t taken() const {
        std::uint64_t taken = 0;
        for (const auto& [path, bytes] : files)
            taken += bytes.size();
        return taken;
    }

    // Files of the same content are the same file.
    static FileIdentity identityOf(const std::string& bytes) {
        return {0, std::hash<std::string>()(bytes), bytes.size(), 0, 0};
    }
};

} // namespace vantor::testing
