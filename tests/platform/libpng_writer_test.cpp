#include "platform/libpng/libpng_writer.h"
#include "tests/support/gray_picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace vantor {
namespace {

Bitmap noise(int width, int height) {
    std::mt19937 random(static_cast<unsigned>(width * 1000 + height));
    Bitmap picture(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            if (random() % 2 == 0)
                picture.setBlack(x, y);
        }
    }
    return picture;
}

std::uint32_t numberAt(const std::string& bytes, std::size_t at) {
    std::uint32_t number = 0;
    for (std::size_t i = at; i < at + 4; ++i)
        number = number << 8 | static_cast<std::uint8_t>(bytes.at(i));
    return number;
}

std::vector<std::string> chunkNames(const std::string& bytes) {
    std::vector<std::string> names;
    for (std::size_t at = 8; at < bytes.size(); at += 12 + numberAt(bytes, at))
        names.push_back(bytes.substr(at + 4, 4));
    return names;
}

TEST(LibpngWriter, KeepsEveryPixel) {
    for (const auto& [width, height] : std::vector<std::pair<int, int>>{
             {1, 1}, {7, 3}, {8, 8}, {9, 2}, {300, 300}, {600, 600}, {601, 5}, {1, 1000}}) {
        const auto picture = noise(width, height);
        const auto bytes = LibpngWriter().encode(picture);
        ASSERT_TRUE(bytes);
        const auto read = testing::decodePng(*bytes);
        ASSERT_TRUE(read);
        EXPECT_EQ(read->width, width);
        EXPECT_EQ(read->height, height);
        EXPECT_TRUE(read->pixels == testing::grayPicture(picture).pixels) << width << " x " << height;
    }
}

TEST(LibpngWriter, WritesOneBitGreyNotInterlacedAndNothingBesideThePicture) {
    const auto bytes = LibpngWriter().encode(noise(600, 400));
    ASSERT_TRUE(bytes);
    EXPECT_EQ(bytes, LibpngWriter().encode(noise(600, 400)));
    EXPECT_EQ(bytes->substr(0, 8), "\x89PNG\r\n\x1A\n");
    EXPECT_EQ(numberAt(*bytes, 16), 600U);
    EXPECT_EQ(numberAt(*bytes, 20), 400U);
    // Bits a sample, colour type, compression, filter, interlacing.
    EXPECT_EQ(bytes->substr(24, 5), std::string({1, 0, 0, 0, 0}));
    auto names = chunkNames(*bytes);
    EXPECT_EQ(names.front(), "IHDR");
    EXPECT_EQ(names.back(), "IEND");
    EXPECT_EQ(std::ranges::count(names, "IDAT"), static_cast<std::ptrdiff_t>(names.size()) - 2);
}

TEST(LibpngWriter, RefusesPicturesWithoutPixels) {
    for (const auto& [width, height] : {std::pair(0, 0), {0, 5}, {5, 0}})
        EXPECT_FALSE(LibpngWriter().encode(Bitmap(width, height)));
}

} // namespace
} // namespace vantor
