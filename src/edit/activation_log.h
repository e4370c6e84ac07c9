// What is known of a shoot's log from two sides, put together.
#pragma once

#include "model/shoot.h"

#include <vector>

namespace vantor {

// `log` with the entries of `other` that it lacks, oldest first; as it is where it lacks none. An entry that stands in both
// twice stands in the result twice.
[[nodiscard]] std::vector<SetActivation> mergedLog(std::vector<SetActivation> log,
                                                   std::vector<SetActivation> other);

} // namespace vantor
