// Keeping a number of older files in a folder, oldest out first.
#pragma once

#include "platform/file_store.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>

namespace vantor {

// Of the folder's files that `belongs` picks keeps `most`: the newest, and of the others those that stand last when
// they are sorted by name. Names that hold a date sort by it, as far as the clock was right; the newest one stays
// in any case.
void removeOldFiles(const FileStore& files, const std::filesystem::path& folder, std::size_t most,
                    const std::string& newest, const std::function<bool(const std::string& name)>& belongs);

} // namespace vantor
