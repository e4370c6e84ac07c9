#include "platform/qt/qt_url_opener.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDesktopServices>
#include <QObject>
#include <QUrl>
#include <string>
#include <vector>

namespace vantor {
namespace {

// Stands in for the desktop's browser, and for whatever it has for other addresses.
class Desktop final : public QObject {
    Q_OBJECT

public:
    Desktop() {
        for (const auto& scheme : kSchemes)
            QDesktopServices::setUrlHandler(scheme, this, "open");
    }
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;
    ~Desktop() override {
        for (const auto& scheme : kSchemes)
            QDesktopServices::unsetUrlHandler(scheme);
    }

    Q_SLOT void open(const QUrl& url) { opened.push_back(url.toString(QUrl::FullyEncoded).toStdString()); }

    std::vector<std::string> opened;

private:
    inline static const QStringList kSchemes{QStringLiteral("http"),
                                             QStringLiteral("https"),
                                             QStringLiteral("file"),
                                             QStringLiteral("ftp"),
                                             QStringLiteral("mailto"),
                                             QStringLiteral("javascript"),
                                             QString()};
};

TEST(QtUrlOpenerTest, OpensWebAddresses) {
    Desktop desktop;
    QtUrlOpener opener;
    opener.open("https://vantor.example/handleiding");
    opener.open("http://vantor.example/a%20b?v=2.0&os=x#deel");
    EXPECT_THAT(desktop.opened, ::testing::ElementsAre("https://vantor.example/handleiding",
                                                       "http://vantor.example/a%20b?v=2.0&os=x#deel"));
}

TEST(QtUrlOpenerTest, IgnoresEverythingElse) {
    Desktop desktop;
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

#include "qt_url_opener_test.moc"
