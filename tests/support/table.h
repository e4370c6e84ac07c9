// tableOf(): the rows of a test's table, for a loop over them, which says what a row that fails is about; and long
// texts to stand in them.
#pragma once

#include <string>
#include <string_view>
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

inline std::string repeated(int count, std::string_view text) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

} // namespace vantor::testing
