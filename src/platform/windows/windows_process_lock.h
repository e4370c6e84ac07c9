// WindowsProcessLock: ProcessLock on a file that its holder keeps open for itself alone.
//
// The system closes the file when its holder ends, however that was, and so frees the lock. What the holder leaves
// for the others stands in a second file beside it, as the first cannot be read.
//
// Compiled but never run so far: nobody has tried the program on Windows.
#pragma once

#include "platform/process_lock.h"
#include "platform/windows/handle.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace vantor {

class WindowsProcessLock final : public ProcessLock {
public:
    // Makes nothing yet. Taking it makes the file and missing folders.
    explicit WindowsProcessLock(std::filesystem::path file) : m_file(std::move(file)) {}

    [[nodiscard]] Attempt tryTake() override;
    void release() override;
    void tell(std::string_view text) override;
    [[nodiscard]] std::string told() const override;

private:
    [[nodiscard]] std::filesystem::path toldFile() const;

    std::filesystem::path m_file;
    Handle m_held;
};

} // namespace vantor
