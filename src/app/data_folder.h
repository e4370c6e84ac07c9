// Where the user's data stand: "Vantor" in the folder that the XDG Base Directory standard names.
#pragma once

#include <filesystem>

namespace vantor {

// Takes base folders that are not absolute out of the environment: the standard has them ignored, but the toolkit
// would use them, so that data and settings depended on where the program was started. Before anything asks for one.
void ignoreRelativeBaseFolders();

[[nodiscard]] std::filesystem::path dataFolder();

} // namespace vantor
