// A set's headline in the pieces it is made of.
#pragma once

#include "model/shoot.h"

#include <string>
#include <vector>

namespace vantor {

// Joined, they are set.headline(). What the user wrote stands in pieces of its own, so that whoever sets the line can
// keep its letters from reordering the others.
[[nodiscard]] std::vector<std::string> headlinePieces(const SetData& set);

} // namespace vantor
