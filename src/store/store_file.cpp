#include "store/store_file.h"

#include "base/checksum.h"
#include "store/kept_files.h"
#include "store/restore_point_file.h"

#include <algorithm>
#include <utility>

namespace vantor {

StoreFile::StoreFile(const FileStore& files, std::filesystem::path path, Clock clock,
                     const RestorePoints* points, std::function<void()> onSavingChanged)
    : m_files(files),
      m_path(std::move(path)),
      m_clock(std::move(clock)),
      m_points(points),
      m_onSavingChanged(std::move(onSavingChanged)) {}

void StoreFile::load(const std::function<bool(std::string_view bytes)>& accept) {
    if (m_unsaved) {
        accept(m_waiting);
        return;
    }
    // Not known until it was read, also for whoever goes on after an exception.
    m_known.reset();
    const auto read = m_files.read(m_path);
    const bool isMissing = !read.bytes && read.failure == FileStore::ReadFailure::Missing;
    m_loaded = isMissing ? Loaded::Missing : Loaded::Unreadable;
    if (!read.bytes || !accept(*read.bytes))
        return;
    m_known = read.identity;
    m_loaded = isAsWritten(*read.bytes) ? Loaded::Read : Loaded::ReadChanged;
}

std::filesystem::path StoreFile::checksumPath() const {
    auto path = m_path;
    return path += ".checksum";
}

bool StoreFile::isAsWritten(std::string_view bytes) {
    constexpr std::uint64_t kMostBytes = 4096;
    m_inFile = checksumOf(bytes) + '\n';
    const auto kept = m_files.read(checksumPath(), kMostBytes).bytes;
    return !kept || kept->find(m_inFile) != std::string::npos;
}

void StoreFile::noteChecksum(const std::string& checksum) {
    // None is better than one that blames somebody for our own change.
    if (!m_files.replaceUnsynced(checksumPath(), checksum + m_inFile))
        m_files.remove(checksumPath());
}

void StoreFile::save(std::string_view bytes) {
    if (tryToSave(bytes))
        m_waiting.clear();
    else
        m_waiting = bytes;
}

void StoreFile::saveAgain() {
    if (m_unsaved && tryToSave(m_waiting))
        m_waiting.clear();
}

bool StoreFile::tryToSave(std::string_view bytes) {
    auto failure = attempt(bytes);
    while (failure && failure->reason == FileFailure::Reason::NoSpace && m_points != nullptr &&
           m_points->removeOldest())
        failure = attempt(bytes);
    const bool wasUnsaved = m_unsaved.has_value();
    if (failure)
        m_unsaved = {wasUnsaved ? m_unsaved->since : m_clock(), *failure};
    else
        m_unsaved.reset();
    if (failure || wasUnsaved)
        m_onSavingChanged();
    return !failure;
}

std::optional<FileFailure> StoreFile::attempt(std::string_view bytes) {
    const auto folders = m_files.createFolders(m_path.parent_path(), FileStore::Access::OwnerOnly);
    // Better not saved this time than the only copy of the user's work overwritten.
    if (const auto failure = setOtherFileAside())
        return failure;
    auto checksum = checksumOf(bytes) + '\n';
    // Before the file itself, and with what counts until that is replaced, however often this is tried.
    noteChecksum(checksum);
    const auto replaced = m_files.replace(m_path, bytes, FileStore::Access::OwnerOnly);
    if (replaced.identity) {
        m_known = replaced.identity;
        m_inFile = std::move(checksum);
    }
    return replaced.failedFor(FileFailure::Reason::Missing) && !folders ? folders.failure : replaced.failure;
}

std::optional<FileFailure> StoreFile::setOtherFileAside() {
    using Reason = FileFailure::Reason;
    static constexpr int kMostOfOneSecond = 100;
    auto result = m_files.identify(m_path);
    if (result.failedFor(Reason::Missing) || (result && result.identity == m_known))
        return std::nullopt;
    const auto time = compactTime(m_clock());
    const auto folder = m_path.parent_path();
    const auto prefix = m_path.filename().string() + ".unreadable-";
    auto name = prefix + time;
    if (result)
        result = m_files.setAside(m_path, folder / name);
    for (int i = 2; i <= kMostOfOneSecond && result.failedFor(Reason::NameTaken); ++i) {
        name = prefix + time + "-" + std::to_string(i);
        result = m_files.setAside(m_path, folder / name);
    }
    if (result)
        removeOldFiles(m_files, folder, kMostSetAside, name,
                       [&](const std::string& other) { return other.starts_with(prefix); });
    return result.failedFor(Reason::Missing) ? std::nullopt : result.failure;
}

} // namespace vantor
