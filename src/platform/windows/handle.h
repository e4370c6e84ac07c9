// Handle: an open Windows file handle, closed when its owner goes.
#pragma once

#include <windows.h>

#include <utility>

namespace vantor {

class Handle {
public:
    Handle() = default;
    explicit Handle(HANDLE handle) : m_handle(handle) {}
    Handle(Handle&& other) noexcept : m_handle(std::exchange(other.m_handle, INVALID_HANDLE_VALUE)) {}
    Handle& operator=(Handle&& other) noexcept {
        std::swap(m_handle, other.m_handle);
        return *this;
    }
    ~Handle() { close(); }

    [[nodiscard]] bool isOpen() const { return m_handle != INVALID_HANDLE_VALUE; }
    [[nodiscard]] HANDLE get() const { return m_handle; }

    bool close() {
        const auto handle = std::exchange(m_handle, INVALID_HANDLE_VALUE);
        return handle == INVALID_HANDLE_VALUE || ::CloseHandle(handle) != 0;
    }

private:
    HANDLE m_handle = INVALID_HANDLE_VALUE;
};

} // namespace vantor
