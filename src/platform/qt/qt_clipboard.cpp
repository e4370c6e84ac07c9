#include "platform/qt/qt_clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <algorithm>

namespace vantor {
namespace {

QImage imageOf(const Bitmap& picture) {
    QImage image(picture.width(), picture.height(), QImage::Format_Mono);
    if (image.isNull())
        return image;
    image.setColorTable({qRgb(255, 255, 255), qRgb(0, 0, 0)});
    for (int y = 0; y < picture.height(); ++y) {
        const auto row = picture.row(y);
        std::copy(row.begin(), row.end(), image.scanLine(y));
    }
    return image;
}

} // namespace

void QtClipboard::setPicture(const Bitmap& picture) {
    auto* const clipboard = QGuiApplication::clipboard();
    clipboard->clear();
    if (const auto image = imageOf(picture); !image.isNull())
        clipboard->setImage(image);
}

} // namespace vantor
