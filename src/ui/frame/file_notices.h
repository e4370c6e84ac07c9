// What the notice strip tells of files that the user saves and opens, and of codes that could not be made for them.
#pragma once

#include "ui/frame/services.h"

#include <filesystem>

namespace vantor::ui {

// That the file was written, with ways to it, or why it was not.
void tellSaved(const Services& services, const std::filesystem::path& path, const FileResult& result);

// Why a file that was chosen changed nothing.
void tellUnreadable(const Services& services, const std::filesystem::path& path, FileStore::ReadFailure why);
void tellNoUtf8(const Services& services, const std::filesystem::path& path);

// That nothing was saved or copied, because a code cannot hold that much.
void tellTooLongForCode(const Services& services);

} // namespace vantor::ui
