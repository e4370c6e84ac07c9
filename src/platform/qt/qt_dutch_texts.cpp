#include "platform/qt/qt_dutch_texts.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace vantor {

void useDutchTexts(QCoreApplication& application) {
    QLocale::setDefault(QLocale(QLocale::Dutch, QLocale::Netherlands));
    auto* const texts = new QTranslator(&application);
    if (texts->load(QStringLiteral("qtbase_nl"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(texts);
}

} // namespace vantor
