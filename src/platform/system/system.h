// What stands behind the interfaces to the operating system on the one that the program is built for.
#pragma once

#ifdef _WIN32
#include "platform/windows/windows_file_store.h"
#include "platform/windows/windows_process_lock.h"
#else
#include "platform/posix/posix_file_store.h"
#include "platform/posix/posix_process_lock.h"
#endif

namespace vantor {

#ifdef _WIN32
using SystemFileStore = WindowsFileStore;
using SystemProcessLock = WindowsProcessLock;
#else
using SystemFileStore = PosixFileStore;
using SystemProcessLock = PosixProcessLock;
#endif

} // namespace vantor
