#include "store/kept_files.h"

#include <algorithm>
#include <vector>

namespace vantor {

void removeOldFiles(const FileStore& files, const std::filesystem::path& folder, std::size_t most,
                    const std::string& newest, const std::function<bool(const std::string& name)>& belongs) {
    auto others = files.list(folder);
    std::erase_if(others, [&](const auto& name) { return name == newest || !belongs(name); });
    std::ranges::sort(others);
    for (std::size_t i = 0; i + most <= others.size(); ++i)
        files.remove(folder / others[i]);
}

} // namespace vantor
