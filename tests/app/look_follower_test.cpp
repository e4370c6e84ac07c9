#include "app/look_follower.h"
#include "tests/support/event_loop.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QWidget>
#include <vector>

namespace vantor {
namespace {

using enum DesktopLook::ColorScheme;
using ::testing::ElementsAre;

const QPalette kLightPalette(Qt::white);
const QPalette kDarkPalette(Qt::black);
constexpr Look kLight{false, false, false, {}};
constexpr Look kDark{true, false, false, {}};

// Stands in for a platform's theme: a style has the last word on the palette that is the toolkit's own.
class Platform final : public QProxyStyle {
public:
    Platform() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}
    using QProxyStyle::polish;
    void polish(QPalette& platform) override { platform = palette; }
    QPalette palette = kLightPalette;
};

class FakeDesktop final : public DesktopSettings {
public:
    [[nodiscard]] const DesktopLook& look() const override { return m_look; }
    void become(const DesktopLook& look) {
        m_look = look;
        didChange().emit();
    }

private:
    DesktopLook m_look;
};

class LookFollowerTest : public ::testing::Test {
protected:
    LookFollowerTest() {
        QApplication::setPalette(QPalette());
        QApplication::setStyle(platform);
    }
    ~LookFollowerTest() override {
        QApplication::setPalette(QPalette());
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    }

    void theThemeChanges() {
        for (int windows = 0; windows < 2; ++windows) {
            QWidget window;
            QEvent event(QEvent::ThemeChange);
            QCoreApplication::sendEvent(&window, &event);
        }
        QCoreApplication::processEvents();
    }
    // As the program does: every look hides the platform's palette.
    std::function<void(const Look&)> apply = [this](const Look& look) {
        looks.push_back(look);
        auto palette = look.dark ? kDarkPalette : kLightPalette;
        palette.setResolveMask(~0ULL);
        QApplication::setPalette(palette);
    };

    // The application's.
    Platform* platform = new Platform;
    FakeDesktop desktop;
    std::vector<Look> looks;
};

TEST_F(LookFollowerTest, AppliesWhatIsWantedAtOnceAndThenOnceForAllThatHasChanged) {
    desktop.become({Dark, {}, false, false});
    {
        const LookFollower follower(desktop, "", apply);
        EXPECT_THAT(looks, ElementsAre(kDark));
        desktop.become({Light, {}, false, false});
        desktop.become({Light, {}, true, true});
        EXPECT_THAT(looks, ElementsAre(kDark));
        QCoreApplication::processEvents();
        const Look last{false, true, true, {}};
        EXPECT_THAT(looks, ElementsAre(kDark, last));
        // An accent that cannot be seen makes no difference.
        desktop.become({Light, Rgb{255, 255, 255}, true, true});
        QCoreApplication::processEvents();
        EXPECT_THAT(looks, ElementsAre(kDark, last));
        desktop.become({});
    }
    desktop.become({Dark, {}, false, false});
    QCoreApplication::processEvents();
    EXPECT_EQ(looks.size(), 2U);
}

TEST_F(LookFollowerTest, PutsTheEnvironmentAboveTheDesktop) {
    const LookFollower follower(desktop, "dark", apply);
    desktop.become({Light, {}, false, false});
    QCoreApplication::processEvents();
    EXPECT_THAT(looks, ElementsAre(kDark));
}

TEST_F(LookFollowerTest, FollowsThePaletteOfThePlatformBehindItsOwnWhereTheDesktopSaysNothing) {
    const LookFollower follower(desktop, "", apply);
    platform->palette = kDarkPalette;
    theThemeChanges();
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), kDarkPalette.color(QPalette::Window));
    // The program's own palette is not taken for that of the platform.
    desktop.become({Light, {}, false, false});
    QCoreApplication::processEvents();
    desktop.become({});
    QCoreApplication::processEvents();
    EXPECT_THAT(looks, ElementsAre(kLight, kDark, kLight, kDark));
    desktop.become({Dark, {}, false, false});
    platform->palette = kLightPalette;
    theThemeChanges();
    EXPECT_EQ(looks.back(), kDark);
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), kDarkPalette.color(QPalette::Window));
    desktop.become({});
    QCoreApplication::processEvents();
    EXPECT_EQ(looks.back(), kLight);
}

} // namespace
} // namespace vantor
