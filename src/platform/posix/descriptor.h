// Descriptor: an open file, closed when its owner goes. Beside it what every system call on one needs.
#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <utility>

namespace vantor {

// Repeats a system call that a signal interrupted. Not for ever: a file system that does nothing but report
// interruptions would freeze whoever waits for the file.
template <typename Call>
auto uninterrupted(Call call) {
    constexpr int kMostTries = 1000;
    auto result = call();
    for (int tries = 1; result < 0 && errno == EINTR && tries < kMostTries; ++tries)
        result = call();
    return result;
}

class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : m_number(number) {}
    Descriptor(Descriptor&& other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(m_number, other.m_number);
        return *this;
    }
    ~Descriptor() {
        if (m_number >= 0)
            ::close(m_number);
    }

    [[nodiscard]] bool isOpen() const { return m_number >= 0; }
    [[nodiscard]] int number() const { return m_number; }

    // Some file systems tell only here that something was not written. An interrupted close has closed.
    bool close() {
        const int result = ::close(std::exchange(m_number, -1));
        return result == 0 || errno == EINTR;
    }

private:
    int m_number = -1;
};

// No program that this one starts inherits it.
[[nodiscard]] inline Descriptor openFile(const std::filesystem::path& path, int flags, mode_t mode = 0) {
    return Descriptor(uninterrupted([&] { return ::open(path.c_str(), flags | O_CLOEXEC, mode); }));
}

} // namespace vantor
