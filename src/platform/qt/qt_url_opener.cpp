#include "platform/qt/qt_url_opener.h"

#include "base/web_address.h"

#include <QDesktopServices>
#include <QFile>
#include <QUrl>

namespace vantor {

void QtUrlOpener::open(std::string_view address) {
    if (!isWebAddress(address))
        return;
    const QUrl url(QString::fromUtf8(address.data(), static_cast<qsizetype>(address.size())),
                   QUrl::StrictMode);
    if (url.isValid())
        QDesktopServices::openUrl(url);
}

void QtUrlOpener::openPage(const std::filesystem::path& page) {
    QDesktopServices::openUrl(
        QUrl::fromLocalFile(QFile::decodeName(QByteArray::fromStdString(page.string()))));
}

} // namespace vantor
