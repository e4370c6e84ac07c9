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

std::vector<std::string> listed(const Texts& texts) {
    return {texts.begin(), texts.end()};
}

static_assert(std::random_access_iterator<Texts::iterator>);
static_assert(std::random_access_iterator<Texts::const_iterator>);
static_assert(std::is_nothrow_move_constructible_v<Texts>);

TEST(DoubleEndedVector, StartsEmpty) {
    const Texts texts;
    EXPECT_TRUE(texts.empty());
    EXPECT_EQ(texts.size(), 0U);
    EXPECT_EQ(texts.begin(), texts.end());
}

TEST(DoubleEndedVector, KeepsTheOrderOfBothEnds) {
    Texts texts{"c", "d"};
    texts.push_front("b");
    texts.push_back("e");
    texts.push_front("a");
    EXPECT_EQ(listed(texts), (std::vector<std::string>{"a", "b", "c", "d", "e"}));
    EXPECT_EQ(texts.front(), "a");
    EXPECT_EQ(texts.back(), "e");
    EXPECT_EQ(texts[2], "c");
}

TEST(DoubleEndedVector, RemovesFromBothHalvesAndKeepsTheRestInOrder) {
    Texts texts{"x", "d"};
    texts.push_front("x");
    texts.push_front("a");
    EXPECT_EQ(texts.removeIf([](const auto& text) { return text == "x"; }), 2U);
    EXPECT_EQ(listed(texts), (std::vector<std::string>{"a", "d"}));
}

TEST(DoubleEndedVector, ChangesThroughItsIterators) {
    Texts texts{"b", "a"};
    texts.push_front("c");
    std::sort(texts.begin(), texts.end());
    EXPECT_EQ(listed(texts), (std::vector<std::string>{"a", "b", "c"}));
}

TEST(DoubleEndedVector, HasIteratorsThatCountAndCompareAcrossItsHalves) {
    Texts texts{"c", "d"};
    texts.push_front("b");
    texts.push_front("a");
    const auto third = texts.begin() + 2;
    EXPECT_EQ(*third, "c");
    EXPECT_EQ(*(third - 1), "b");
    EXPECT_EQ(third[-2], "a");
    EXPECT_EQ(third - texts.begin(), 2);
    EXPECT_LT(texts.begin(), third);
    EXPECT_GT(texts.end(), third);
    EXPECT_LE(third, third);
    EXPECT_FALSE(third < texts.begin());
}

TEST(DoubleEndedVector, IsNotEmptyWithOneElementAtEitherEnd) {
    Texts front;
    front.push_front("a");
    EXPECT_FALSE(front.empty());
    Texts back;
    back.push_back("a");
    EXPECT_FALSE(back.empty());
    EXPECT_EQ(front.front(), back.back());
}

TEST(DoubleEndedVector, IsEmptyAfterBeingCleared) {
    Texts texts{"a"};
    texts.push_front("b");
    texts.clear();
    EXPECT_TRUE(texts.empty());
}

RC_GTEST_PROP(DoubleEndedVector, DoesAsADequeDoes, (const std::vector<std::pair<int, int>>& steps)) {
    DoubleEndedVector<int> list;
    std::deque<int> model;
    for (const auto& [kind, value] : steps) {
        switch (static_cast<unsigned>(kind) % 4) {
        case 0:
            list.push_front(value);
            model.push_front(value);
            break;
        case 1:
            list.push_back(value);
            model.push_back(value);
            break;
        case 2:
            list.emplace_back() = value;
            model.emplace_back() = value;
            break;
        default:
            list.removeIf([value = value](int each) { return each == value; });
            std::erase(model, value);
        }
        RC_ASSERT(std::equal(list.begin(), list.end(), model.begin(), model.end()));
    }
}

} // namespace
} // namespace vantor
