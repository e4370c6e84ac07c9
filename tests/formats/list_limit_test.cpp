#include "formats/list_limit.h"

#include <gtest/gtest.h>

namespace vantor::testing {
namespace {

TEST(ListLimit, CountsTheLinesThatHoldMoreThanWhiteSpace) {
    EXPECT_EQ(lineCount(""), 0U);
    EXPECT_EQ(lineCount("\uFEFF\n \t\r\n\u00A0\n"), 0U);
    EXPECT_EQ(lineCount("\uFEFFSet;Merk\r\n\r\n1;Marvis\u2028 \n2;\u0085;"), 4U);
}

} // namespace
} // namespace vantor::testing
