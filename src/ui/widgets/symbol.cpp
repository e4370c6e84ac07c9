#include "ui/widgets/symbol.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

// Resources of a static library are there only once they were asked for, by a name outside every namespace.
static void loadSymbols() {
    Q_INIT_RESOURCE(symbols);
}

namespace vantor::ui {
namespace {

// Paints the symbol when it is asked for, so that it has the colours of the palette of that moment.
class SymbolEngine final : public QIconEngine {
public:
    using Color = QColor (*)(const QPalette& palette);
    SymbolEngine(QString name, Color color) : m_name(std::move(name)), m_color(color) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        painter->drawPixmap(
            rect, symbolPixmap(m_name, rect.width(), inkFor(mode), painter->device()->devicePixelRatioF()));
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }
    [[nodiscard]] QIconEngine* clone() const override { return new SymbolEngine(m_name, m_color); }

private:
    [[nodiscard]] QColor inkFor(QIcon::Mode mode) const {
        const auto palette = QApplication::palette();
        if (mode == QIcon::Disabled)
            return palette.color(QPalette::Disabled, QPalette::ButtonText);
        if (mode == QIcon::Selected)
            return palette.color(QPalette::HighlightedText);
        return m_color != nullptr ? m_color(palette) : palette.color(QPalette::ButtonText);
    }

    QString m_name;
    Color m_color;
};

} // namespace

QString symbolPath(const QString& name) {
    static const bool kLoaded = (loadSymbols(), true);
    return kLoaded ? QStringLiteral(":/symbols/%1.svg").arg(name) : QString();
}

QPixmap symbolPixmap(const QString& name, int size, const QColor& color, qreal deviceRatio) {
    const int pixels = qRound(size * deviceRatio);
    QPixmap pixmap;
    const auto key =
        QStringLiteral("%1 %2 %3").arg(name, QString::number(pixels), color.name(QColor::HexArgb));
    if (QPixmapCache::find(key, &pixmap)) {
        pixmap.setDevicePixelRatio(deviceRatio);
        return pixmap;
    }
    pixmap = QPixmap(pixels, pixels);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    QSvgRenderer(symbolPath(name)).render(&painter);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(pixmap.rect(), color);
    painter.end();
    QPixmapCache::insert(key, pixmap);
    pixmap.setDevicePixelRatio(deviceRatio);
    return pixmap;
}

QIcon symbolIcon(const QString& name, QColor (*color)(const QPalette& palette)) {
    return QIcon(new SymbolEngine(name, color));
}

QIcon logoIcon() {
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 48, 64, 128}) {
        // Scaled down, its strokes would lie between the pixels.
        const QString fitted = symbolPath(QStringLiteral("logo-%1").arg(size));
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        QSvgRenderer(QFile::exists(fitted) ? fitted : symbolPath(QStringLiteral("logo"))).render(&painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace vantor::ui
