#include "platform/qt/qt_url_opener.h"
#include "tests/support/recording_desktop.h"

#include <gmock/gmock.h>

#include <QDesktopServices>
#include <QUrl>
#include <string>
#include <vector>

namespace vantor {
namespace {

using testing::RecordingDesktop;

TEST(QtUrlOpenerTest, OpensWebAddressesAndPagesOfThisComputer) {
    RecordingDesktop desktop;
    std::vector<std::string> addresses{
        "https://vantor.example/handleiding", "http://vantor.example/a%20b?v=2.0&os=x#deel",
        "https://vantor.example:8443/", "http://[2001:db8::1]/x", "https://xn--vantr-kua.example/"};
    for (const auto& address : addresses)
        QtUrlOpener().open(address);
    QtUrlOpener().openPage("/usr/share/doc/een map/100%#1.html");
    addresses.push_back("file:///usr/share/doc/een%20map/100%25%231.html");
    EXPECT_EQ(desktop.opened, addresses);
}

TEST(QtUrlOpenerTest, IgnoresEverythingElse) {
    RecordingDesktop desktop;
    // Proves that the desktop would have noticed.
    ASSERT_TRUE(QDesktopServices::openUrl(QUrl(QStringLiteral("file:///tmp"))));
    ASSERT_THAT(desktop.opened, ::testing::ElementsAre("file:///tmp"));
    desktop.opened.clear();

    for (const auto* const address :
         {"", "vantor.example", "//vantor.example/", "/etc/passwd", "file:///etc/passwd",
          "ftp://vantor.example/", "mailto:a@b.example", "data:text/html,x", "javascript:alert(1)",
          "https:vantor.example", "https://", "https:///x", "http://a b", " https://vantor.example",
          "https://vant\xC3\xB8r.example/"})
        QtUrlOpener().open(address);
    EXPECT_THAT(desktop.opened, ::testing::IsEmpty());
}

} // namespace
} // namespace vantor
