#include "output/qr_generator.h"
#include "platform/libpng/libpng_writer.h"
#include "platform/qrencode/qrencode_encoder.h"
#include "tests/output/code_readers.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vantor {
namespace {

// Hands out one picture, whatever the text, and remembers the bytes.
class FixedEncoder final : public QrEncoder {
public:
    explicit FixedEncoder(Bitmap picture) : m_picture(std::move(picture)) {}

    [[nodiscard]] std::optional<Bitmap> encode(std::string_view bytes) const override {
        asked.emplace_back(bytes);
        return m_picture;
    }

    mutable std::vector<std::string> asked;

private:
    Bitmap m_picture;
};

class FailingEncoder final : public QrEncoder {
public:
    [[nodiscard]] std::optional<Bitmap> encode(std::string_view) const override { return std::nullopt; }
};

bool isSame(const Bitmap& a, const Bitmap& b) {
    return a.width() == b.width() && a.height() == b.height() &&
           testing::grayPicture(a).pixels == testing::grayPicture(b).pixels;
}

class QRGeneratorTest : public ::testing::Test {
protected:
    QrencodeEncoder encoder;
    QRGenerator generator{encoder};
};

TEST_F(QRGeneratorTest, EmptyTextMakesACodeTwentyThreeUnitsWide) {
    ASSERT_TRUE(generator.modules(""));
    EXPECT_EQ(generator.modules("")->width(), 23);
    const auto picture = generator.generate("", 600);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->width(), 600);
}

TEST_F(QRGeneratorTest, PictureIsExactlyAsLargeAsAskedFor) {
    for (const int size : {1, 2, 22, 23, 24, 85, 127, 299, 300, 599, 600, 601, 1000}) {
        for (const auto* const text : {"", "SET:12\nBRAND:Marvis"}) {
            const auto picture = generator.generate(text, size);
            ASSERT_TRUE(picture);
            EXPECT_EQ(picture->width(), size);
            EXPECT_EQ(picture->height(), size);
        }
    }
}

TEST_F(QRGeneratorTest, StretchesModulesByAFraction) {
    const auto modules = generator.modules("");
    const auto picture = generator.generate("", 300);
    ASSERT_TRUE(modules && picture);
    // 300/23 is 13.04: the pixel takes the module under its centre, in both directions alike.
    for (int y = 0; y < 300; ++y) {
        for (int x = 0; x < 300; ++x) {
            const auto column = static_cast<int>((x + 0.5) * 23 / 300);
            const auto row = static_cast<int>((y + 0.5) * 23 / 300);
            ASSERT_EQ(picture->isBlack(x, y), modules->isBlack(column, row)) << x << ", " << y;
        }
    }
}

TEST_F(QRGeneratorTest, ModulesDifferByOnePixelAtMost) {
    // Alternating columns of a picture seven wide, stretched to 24: 3 or 4 pixels each.
    Bitmap stripes(7, 7);
    for (int y = 0; y < 7; ++y) {
        for (int x = 0; x < 7; x += 2)
            stripes.setBlack(x, y);
    }
    const auto wide = stretched(stripes, 24);
    int run = 1;
    for (int x = 1; x < 24; ++x) {
        if (wide.isBlack(x, 0) == wide.isBlack(x - 1, 0)) {
            ++run;
        } else {
            EXPECT_TRUE(run == 3 || run == 4) << run;
            run = 1;
        }
    }
}

TEST_F(QRGeneratorTest, WholeScaleRepeatsEveryModuleEqually) {
    const auto modules = generator.modules("x");
    ASSERT_TRUE(modules);
    const auto picture = stretched(*modules, 23 * 3);
    for (int y = 0; y < 23 * 3; ++y) {
        for (int x = 0; x < 23 * 3; ++x)
            ASSERT_EQ(picture.isBlack(x, y), modules->isBlack(x / 3, y / 3));
    }
    EXPECT_TRUE(isSame(stretched(*modules, 23), *modules));
}

TEST_F(QRGeneratorTest, LeavesOneQuietModuleOnEachSide) {
    const auto picture = generator.generate("SET:12", 600);
    ASSERT_TRUE(picture);
    // Version 1: 600/23 is 26.09 pixels.
    for (int i = 0; i < 600; ++i) {
        for (int depth = 0; depth < 26; ++depth) {
            EXPECT_FALSE(picture->isBlack(i, depth));
            EXPECT_FALSE(picture->isBlack(i, 599 - depth));
            EXPECT_FALSE(picture->isBlack(depth, i));
            EXPECT_FALSE(picture->isBlack(599 - depth, i));
        }
    }
    EXPECT_TRUE(picture->isBlack(27, 27));
}

TEST_F(QRGeneratorTest, EncodesTheBytesOfUtf8) {
    const FixedEncoder fixed(Bitmap(23, 23));
    ASSERT_TRUE(QRGenerator(fixed).generate("geëxporteerd", 300));
    EXPECT_EQ(fixed.asked, std::vector<std::string>{"ge\xC3\xABxporteerd"});
    const auto picture = generator.generate("geëxporteerd", 600);
    ASSERT_TRUE(picture);
    EXPECT_EQ(testing::readByZxing(testing::grayPicture(*picture)), "ge\xC3\xABxporteerd");
}

TEST_F(QRGeneratorTest, TakesAsManyBytesAsTheLargestCodeHolds) {
    EXPECT_TRUE(generator.generate(std::string(2331, 'x'), 600));
    EXPECT_FALSE(generator.generate(std::string(2332, 'x'), 600));
    // Bytes count, not characters.
    std::string accents;
    for (int i = 0; i < 1165; ++i)
        accents += "é";
    EXPECT_TRUE(generator.generate(accents + "x", 600));
    EXPECT_FALSE(generator.generate(accents + "é", 600));
    EXPECT_FALSE(generator.modules(accents + "é"));
}

TEST_F(QRGeneratorTest, RefusesWhatIsNotUtf8) {
    for (const auto* const text : {"\xFF", "a\xC3", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80"}) {
        EXPECT_FALSE(generator.generate(text, 600));
        EXPECT_FALSE(generator.modules(text));
    }
}

TEST_F(QRGeneratorTest, RefusesSizesBelowOne) {
    for (const int size : {0, -1, -600, std::numeric_limits<int>::min()})
        EXPECT_FALSE(generator.generate("x", size)) << size;
}

TEST_F(QRGeneratorTest, ShrinksToFewerPixelsThanModules) {
    const std::string longest(2331, 'x');
    const auto modules = generator.modules(longest);
    ASSERT_TRUE(modules);
    for (const int size : {1, 2, 3, 90, 178}) {
        const auto picture = generator.generate(longest, size);
        ASSERT_TRUE(picture);
        EXPECT_EQ(picture->width(), size);
        const auto middle = [&](int pixel) { return static_cast<int>((pixel + 0.5) * 179 / size); };
        for (int y = 0; y < size; ++y) {
            for (int x = 0; x < size; ++x)
                ASSERT_EQ(picture->isBlack(x, y), modules->isBlack(middle(x), middle(y)));
        }
    }
}

TEST_F(QRGeneratorTest, HasNoPictureWhereTheEncoderHasNone) {
    const FailingEncoder failing;
    EXPECT_FALSE(QRGenerator(failing).generate("x", 600));
    EXPECT_FALSE(QRGenerator(failing).modules("x"));
}

TEST_F(QRGeneratorTest, MakesEqualPicturesOfEqualTexts) {
    const auto one = generator.generate("SET:12", 600);
    ASSERT_TRUE(one);
    static_cast<void>(generator.generate("SET:13", 600));
    EXPECT_TRUE(isSame(*one, *generator.generate("SET:12", 600)));
    EXPECT_FALSE(isSame(*one, *generator.generate("SET:13", 600)));
}

TEST_F(QRGeneratorTest, PngFileHoldsThePicture) {
    const auto picture = generator.generate("SET:12\nBRAND:Søster", 600);
    ASSERT_TRUE(picture);
    const auto bytes = LibpngWriter().encode(*picture);
    ASSERT_TRUE(bytes);
    const auto read = testing::decodePng(*bytes);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->width, 600);
    EXPECT_EQ(read->height, 600);
    EXPECT_TRUE(read->pixels == testing::grayPicture(*picture).pixels);
    // Bits a sample and colour type: one bit of grey.
    EXPECT_EQ(bytes->substr(24, 2), std::string({1, 0}));
    EXPECT_LT(bytes->size(), 3000U);
}

} // namespace
} // namespace vantor
