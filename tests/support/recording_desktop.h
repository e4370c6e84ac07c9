// RecordingDesktop: stands in for the desktop's browser, and for whatever it has for other addresses, as long as
// it lives.
#pragma once

#include <QDesktopServices>
#include <QObject>
#include <QStringList>
#include <QUrl>
#include <string>
#include <vector>

namespace vantor::testing {

class RecordingDesktop final : public QObject {
    Q_OBJECT

public:
    RecordingDesktop() {
        for (const auto& scheme : kSchemes)
            QDesktopServices::setUrlHandler(scheme, this, "open");
    }
    RecordingDesktop(const RecordingDesktop&) = delete;
    RecordingDesktop& operator=(const RecordingDesktop&) = delete;
    ~RecordingDesktop() override {
        for (const auto& scheme : kSchemes)
            QDesktopServices::unsetUrlHandler(scheme);
    }

    Q_SLOT void open(const QUrl& url) { opened.push_back(url.toString(QUrl::FullyEncoded).toStdString()); }

    std::vector<std::string> opened;

private:
    inline static const QStringList kSchemes{
        QStringLiteral("http"), QStringLiteral("https"),  QStringLiteral("file"),       QStringLiteral("ftp"),
        QStringLiteral("data"), QStringLiteral("mailto"), QStringLiteral("javascript"), QString()};
};

} // namespace vantor::testing
