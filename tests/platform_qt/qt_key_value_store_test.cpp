#include "platform/qt/qt_key_value_store.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <QSettings>
#include <cmath>
#include <fstream>
#include <limits>
#include <string>

namespace vantor {
namespace {

constexpr const char* kKey = "vantorprep.updateChecker.lastCheckDate";

class QtKeyValueStoreTest : public ::testing::Test {
protected:
    testing::TemporaryFolder folder;
    std::filesystem::path file = folder / "instellingen.ini";
};

TEST_F(QtKeyValueStoreTest, IsEmptyAtFirstAndKeepsTextsOverARestart) {
    EXPECT_EQ(QtKeyValueStore(file).text(kKey), std::nullopt);
    EXPECT_FALSE(QtKeyValueStore(file).date(kKey));
    for (const auto& text :
         {std::string(), std::string("2.0"), std::string("https://vantor.example/a?b=1&c=d;e#f"),
          std::string(" a, b; c = \"d\" "), std::string("@Date"), std::string("@Variant(1)"),
          std::string("regel\nregel\r\n\t"), std::string("caf\xC3\xA9 \xF0\x9F\x93\xB7"),
          std::string("\\x41 % %41"), std::string("1.5"), std::string("true"), std::string("a\0b", 3)}) {
        QtKeyValueStore(file).setText(kKey, text);
        const QtKeyValueStore restarted(file);
        EXPECT_EQ(restarted.text(kKey), text);
        EXPECT_FALSE(restarted.date(kKey)) << text;
    }
}

TEST_F(QtKeyValueStoreTest, KeepsDatesToTheLastBitOverARestart) {
    for (const double seconds : {0.0, -0.25, 800'000'000.123'456'7, std::nextafter(800'000'000.0, 1e9),
                                 -978'307'200.0, 1e-300, std::numeric_limits<double>::max()}) {
        QtKeyValueStore(file).setDate(kKey, {seconds});
        const QtKeyValueStore restarted(file);
        ASSERT_TRUE(restarted.date(kKey));
        EXPECT_EQ(restarted.date(kKey)->secondsSinceReference, seconds);
        EXPECT_EQ(restarted.text(kKey), std::nullopt);
    }
}

TEST_F(QtKeyValueStoreTest, ReplacesOneKindByTheOtherAndRemovesForGood) {
    QtKeyValueStore store(file);
    store.setDate(kKey, {1});
    store.setText(kKey, "tekst");
    EXPECT_EQ(store.text(kKey), "tekst");
    EXPECT_FALSE(store.date(kKey));
    store.setDate(kKey, {2});
    EXPECT_EQ(store.text(kKey), std::nullopt);
    EXPECT_TRUE(store.date(kKey));

    store.setText("a", "1");
    store.setText("b", "2");
    store.remove("a");
    store.remove("nooit gezien");
    EXPECT_EQ(store.text("a"), std::nullopt);
    const QtKeyValueStore restarted(file);
    EXPECT_EQ(restarted.text("a"), std::nullopt);
    EXPECT_EQ(restarted.text("b"), "2");
}

TEST_F(QtKeyValueStoreTest, TakesNothingElseForATextOrADate) {
    {
        QSettings settings(QString::fromStdString(file.string()), QSettings::IniFormat);
        settings.setValue(QStringLiteral("list"), QStringList{QStringLiteral("a"), QStringLiteral("b")});
        settings.setValue(QStringLiteral("bytes"), QByteArray("\x01\x02"));
        settings.setValue(QStringLiteral("map"), QVariantMap{{QStringLiteral("x"), 1.5}});
        settings.setValue(QStringLiteral("wrong"),
                          QVariantMap{{QStringLiteral("secondsSinceReference"), "1.5"}});
    }
    const QtKeyValueStore store(file);
    for (const auto* const key : {"list", "bytes", "map", "wrong"}) {
        EXPECT_EQ(store.text(key), std::nullopt) << key;
        EXPECT_FALSE(store.date(key)) << key;
    }
}

TEST_F(QtKeyValueStoreTest, SurvivesAFileOfNonsenseAndIsSilentWhereNothingCanBeWritten) {
    std::ofstream(file, std::ios::binary) << "[General\n"
                                          << kKey << "=@Variant(\\0\\0\\0\\x7f\\xff)\n=\n\xFF\xFE" << '\0';
    for (const auto& place : {file, file / "instellingen.ini"}) {
        QtKeyValueStore store(place);
        EXPECT_FALSE(store.date(kKey));
        store.setText("a", "1");
        EXPECT_EQ(store.text("a"), "1");
    }
}

TEST_F(QtKeyValueStoreTest, KeepsToTheUsersOwnSettingsOfTheProgram) {
    const auto place = QString::fromStdString(folder.path().string());
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, place);
    {
        QSettings ofAllPrograms(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Vantor"));
        ofAllPrograms.setValue(QStringLiteral("b"), QStringLiteral("van een ander"));
        QtKeyValueStore store("Vantor", "Prep");
        store.setText("a", "1");
    }
    const QtKeyValueStore restarted("Vantor", "Prep");
    EXPECT_EQ(restarted.text("a"), "1");
    EXPECT_EQ(restarted.text("b"), std::nullopt);
    EXPECT_EQ(QtKeyValueStore("Vantor", "Ander").text("a"), std::nullopt);
}

} // namespace
} // namespace vantor
