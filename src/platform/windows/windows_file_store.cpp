#include "platform/windows/windows_file_store.h"

#include "base/uuid.h"
#include "platform/windows/handle.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace vantor {
namespace {

namespace fs = std::filesystem;

class HandleSink final : public ByteSink {
public:
    explicit HandleSink(HANDLE handle) : m_handle(handle) {}

    bool write(std::string_view bytes) override {
        m_pending += bytes;
        return m_pending.size() < kBufferBytes ? !m_failed : flush();
    }

    bool flush() {
        std::string_view rest = m_pending;
        while (!m_failed && !rest.empty()) {
            DWORD count = 0;
            const auto most = static_cast<DWORD>(std::min<std::size_t>(rest.size(), kMostAtOnce));
            m_failed = ::WriteFile(m_handle, rest.data(), most, &count, nullptr) == 0 || count == 0;
            rest.remove_prefix(std::min<std::size_t>(count, rest.size()));
        }
        m_pending.clear();
        return !m_failed;
    }

private:
    static constexpr std::size_t kBufferBytes = 64 * 1024;
    static constexpr std::size_t kMostAtOnce = std::size_t{1} << 30U;

    HANDLE m_handle;
    std::string m_pending;
    bool m_failed = false;
};

bool writeTemporary(const fs::path& path, const std::function<bool(ByteSink&)>& write) {
    Handle file(
        ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.isOpen())
        return false;
    HandleSink sink(file.get());
    return write(sink) && sink.flush() && ::FlushFileBuffers(file.get()) != 0 && file.close();
}

bool putInPlace(const fs::path& temporary, const fs::path& target) {
    if (::ReplaceFileW(target.c_str(), temporary.c_str(), nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr,
                       nullptr) != 0)
        return true;
    return ::GetLastError() == ERROR_FILE_NOT_FOUND &&
           ::MoveFileExW(temporary.c_str(), target.c_str(), MOVEFILE_WRITE_THROUGH) != 0;
}

} // namespace

FileStore::ReadResult WindowsFileStore::read(const fs::path& path, std::uint64_t mostBytes) const {
    const auto failed = [](ReadFailure why) { return ReadResult{std::nullopt, why}; };
    const Handle file(::CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.isOpen()) {
        const auto error = ::GetLastError();
        return failed(error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND
                          ? ReadFailure::Missing
                          : ReadFailure::Unreadable);
    }
    LARGE_INTEGER size;
    if (::GetFileType(file.get()) != FILE_TYPE_DISK || ::GetFileSizeEx(file.get(), &size) == 0)
        return failed(ReadFailure::Unreadable);
    if (static_cast<std::uint64_t>(size.QuadPart) > mostBytes)
        return failed(ReadFailure::TooLarge);

    static constexpr DWORD kPiece = 1U << 20U;
    std::string bytes;
    while (true) {
        const auto length = bytes.size();
        bytes.resize(length + kPiece);
        DWORD count = 0;
        if (::ReadFile(file.get(), bytes.data() + length, kPiece, &count, nullptr) == 0)
            return failed(ReadFailure::Unreadable);
        bytes.resize(length + count);
        if (bytes.size() > mostBytes)
            return failed(ReadFailure::TooLarge);
        if (count == 0)
            return {std::move(bytes), {}};
    }
}

bool WindowsFileStore::replace(const fs::path& path, const std::function<bool(ByteSink&)>& write) const {
    std::error_code error;
    auto target = fs::weakly_canonical(path, error);
    if (error || !target.has_filename())
        return false;
    const auto status = fs::status(target, error);
    if (fs::exists(status) && !fs::is_regular_file(status))
        return false;
    const auto temporary = target.parent_path() / (std::string(kTemporaryPrefix) + Uuid::random().text());
    if (writeTemporary(temporary, write) && putInPlace(temporary, target))
        return true;
    ::DeleteFileW(temporary.c_str());
    return false;
}

bool WindowsFileStore::createFolders(const fs::path& folder) const {
    std::error_code error;
    fs::create_directories(folder, error);
    return fs::is_directory(folder, error);
}

bool WindowsFileStore::rename(const fs::path& from, const fs::path& to) const {
    // Without a flag that says so, nothing is replaced.
    return ::MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_WRITE_THROUGH) != 0;
}

std::vector<std::string> WindowsFileStore::list(const fs::path& folder) const {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        const auto name = entry->path().filename().u8string();
        names.emplace_back(name.begin(), name.end());
    }
    return names;
}

bool WindowsFileStore::remove(const fs::path& path) const {
    std::error_code error;
    fs::remove(path, error);
    return !error;
}

void WindowsFileStore::removeLeftovers(const fs::path& folder) const {
    for (const auto& name : list(folder)) {
        if (name.starts_with(kTemporaryPrefix))
            remove(folder / name);
    }
}

} // namespace vantor
