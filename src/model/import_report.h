// ImportReport: which lines of a list brought nothing when it was imported, and why.
#pragma once

#include <cstddef>
#include <vector>

namespace vantor {

struct LeftOutLine {
    enum class Why {
        // Of a set, neither a brand nor items; of a product, no name.
        SaysTooLittle,
        // Its name reads as the title of a column.
        ReadsAsHeader,
        // A product of that name is there already, or stands further up.
        IsThereAlready,
    };
    // As editors count them, from 1.
    std::size_t line;
    Why why;

    friend bool operator==(const LeftOutLine&, const LeftOutLine&) = default;
};

// In the order of the lines.
using ImportReport = std::vector<LeftOutLine>;

} // namespace vantor
