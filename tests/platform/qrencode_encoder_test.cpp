#include "platform/qrencode/qrencode_encoder.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vantor {
namespace {

// The finder pattern whose upper left corner is there, drawn by its three rings.
bool hasFinderAt(const Bitmap& code, int left, int top) {
    for (int y = 0; y < 7; ++y) {
        for (int x = 0; x < 7; ++x) {
            const bool isRing = x == 0 || x == 6 || y == 0 || y == 6;
            const bool isCore = x >= 2 && x <= 4 && y >= 2 && y <= 4;
            if (code.isBlack(left + x, top + y) != (isRing || isCore))
                return false;
        }
    }
    return true;
}

TEST(QrencodeEncoder, TakesTheSmallestCodeThatHoldsTheBytes) {
    // What codes of versions 1, 2, 10 and 40 hold in 8-bit mode at level M, to the byte.
    const std::vector<std::pair<std::size_t, int>> cases{
        {0, 23},   {1, 23},   {14, 23},    {15, 27},    {26, 27},    {27, 31},
        {213, 59}, {214, 63}, {2213, 175}, {2214, 179}, {2331, 179},
    };
    for (const auto& [bytes, width] : cases) {
        const auto code = QrencodeEncoder().encode(std::string(bytes, 'x'));
        ASSERT_TRUE(code) << bytes;
        EXPECT_EQ(code->width(), width) << bytes;
        EXPECT_EQ(code->height(), width) << bytes;
    }
}

TEST(QrencodeEncoder, DigitsCapitalsAndBytesOfValueZeroTakeAsMuchRoomAsOtherBytes) {
    using namespace std::string_view_literals;
    for (const auto text : {"012345678901234"sv, "ABCDEFGHIJKLMNO"sv, "a\0bcdefghijklmno"sv,
                            "\x93\x5F\x93\x5F\x93\x5F\x93\x5F\x93\x5F\x93\x5F\x93\x5F\x93"sv})
        EXPECT_EQ(QrencodeEncoder().encode(text)->width(), 27) << text;
}

TEST(QrencodeEncoder, RefusesMoreBytesThanTheLargestCodeHolds) {
    EXPECT_FALSE(QrencodeEncoder().encode(std::string(2332, 'x')));
    EXPECT_FALSE(QrencodeEncoder().encode(std::string(100'000, 'x')));
    // Neither do digits fit that a numeric mode would hold.
    EXPECT_FALSE(QrencodeEncoder().encode(std::string(2332, '1')));
}

TEST(QrencodeEncoder, SurroundsACodeOfLevelMWithOneQuietModule) {
    for (const std::size_t bytes : {0U, 50U, 100U, 500U, 2331U}) {
        SCOPED_TRACE(bytes);
        const auto code = QrencodeEncoder().encode(std::string(bytes, 'x'));
        ASSERT_TRUE(code);
        const int last = code->width() - 1;
        for (int i = 0; i <= last; ++i) {
            for (const auto& [x, y] : {std::pair(i, 0), {i, last}, {0, i}, {last, i}})
                EXPECT_FALSE(code->isBlack(x, y)) << x << ", " << y;
        }
        EXPECT_TRUE(hasFinderAt(*code, 1, 1));
        EXPECT_TRUE(hasFinderAt(*code, last - 7, 1));
        EXPECT_TRUE(hasFinderAt(*code, 1, last - 7));
        EXPECT_FALSE(hasFinderAt(*code, last - 7, last - 7));
        // The format's first two bits, left of the upper left finder's foot, under the mask 10101...: level M
        // is 00.
        EXPECT_TRUE(code->isBlack(1, 9));
        EXPECT_FALSE(code->isBlack(2, 9));
    }
}

} // namespace
} // namespace vantor
