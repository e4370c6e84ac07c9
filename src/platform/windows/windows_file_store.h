// WindowsFileStore: FileStore on Windows files.
//
// A file is replaced through a temporary one beside it, named ".vantor-save-" and an identifier: written, flushed to
// disk, and put in the old file's place, whose attributes and access rights it takes over. Any failure removes the
// temporary file. Stateless; may be used from any thread.
//
// Compiled but never run so far: nobody has tried the program on Windows.
#pragma once

#include "platform/file_store.h"

namespace vantor {

class WindowsFileStore final : public FileStore {
public:
    static constexpr std::string_view kTemporaryPrefix = ".vantor-save-";

    using FileStore::replace;

    [[nodiscard]] ReadResult read(const std::filesystem::path& path, std::uint64_t mostBytes) const override;
    bool replace(const std::filesystem::path& path,
                 const std::function<bool(ByteSink&)>& write) const override;
    bool createFolders(const std::filesystem::path& folder) const override;
    bool rename(const std::filesystem::path& from, const std::filesystem::path& to) const override;
    [[nodiscard]] std::vector<std::string> list(const std::filesystem::path& folder) const override;
    bool remove(const std::filesystem::path& path) const override;
    void removeLeftovers(const std::filesystem::path& folder) const override;
};

} // namespace vantor
