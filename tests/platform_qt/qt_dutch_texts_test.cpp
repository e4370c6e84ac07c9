#include "platform/qt/qt_dutch_texts.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QLocale>

namespace vantor {
namespace {

TEST(QtDutchTextsTest, ArePutInPlaceOfTheToolkitsOwn) {
    if (!QFileInfo::exists(QLibraryInfo::path(QLibraryInfo::TranslationsPath) +
                           QStringLiteral("/qtbase_nl.qm")))
        GTEST_SKIP() << "the toolkit's translations are not installed";
    ASSERT_EQ(QApplication::translate("QPlatformTheme", "Cancel"), QStringLiteral("Cancel"));
    useDutchTexts(*qApp);
    EXPECT_EQ(QApplication::translate("QPlatformTheme", "Cancel"), QStringLiteral("Annuleren"));
    EXPECT_EQ(QApplication::translate("QLineEdit", "&Paste"), QStringLiteral("P&lakken"));
    EXPECT_EQ(QLocale().language(), QLocale::Dutch);
    EXPECT_EQ(QLocale().toString(QDate(2026, 3, 14), QStringLiteral("MMMM")), QStringLiteral("maart"));
}

} // namespace
} // namespace vantor
