// What matters in the end: other programs read our codes, byte for byte, from pictures and from printed
// cards.

#include "output/qr_generator.h"
#include "platform/libpng/libpng_writer.h"
#include "platform/qrencode/qrencode_encoder.h"
#include "tests/output/code_readers.h"
#include "tests/output/printed_cards.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace vantor {
namespace {

using testing::readByZbar;
using testing::readByZxing;

// One of the readers stumbles over a few sizes of code at a few resolutions, whatever is in the code: it
// counts the modules by the whole pixels that the finder patterns are wide. Those are passed over here.
TEST(PrintedCards, AreReadByBothReaders) {
    struct Printing {
        BulkQRDensity density;
        int dotsPerInch;
        std::vector<std::size_t> bytes;
    };
    for (const auto& [density, dotsPerInch, bytes] : std::vector<Printing>{
             {BulkQRDensity::large, 150, {20, 80, 140, 200}},
             {BulkQRDensity::compact, 150, {20, 40, 60, 80, 100, 120, 150, 180, 200}},
             {BulkQRDensity::large, 300, {200, 450, 700, 900}},
             {BulkQRDensity::compact, 300, {200, 250, 300, 400, 500, 600, 700, 800, 900}},
             {BulkQRDensity::large, 600, {1000, 1500, 2000, 2213}},
             {BulkQRDensity::large, 590, {2331}},
             {BulkQRDensity::compact, 600, {900, 1000, 1100, 1200, 1400, 1600, 1900, 2200, 2331}},
         }) {
        SCOPED_TRACE(std::string(rawValue(density)) + " at " + std::to_string(dotsPerInch));
        std::mt19937 random(2);
        SetList sets;
        for (const auto count : bytes) {
            sets.push_back(testing::setOfBytes(count, random));
            ASSERT_EQ(sets.back().toQRText().size(), count);
        }
        const auto cards = testing::printedCards(sets, density, dotsPerInch);
        ASSERT_EQ(cards.size(), sets.size());
        for (std::size_t i = 0; i < sets.size(); ++i) {
            EXPECT_TRUE(readByZxing(cards[i]) == sets[i].toQRText()) << bytes[i] << " bytes";
            EXPECT_TRUE(readByZbar(cards[i]) == sets[i].toQRText()) << bytes[i] << " bytes";
        }
    }
}

TEST(GeneratedPictures, AreReadByBothReadersWhateverTheirTextsHold) {
    // Digits and capitals alone, line breaks, zero, what shifted character sets would change, and emoji.
    std::vector<std::string> texts{
        "0123456789", "SET:12", "geëxporteerd",        "a\nb\r\nc", std::string("a\0b", 3),
        "ßÿÀ¤",       "李娜",   "👩‍🎨🇳🇱", "\\000026",  "%%$GS\x1D"};
    std::mt19937 random(3);
    for (const std::size_t bytes : {20U, 60U, 120U, 200U, 400U, 700U, 900U})
        texts.push_back(testing::setOfBytes(bytes, random).toQRText());
    const QrencodeEncoder encoder;
    for (const auto& text : texts) {
        const auto picture = QRGenerator(encoder).generate(text, 600);
        ASSERT_TRUE(picture);
        const auto png = LibpngWriter().encode(*picture);
        ASSERT_TRUE(png);
        const auto seen = testing::decodePng(*png);
        ASSERT_TRUE(seen);
        EXPECT_EQ(readByZxing(*seen), text);
        EXPECT_EQ(readByZbar(*seen), text);
    }
}

} // namespace
} // namespace vantor
