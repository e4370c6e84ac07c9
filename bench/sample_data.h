// Made-up shoots and catalogues of any size; the same ones at every run.
#pragma once

#include "model/shoot.h"

#include <cstddef>
#include <string>
#include <vector>

namespace vantor::bench {

// A set whose card's text takes `textBytes` bytes, if that is enough for its other fields.
[[nodiscard]] SetData sampleSet(std::size_t number, std::size_t items, std::size_t textBytes = 0);
[[nodiscard]] SetList sampleSets(std::size_t count, std::size_t items, std::size_t textBytes = 0);
// One shoot of so many sets of five garments.
[[nodiscard]] std::vector<Shoot> sampleShoots(std::size_t sets);
[[nodiscard]] std::string sampleSetCsv(std::size_t lines);
[[nodiscard]] std::string sampleCatalogCsv(std::size_t products);

} // namespace vantor::bench
