// tableOf(): the rows of a test's table, for a loop over them, which says what a row that fails is about.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace vantor::testing {

// A text and what is made of it.
struct TextCase {
    std::string behaviour;
    std::string text;
    std::string expected;
};

template <typename Row, typename... Rows>
std::vector<Row> tableOf(Row first, Rows... rest) {
    return {std::move(first), Row(std::move(rest))...};
}

} // namespace vantor::testing
