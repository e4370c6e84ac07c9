#include "base/color.h"

#include <gtest/gtest.h>

namespace vantor {
namespace {

TEST(Rgb, ContrastIsThatOfTheGuidelines) {
    const Rgb white{255, 255, 255};
    EXPECT_DOUBLE_EQ(contrast(white, {0, 0, 0}), 21);
    EXPECT_DOUBLE_EQ(contrast({0, 0, 0}, white), 21);
    EXPECT_DOUBLE_EQ(contrast({1, 2, 3}, {1, 2, 3}), 1);
    EXPECT_NEAR(contrast(white, {255, 0, 0}), 3.998, 0.001);
    EXPECT_NEAR(contrast(white, {0, 255, 0}), 1.372, 0.001);
    EXPECT_NEAR(contrast(white, {0, 0, 255}), 8.592, 0.001);
    // Where the curve is a straight line.
    EXPECT_NEAR(contrast({0, 0, 0}, {10, 10, 10}), 1.061, 0.001);
}

} // namespace
} // namespace vantor
