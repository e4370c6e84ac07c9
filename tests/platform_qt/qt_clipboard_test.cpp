#include "platform/qt/qt_clipboard.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <utility>

namespace vantor {
namespace {

QImage pasted() {
    return QGuiApplication::clipboard()->image();
}

void expectSamePixels(const QImage& image, const Bitmap& picture) {
    ASSERT_EQ(image.width(), picture.width());
    ASSERT_EQ(image.height(), picture.height());
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            ASSERT_EQ(image.pixelColor(x, y), picture.isBlack(x, y) ? QColor(Qt::black) : QColor(Qt::white))
                << x << ", " << y;
        }
    }
}

// Without symmetry, so that turned or mirrored pixels are noticed.
Bitmap sample(int width, int height) {
    Bitmap picture(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            if ((x * x + 3 * y + x * y) % 7 < 3)
                picture.setBlack(x, y);
        }
    }
    return picture;
}

TEST(QtClipboardTest, GivesThePictureBackPixelForPixel) {
    // Around the borders of bytes and of the four bytes to which the toolkit fills up its rows.
    for (const auto& [width, height] :
         {std::pair(1, 1), {7, 3}, {8, 8}, {9, 5}, {31, 4}, {32, 2}, {33, 2}, {512, 512}}) {
        SCOPED_TRACE(width);
        const auto picture = sample(width, height);
        QtClipboard().setPicture(picture);
        expectSamePixels(pasted(), picture);
    }
}

TEST(QtClipboardTest, TakesThePlaceOfWhatWasThereAndOnlyClearsItForAPictureWithoutPixels) {
    for (const int edge : {3, 0}) {
        QGuiApplication::clipboard()->setText(QStringLiteral("tekst"));
        QtClipboard().setPicture(sample(edge, edge));
        EXPECT_EQ(QGuiApplication::clipboard()->text(), QString());
        EXPECT_EQ(pasted().isNull(), edge == 0);
    }
}

} // namespace
} // namespace vantor
