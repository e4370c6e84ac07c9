// HandedFiles: shoot files that are to be opened, and what the one who hands them over wants to know of it.
#pragma once

#include "base/timestamp.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

namespace vantor::ui {

struct HandedFiles {
    // Opened in this order.
    std::vector<std::filesystem::path> files;
    // Another process was handed these files at this time and ended before it said that it had opened them. A file
    // whose shoot it did store is not opened once more.
    std::optional<Timestamp> handedBeforeAt;
    // Asked right before a shoot is stored: whether whoever handed the files over still waits for that.
    std::function<bool()> isWanted;
    // Called once, on the user-interface thread: true when every file was opened, or was told to be none that can
    // be; false when the rest was given up, as nobody wanted it or its window closed.
    std::function<void(bool opened)> whenDone;
};

} // namespace vantor::ui
