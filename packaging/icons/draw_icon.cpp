// draw_icon: draws an SVG picture into a square PNG file of so many pixels.

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>

int main(int argc, char** argv) {
    const int size = argc == 4 ? QByteArray(argv[2]).toInt() : 0;
    if (size <= 0) {
        std::fputs("usage: draw_icon PICTURE.svg SIZE PICTURE.png\n", stderr);
        return 2;
    }
    QSvgRenderer picture(QString::fromLocal8Bit(argv[1]));
    QImage image(size, size, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    picture.render(&painter);
    painter.end();
    if (!picture.isValid() || !image.save(QString::fromLocal8Bit(argv[3]), "PNG")) {
        std::fprintf(stderr, "draw_icon: %s could not be drawn into %s\n", argv[1], argv[3]);
        return 1;
    }
    return 0;
}
