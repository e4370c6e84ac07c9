#include "tests/ui/ui_fixture.h"
#include "ui/commands/command_table.h"
#include "ui/widgets/symbol.h"

#include <QDir>
#include <QFile>
#include <set>

namespace vantor::testing {
namespace {

TEST(Symbols, EachIsDrawnWithinItsSquare) {
    const auto files = QDir(QStringLiteral(VANTOR_EXAMPLES "/../src/ui/symbols")).entryInfoList(QDir::Files);
    ASSERT_FALSE(files.empty());
    for (const auto& file : files) {
        const QString name = file.completeBaseName();
        if (name.startsWith(QStringLiteral("logo")))
            continue;
        const QImage image = ui::symbolPixmap(name, 24, Qt::black, 1).toImage();
        int inside = 0;
        int outside = 0;
        for (int y = 0; y < 24; ++y) {
            for (int x = 0; x < 24; ++x) {
                const bool edge = std::min(x, y) == 0 || std::max(x, y) == 23;
                (edge ? outside : inside) += qAlpha(image.pixel(x, y)) > 0 ? 1 : 0;
            }
        }
        EXPECT_GT(inside, 0) << name.toStdString();
        EXPECT_EQ(outside, 0) << name.toStdString();
    }
}

TEST(Symbols, CommandsNameOnesThatExist) {
    for (const auto& command : ui::commandTable()) {
        const auto name =
            QString::fromUtf8(command.symbol.data(), static_cast<qsizetype>(command.symbol.size()));
        EXPECT_TRUE(name.isEmpty() || QFile::exists(ui::symbolPath(name))) << command.name;
    }
}

TEST(Symbols, TheLogoLiesOnThePixelsOfEachSize) {
    const QIcon icon = ui::logoIcon();
    EXPECT_EQ(icon.availableSizes().size(), 7);
    for (const auto& size : icon.availableSizes()) {
        const int edge = size.width();
        const QImage image = icon.pixmap(size).toImage();
        EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0) << edge;
        EXPECT_EQ(image.pixelColor(edge / 2, 0), QColor(0x2b, 0x4c, 0x96)) << edge;
        // Of the large ones, the plus has round ends.
        std::set<QRgb> colors;
        for (int y = 0; edge <= 24 && y < edge * 2 / 5; ++y)
            colors.insert(image.pixel(edge / 2, y));
        EXPECT_EQ(colors.size(), edge <= 24 ? 2U : 0U) << edge;
    }
}

} // namespace
} // namespace vantor::testing
