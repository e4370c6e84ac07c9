// The measures of this program, by room.
#pragma once

#include <cstddef>

namespace vantor::bench {

// Codes and cards; `program` is this program's own path.
void enlistCards(const char* program);
// Loading, saving, importing, searching and scanning.
void enlistStores();

// Exports so many compact cards, out of 10,000 sets held in memory, to a file; the result is an exit status.
int exportCards(std::size_t count, const char* path);

} // namespace vantor::bench
