#include "formats/list_limit.h"

#include "base/text.h"
#include "formats/csv_row.h"

namespace vantor {

std::size_t lineCount(std::string_view text) {
    Lines lines(withoutByteOrderMark(text));
    std::size_t count = 0;
    while (nextFilledLine(lines))
        ++count;
    return count;
}

} // namespace vantor
