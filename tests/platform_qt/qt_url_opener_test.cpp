#include "platform/qt/qt_url_opener.h"
#include "tests/support/recording_desktop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDesktopServices>
#include <QUrl>

namespace vantor {
namespace {

using testing::RecordingDesktop;

TEST(QtUrlOpenerTest, OpensWebAddresses) {
    RecordingDesktop desktop;
    QtUrlOpener opener;
    opener.open("https://vantor.example/handleiding");
    opener.open("http://vantor.example/a%20b?v=2.0&os=x#deel");
    EXPECT_THAT(desktop.opened, ::testing::ElementsAre("https://vantor.example/handleiding",
                                                       "http://vantor.example/a%20b?v=2.0&os=x#deel"));
}

TEST(QtUrlOpenerTest, OpensPagesOfThisComputer) {
    RecordingDesktop desktop;
    QtUrlOpener opener;
    opener.openPage("/usr/share/doc/een map/100%#1.html");
    EXPECT_THAT(desktop.opened, ::testing::ElementsAre("file:///usr/share/doc/een%20map/100%25%231.html"));
}

TEST(QtUrlOpenerTest, IgnoresEverythingElse) {
    RecordingDesktop desktop;
    // Proves that the desktop would have noticed.
    ASSERT_TRUE(QDesktopServices::openUrl(QUrl(QStringLiteral("file:///tmp"))));
    ASSERT_THAT(desktop.opened, ::testing::ElementsAre("file:///tmp"));
    desktop.opened.clear();

    QtUrlOpener opener;
    for (const auto* const address : {"", "vantor.example", "/etc/passwd", "file:///etc/passwd",
                                      "ftp://vantor.example/", "mailto:a@b.example", "javascript:alert(1)",
                                      "https://", "https:///x", "http://a b", " https://vantor.example"}) {
        opener.open(address);
    }
    EXPECT_THAT(desktop.opened, ::testing::IsEmpty());
}

} // namespace
} // namespace vantor
