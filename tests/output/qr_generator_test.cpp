#include "output/qr_generator.h"
#include "platform/qrencode/qrencode_encoder.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace vantor {
namespace {

class QRGeneratorTest : public ::testing::Test {
protected:
    QrencodeEncoder encoder;
    QRGenerator generator{encoder};
};

// Of any size, larger or smaller than the code; each pixel takes the module under its centre.
TEST_F(QRGeneratorTest, StretchesModulesToExactlyTheSizeAskedFor) {
    for (const auto& [text, width] :
         {std::pair{std::string(), 23}, {"SET:12\nBRAND:Marvis", 27}, {std::string(2331, 'x'), 179}}) {
        const auto modules = generator.modules(text);
        ASSERT_TRUE(modules);
        ASSERT_EQ(modules->width(), width);
        for (const int size : {1, 2, 22, 23, 24, 69, 85, 127, 178, 179, 299, 300, 599, 600, 601, 1000}) {
            const auto picture = generator.generate(text, size);
            ASSERT_TRUE(picture);
            ASSERT_EQ(picture->width(), size);
            ASSERT_EQ(picture->height(), size);
            const int across = width;
            const auto middle = [&](int pixel) { return static_cast<int>((pixel + 0.5) * across / size); };
            for (int y = 0; y < size; ++y) {
                for (int x = 0; x < size; ++x)
                    ASSERT_EQ(picture->isBlack(x, y), modules->isBlack(middle(x), middle(y)));
            }
        }
    }
}

TEST_F(QRGeneratorTest, HasNoPictureOfNoTextOfNoSizeAndWhereTheEncoderHasNone) {
    for (const auto* const text : {"\xFF", "a\xC3", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80"}) {
        EXPECT_FALSE(generator.generate(text, 600));
        EXPECT_FALSE(generator.modules(text));
    }
    for (const int size : {0, -1, -600, std::numeric_limits<int>::min()})
        EXPECT_FALSE(generator.generate("x", size)) << size;
    struct FailingEncoder : QrEncoder {
        std::optional<Bitmap> encode(std::string_view) const override { return std::nullopt; }
    };
    EXPECT_FALSE(QRGenerator(FailingEncoder()).generate("x", 600));
    EXPECT_FALSE(QRGenerator(FailingEncoder()).modules("x"));
}

} // namespace
} // namespace vantor
