// A fuzzer's claim: what does not hold ends the process, which the fuzzer reports with the input.
#pragma once

#include <cstdlib>

namespace vantor {

inline void require(bool holds) {
    if (!holds)
        std::abort();
}

} // namespace vantor
