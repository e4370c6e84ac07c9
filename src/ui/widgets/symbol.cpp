#include "ui/widgets/symbol.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
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
    explicit SymbolEngine(QString name) : m_name(std::move(name)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const QColor color = QApplication::palette().color(group, QPalette::ButtonText);
        painter->drawPixmap(
            rect, symbolPixmap(m_name, rect.width(), color, painter->device()->devicePixelRatioF()));
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }
    [[nodiscard]] QIconEngine* clone() const override { return new SymbolEngine(m_name); }

private:
    QString m_name;
};

} // namespace

QString symbolPath(const QString& name) {
    static const bool kLoaded = (loadSymbols(), true);
    return kLoaded ? QStringLiteral(":/symbols/%1.svg").arg(name) : QString();
}

QPixmap symbolPixmap(const QString& name, int size, const QColor& color, qreal deviceRatio) {
    const int pixels = qRound(size * deviceRatio);
    QPixmap pixmap(pixels, pixels);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    QSvgRenderer(symbolPath(name)).render(&painter);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(pixmap.rect(), color);
    painter.end();
    pixmap.setDevicePixelRatio(deviceRatio);
    return pixmap;
}

QIcon symbolIcon(const QString& name) {
    return QIcon(new SymbolEngine(name));
}

} // namespace vantor::ui
