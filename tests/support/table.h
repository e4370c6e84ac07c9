// tableOf(): the rows of a test's table, for a loop over them. SCOPED_TRACE tells which one failed.
#pragma once

#include <utility>
#include <vector>

namespace vantor::testing {

template <typename Row, typename... Rows>
std::vector<Row> tableOf(Row first, Rows... rest) {
    return {std::move(first), Row(std::move(rest))...};
}

} // namespace vantor::testing
