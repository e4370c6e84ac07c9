// PosixProcessLock: ProcessLock on a file.
//
// - The kernel's lock on the open file decides: it is free at once when its holder has ended, however that was.
//   The file itself stays, and what stands in it then is nobody's.
// - Where the file system knows no locks, the file decides. It names its holder by process, start and boot; one that
//   no longer runs, or ran before the machine was started, holds nothing. Taking it over lasts a tenth of a second.
// - The file's folder is locked with it, so that neither a file that cannot be made, as on a full disk, nor one that
//   was removed lets a second process in.
#pragma once

#include "platform/posix/descriptor.h"
#include "platform/process_lock.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace vantor {

class PosixProcessLock final : public ProcessLock {
public:
    // The call that locks an open file, as flock(2).
    using KernelLock = int (*)(int descriptor, int operation);

    // Makes nothing yet. Taking it makes the file and missing folders, which only the user may enter.
    explicit PosixProcessLock(std::filesystem::path file);
    PosixProcessLock(std::filesystem::path file, KernelLock kernelLock);
    PosixProcessLock(const PosixProcessLock&) = delete;
    PosixProcessLock& operator=(const PosixProcessLock&) = delete;
    ~PosixProcessLock() override;

    [[nodiscard]] Attempt tryTake() override;
    void release() override;
    void tell(std::string_view text) override;
    [[nodiscard]] std::string told() const override;

private:
    [[nodiscard]] std::optional<Attempt> tryOnce();
    [[nodiscard]] bool isHeld() const { return m_held.isOpen() || m_heldFolder.isOpen(); }
    [[nodiscard]] std::optional<bool> tryKernelLock(const Descriptor& file) const;
    [[nodiscard]] Attempt tryWithoutKernel();
    void writeHolder(std::string_view text);

    std::filesystem::path m_file;
    KernelLock m_kernelLock;
    // Open for as long as the lock is held, or at least one of them.
    Descriptor m_held;
    Descriptor m_heldFolder;
    bool m_heldByKernel = false;
};

} // namespace vantor
