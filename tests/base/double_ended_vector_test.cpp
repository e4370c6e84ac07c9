#include "base/double_ended_vector.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <deque>
#include <string>
#include <type_traits>
#include <vector>

namespace vantor {
namespace {

using Texts = DoubleEndedVector<std::string>;

static_assert(std::random_access_iterator<Texts::iterator>);
static_assert(std::random_access_iterator<Texts::const_iterator>);
static_assert(std::is_nothrow_move_constructible_v<Texts>);

TEST(DoubleEndedVector, HasIteratorsThatChangeCountAndCompareAcrossItsHalves) {
    Texts texts{"a", "d"};
    texts.push_front("b");
    texts.push_front("c");
    std::sort(texts.begin(), texts.end());
    EXPECT_EQ(std::vector<std::string>(texts.begin(), texts.end()),
              (std::vector<std::string>{"a", "b", "c", "d"}));
    EXPECT_EQ(texts[2], "c");
    const auto third = texts.begin() + 2;
    EXPECT_EQ(*(third - 1), "b");
    EXPECT_EQ(third[-2], "a");
    EXPECT_EQ(third - texts.begin(), 2);
    EXPECT_LT(texts.begin(), third);
    EXPECT_GT(texts.end(), third);
    EXPECT_LE(third, third);
    EXPECT_FALSE(third < texts.begin());
}

RC_GTEST_PROP(DoubleEndedVector, DoesAsADequeDoes, (const std::vector<std::pair<int, int>>& steps)) {
    DoubleEndedVector<int> list;
    std::deque<int> model;
    const auto both = [&](const auto& act) {
        act(list);
        act(model);
    };
    for (const auto& [kind, value] : steps) {
        switch (static_cast<unsigned>(kind) % 5) {
        case 0:
            both([value = value](auto& each) { each.push_front(value); });
            break;
        case 1:
            both([value = value](auto& each) { each.push_back(value); });
            break;
        case 2:
            both([value = value](auto& each) { each.emplace_back() = value; });
            break;
        case 3:
            if (value % 8 == 0)
                both([](auto& each) { each.clear(); });
            break;
        default:
            RC_ASSERT(list.removeIf([value = value](int each) { return each == value; }) ==
                      std::erase(model, value));
        }
        RC_ASSERT(std::equal(list.begin(), list.end(), model.begin(), model.end()));
        RC_ASSERT(list.size() == model.size());
        RC_ASSERT(list.empty() == model.empty());
        if (!model.empty()) {
            RC_ASSERT(list.front() == model.front());
            RC_ASSERT(list.back() == model.back());
        }
    }
}

} // namespace
} // namespace vantor
