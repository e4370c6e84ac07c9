// The search in the list of sets.
#pragma once

#include "model/shoot.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace vantor {

// The places, in order, of the sets whose brand, model, number or a garment's name holds the query, ignoring
// case and white space around it. A query of nothing but white space matches every set. Colours, location,
// e-mail and tag count are not searched.
[[nodiscard]] std::vector<std::size_t> filteredSets(const SetList& sets, std::string_view query);

} // namespace vantor
