#include "platform/windows/windows_process_lock.h"

#include "platform/windows/windows_file_store.h"

#include <system_error>

namespace vantor {

namespace fs = std::filesystem;

ProcessLock::Attempt WindowsProcessLock::tryTake() {
    if (m_held.isOpen())
        return Attempt::Taken;
    std::error_code error;
    fs::create_directories(m_file.parent_path(), error);
    static constexpr DWORD kSharedWithNobody = 0;
    m_held = Handle(::CreateFileW(m_file.c_str(), GENERIC_READ | GENERIC_WRITE, kSharedWithNobody, nullptr,
                                  OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (m_held.isOpen())
        return Attempt::Taken;
    return ::GetLastError() == ERROR_SHARING_VIOLATION ? Attempt::HeldByOther : Attempt::Impossible;
}

void WindowsProcessLock::release() {
    if (!m_held.isOpen())
        return;
    tell({});
    m_held.close();
}

void WindowsProcessLock::tell(std::string_view text) {
    if (m_held.isOpen())
        WindowsFileStore().replace(toldFile(), text);
}

std::string WindowsProcessLock::told() const {
    static constexpr std::uint64_t kMostBytes = 16 * 1024;
    return WindowsFileStore().read(toldFile(), kMostBytes).bytes.value_or("");
}

fs::path WindowsProcessLock::toldFile() const {
    auto file = m_file;
    return file += ".told";
}

} // namespace vantor
