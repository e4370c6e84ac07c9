// PosixFileStore: FileStore on POSIX files.
//
// A file is replaced through a temporary one beside it, named ".vantor-save-" and an identifier: written,
// given its permissions, synced to disk, renamed over it, and the folder synced. Interrupted calls
// are repeated; any other failure removes the temporary file. Stateless; may be used from any thread.
#pragma once

#include "platform/file_store.h"

namespace vantor {

class PosixFileStore final : public FileStore {
public:
    static constexpr std::string_view kTemporaryPrefix = ".vantor-save-";

    using FileStore::createFolders;
    using FileStore::replace;

    [[nodiscard]] ReadResult read(const std::filesystem::path& path, std::uint64_t mostBytes) const override;
    [[nodiscard]] FileResult identify(const std::filesystem::path& path) const override;
    FileResult replace(const std::filesystem::path& path, const Write& write, Access access) const override;
    FileResult replaceUnsynced(const std::filesystem::path& path, std::string_view bytes) const override;
    [[nodiscard]] std::optional<std::string> readBeginning(const std::filesystem::path& path,
                                                           std::size_t mostBytes) const override;
    FileResult createFolders(const std::filesystem::path& folder, Access access) const override;
    FileResult setAside(const std::filesystem::path& from, const std::filesystem::path& to) const override;
    [[nodiscard]] std::optional<std::uint64_t> freeSpace(const std::filesystem::path& folder) const override;
    [[nodiscard]] std::vector<std::string> list(const std::filesystem::path& folder) const override;
    bool remove(const std::filesystem::path& path) const override;
    void removeLeftovers(const std::filesystem::path& folder) const override;
};

} // namespace vantor
