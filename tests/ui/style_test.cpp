#include "base/color.h"
#include "ui/frame/style.h"
#include "ui/frame/theme.h"
#include "ui/widgets/symbol.h"
#include "ui/widgets/widgets.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QCheckBox>
#include <QImage>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QStyle>
#include <map>

using namespace vantor;
using namespace vantor::ui;
using ::testing::Ge;

namespace {

const std::map<std::string, Look> kLooks{{"light", {false, false, true, {}}},
                                         {"dark", {true, false, true, {}}},
                                         {"light, strong", {false, true, true, {}}},
                                         {"dark, strong", {true, true, true, {}}}};

double between(const QColor& a, const QColor& b) {
    const auto rgb = [](const QColor& color) {
        return Rgb{static_cast<std::uint8_t>(color.red()), static_cast<std::uint8_t>(color.green()),
                   static_cast<std::uint8_t>(color.blue())};
    };
    return contrast(rgb(a), rgb(b));
}

// Shown in the middle of a window of its own.
QImage pictureOf(QWidget& widget) {
    QWidget window;
    window.setAutoFillBackground(true);
    widget.setParent(&window);
    widget.setGeometry({QPoint(8, 8), widget.sizeHint()});
    window.resize(widget.size() + QSize(16, 16));
    window.show();
    window.setFocus();
    auto picture = window.grab().toImage();
    widget.setParent(nullptr);
    return picture;
}

struct Inks {
    QColor ground;
    // What stands out from it most.
    QColor ink;
};

Inks inksIn(const QImage& picture, const QRect& part) {
    std::map<QRgb, int> counts;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x)
            ++counts[picture.pixel(x, y)];
    }
    Inks inks;
    inks.ground = std::ranges::max_element(counts, {}, &std::pair<const QRgb, int>::second)->first;
    inks.ink = inks.ground;
    for (const auto& [color, count] : counts) {
        if (between(color, inks.ground) > between(inks.ink, inks.ground))
            inks.ink = color;
    }
    return inks;
}

struct StyleTest : ::testing::Test {
    ~StyleTest() override { applyLook({}); }
};

} // namespace

TEST_F(StyleTest, ColoursOfTheThemeStandOutWhereTheyAreUsed) {
    using Color = QColor (*)(const QPalette&);
    const std::vector<Color> grounds{theme::window, theme::surface, theme::field, theme::hovered,
                                     theme::activeRow};
    for (const auto& [name, look] : kLooks) {
        SCOPED_TRACE(name);
        const auto palette = theme::paletteOf(look);
        for (const auto& ground : grounds) {
            SCOPED_TRACE(ground(palette).name().toStdString());
            for (const auto& ink :
                 {theme::text, theme::secondaryText, theme::green, theme::red, theme::amber, theme::blue})
                EXPECT_THAT(between(ink(palette), ground(palette)), Ge(4.5))
                    << ink(palette).name().toStdString();
        }
        for (const auto& ground : {theme::window, theme::surface, theme::field}) {
            EXPECT_THAT(between(theme::fieldEdge(palette), ground(palette)), Ge(3));
            EXPECT_THAT(between(theme::accent(palette), ground(palette)), Ge(3));
        }
        EXPECT_THAT(between(theme::onAccent(palette), theme::accent(palette)), Ge(4.5));
        EXPECT_THAT(between(Qt::white, theme::purple(palette)), Ge(4.5));
        EXPECT_THAT(between(theme::green(palette), theme::greenGround(palette)), Ge(4.5));
        for (const auto kind :
             {Notice::Kind::Plain, Notice::Kind::Done, Notice::Kind::Warning, Notice::Kind::Error})
            EXPECT_THAT(between(theme::text(palette), theme::noticeGround(kind, palette)), Ge(4.5));
    }
}

TEST_F(StyleTest, TextsAndEdgesStandOutAsTheyArePainted) {
    for (const auto& [name, look] : kLooks) {
        applyLook(look);
        QPushButton button(QStringLiteral("Activeer"));
        ProminentButton prominent(QStringLiteral("Opslaan"));
        CommandButton command(symbolIcon(QStringLiteral("folder")), QStringLiteral("Klanten"));
        SegmentButton chosen(QStringLiteral("Groot"), SegmentButton::Place::First);
        chosen.setChecked(true);
        QLineEdit typed(QStringLiteral("Marvis"));
        QLineEdit empty;
        empty.setPlaceholderText(QStringLiteral("bijv. Marvis"));
        ComboBox choice;
        choice.addItem(QStringLiteral("Zomer"));
        QCheckBox unchecked;
        QCheckBox checked;
        checked.setChecked(true);
        Tag client(Tag::Kind::Client);
        client.setText(QStringLiteral("Noorderlicht"));
        QPlainTextEdit editor(QStringLiteral("Set;Merk"));
        const auto edges = std::vector<const QWidget*>{&typed, &empty, &choice, &unchecked, &editor};
        for (QWidget* const widget :
             std::vector<QWidget*>{&button, &prominent, &command, &chosen, &typed, &empty, &choice,
                                   &unchecked, &checked, &client, &editor}) {
            SCOPED_TRACE(name + ", " + widget->metaObject()->className() + " " + std::to_string(widget->x()));
            const auto picture = pictureOf(*widget);
            const QRect inside = QRect(QPoint(8, 8), widget->size()).adjusted(5, 5, -5, -5);
            if (widget != &unchecked) {
                const auto inks = inksIn(picture, inside);
                EXPECT_THAT(between(inks.ink, inks.ground), Ge(4.5));
            }
            if (std::ranges::find(edges, widget) == edges.end())
                continue;
            const QColor outside = picture.pixel(2, picture.height() / 2);
            const auto across = inksIn(picture, QRect(2, picture.height() / 2, 20, 1));
            EXPECT_THAT(between(across.ink, outside), Ge(3)) << "the edge, from outside";
        }
    }
}

TEST_F(StyleTest, OpenWindowsFollowTheLook) {
    applyLook({});
    QWidget window;
    window.resize(20, 20);
    window.show();
    const auto corner = [&] { return window.grab().toImage().pixelColor(10, 10); };
    const auto light = corner();
    applyLook({true, false, true, {}});
    QApplication::processEvents();
    EXPECT_LT(corner().lightness(), light.lightness() / 2);
    applyLook({});
    QApplication::processEvents();
    EXPECT_EQ(corner(), light);
}

TEST_F(StyleTest, TheDesktopsAccentFillsTheProminentButton) {
    applyLook({false, false, true, Rgb{0x91, 0x41, 0xAC}});
    ProminentButton button(QStringLiteral("Opslaan"));
    EXPECT_EQ(inksIn(pictureOf(button), QRect(12, 12, 40, 20)).ground, QColor(0x91, 0x41, 0xAC));
}

TEST_F(StyleTest, NothingChangesItsSizeWithItsState) {
    applyLook({});
    QPushButton button(QStringLiteral("Activeer"));
    SegmentButton segment(QStringLiteral("Groot"), SegmentButton::Place::First);
    const auto sizes = [&] { return std::vector{button.sizeHint(), segment.sizeHint()}; };
    const auto before = sizes();
    EXPECT_GE(before.front().height(), theme::kControlHeight);
    button.setDefault(true);
    button.setDown(true);
    segment.setChecked(true);
    EXPECT_EQ(sizes(), before);
}

TEST_F(StyleTest, QuestionsAndFilesHaveTheProgramsOwnSymbols) {
    applyLook({});
    QMessageBox box(QMessageBox::Question, QString(), QStringLiteral("Set verwijderen?"));
    const auto symbol = box.iconPixmap().toImage();
    ASSERT_FALSE(symbol.isNull());
    const auto ink = theme::accent(QApplication::palette());
    bool hasInk = false;
    for (int y = 0; y < symbol.height() && !hasInk; ++y) {
        for (int x = 0; x < symbol.width() && !hasInk; ++x)
            hasInk = symbol.pixelColor(x, y) == ink;
    }
    EXPECT_TRUE(hasInk) << "one colour, the accent";
}
