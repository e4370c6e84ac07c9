#include "platform/qt/qt_key_value_store.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <QSettings>
#include <cmath>
#include <fstream>
#include <limits>
#include <string>
#include <vector>

namespace vantor {
namespace {

using testing::TemporaryFolder;

constexpr const char* kKey = "vantorprep.updateChecker.lastCheckDate";

class QtKeyValueStoreTest : public ::testing::Test {
protected:
    TemporaryFolder folder;
    std::filesystem::path file = folder / "instellingen.ini";
};

TEST_F(QtKeyValueStoreTest, IsEmptyAtFirst) {
    const QtKeyValueStore store(file);
    EXPECT_EQ(store.text(kKey), std::nullopt);
    EXPECT_FALSE(store.date(kKey));
}

TEST_F(QtKeyValueStoreTest, KeepsTextsOverARestart) {
    const std::vector<std::string> texts{"",
                                         "2.0",
                                         "https://vantor.example/a?b=1&c=d;e#f",
                                         "a, b",
                                         "a; b = c",
                                         " spaties ",
                                         "\"x\"",
                                         "@Date",
                                         "@Variant(1)",
                                         "regel\nregel\r\n\t",
                                         "caf\xC3\xA9 \xF0\x9F\x93\xB7",
                                         "\\x41 % %41",
                                         "1.5",
                                         "true",
                                         std::string("a\0b", 3)};
    for (const auto& text : texts) {
        {
            QtKeyValueStore store(file);
            store.setText(kKey, text);
            EXPECT_EQ(store.text(kKey), text);
        }
        const QtKeyValueStore restarted(file);
        EXPECT_EQ(restarted.text(kKey), text);
        EXPECT_FALSE(restarted.date(kKey)) << text;
    }
}

TEST_F(QtKeyValueStoreTest, KeepsDatesToTheLastBitOverARestart) {
    const std::vector<double> seconds{0.0,
                                      -0.25,
                                      800'000'000.123'456'7,
                                      std::nextafter(800'000'000.0, 1e9),
                                      -978'307'200.0,
                                      1e-300,
                                      std::numeric_limits<double>::max()};
    for (const double each : seconds) {
        {
            QtKeyValueStore store(file);
            store.setDate(kKey, {each});
            ASSERT_TRUE(store.date(kKey));
            EXPECT_EQ(store.date(kKey)->secondsSinceReference, each);
        }
        const QtKeyValueStore restarted(file);
        ASSERT_TRUE(restarted.date(kKey));
        EXPECT_EQ(restarted.date(kKey)->secondsSinceReference, each);
        EXPECT_EQ(restarted.text(kKey), std::nullopt);
    }
}

TEST_F(QtKeyValueStoreTest, ReplacesOneKindByTheOther) {
    QtKeyValueStore store(file);
    store.setDate(kKey, {1});
    store.setText(kKey, "tekst");
    EXPECT_EQ(store.text(kKey), "tekst");
    EXPECT_FALSE(store.date(kKey));
    store.setDate(kKey, {2});
    EXPECT_EQ(store.text(kKey), std::nullopt);
    EXPECT_TRUE(store.date(kKey));
}

TEST_F(QtKeyValueStoreTest, RemovesForGood) {
    {
        QtKeyValueStore store(file);
        store.setText("a", "1");
        store.setText("b", "2");
    }
    {
        QtKeyValueStore store(file);
        store.remove("a");
        store.remove("nooit gezien");
        EXPECT_EQ(store.text("a"), std::nullopt);
    }
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

TEST_F(QtKeyValueStoreTest, SurvivesAFileOfNonsense) {
    std::ofstream(file, std::ios::binary) << "[General\n"
                                          << kKey << "=@Variant(\\0\\0\\0\\x7f\\xff)\n=\n\xFF\xFE" << '\0';
    QtKeyValueStore store(file);
    EXPECT_FALSE(store.date(kKey));
    store.setText("a", "1");
    EXPECT_EQ(store.text("a"), "1");
}

TEST_F(QtKeyValueStoreTest, IsSilentWhereNothingCanBeWritten) {
    std::ofstream(folder / "geen-map") << "x";
    QtKeyValueStore store(folder / "geen-map" / "instellingen.ini");
    store.setText("a", "1");
    EXPECT_EQ(store.text("a"), "1");
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
