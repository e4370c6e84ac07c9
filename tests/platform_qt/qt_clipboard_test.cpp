#include "platform/qt/qt_clipboard.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>
#include <ostream>

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

struct Size {
    int width;
    int height;
};

void PrintTo(const Size& each, std::ostream* out) {
    *out << each.width << " x " << each.height;
}

class QtClipboardTest : public ::testing::TestWithParam<Size> {};

TEST_P(QtClipboardTest, GivesThePictureBackPixelForPixel) {
    const auto picture = sample(GetParam().width, GetParam().height);
    QtClipboard().setPicture(picture);
    expectSamePixels(pasted(), picture);
}

// Around the borders of bytes and of the four bytes to which the toolkit fills up its rows.
INSTANTIATE_TEST_SUITE_P(All, QtClipboardTest,
                         ::testing::Values(Size{1, 1}, Size{7, 3}, Size{8, 8}, Size{9, 5}, Size{31, 4},
                                           Size{32, 2}, Size{33, 2}, Size{512, 512}));

TEST(QtClipboardPictureTest, SurvivesBecomingAFileOfAnotherProgram) {
    const auto picture = sample(45, 45);
    QtClipboard().setPicture(picture);
    for (const char* const format : {"PNG", "BMP", "PPM"}) {
        QBuffer file;
        file.open(QIODevice::WriteOnly);
        ASSERT_TRUE(pasted().save(&file, format)) << format;
        expectSamePixels(QImage::fromData(file.data(), format), picture);
    }
}

TEST(QtClipboardPictureTest, TakesThePlaceOfWhatWasThere) {
    QGuiApplication::clipboard()->setText(QStringLiteral("tekst"));
    QtClipboard().setPicture(sample(3, 3));
    EXPECT_FALSE(QGuiApplication::clipboard()->mimeData()->hasText());
    EXPECT_TRUE(QGuiApplication::clipboard()->mimeData()->hasImage());
}

TEST(QtClipboardPictureTest, OnlyClearsForAPictureWithoutPixels) {
    QGuiApplication::clipboard()->setText(QStringLiteral("tekst"));
    QtClipboard().setPicture(Bitmap(0, 0));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QString());
    EXPECT_TRUE(pasted().isNull());
}

} // namespace
} // namespace vantor
