// Putting an earlier version back, all of it or one shoot, as a change like any other.
//
// What the scanner logged is kept: a shoot that stays keeps every entry it has and gets those of the version besides.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "edit/change.h"

namespace vantor {

// What a version holds. A store of which there is no copy stays as it is.
struct LibraryVersion {
    std::optional<std::vector<Shoot>> shoots;
    std::optional<CatalogData> catalog;
};

// Everything becomes as the version has it, and its first shoot the active one where that of now is not in it. `when` names
// it: "vandaag 14:32".
[[nodiscard]] Change restoreAll(const Library& library, LibraryVersion version, const std::string& when);

// This shoot alone becomes as the version has it, and the active one; one that is gone comes back in front.
[[nodiscard]] Change restoreShoot(const Library& library, Shoot shoot);

} // namespace vantor
