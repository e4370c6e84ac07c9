#include "formats/shoot_file.h"
#include "store/product_catalog.h"
#include "store/shoot_manager.h"
#include "tests/store/store_fixture.h"
#include "tests/support/differences.h"
#include "tests/support/environment_variable.h"
#include "tests/support/lone_stores.h"

#include <gtest/gtest.h>

#include <array>
#include <clocale>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <locale>
#include <string>

namespace vantor {
namespace {

using testing::differences;

// For C++ streams: a comma in front of decimals and points between thousands, as the Dutch have it.
class DutchNumbers final : public std::numpunct<char> {
    [[nodiscard]] char do_decimal_point() const override { return ','; }
    [[nodiscard]] char do_thousands_sep() const override { return '.'; }
    [[nodiscard]] std::string do_grouping() const override { return "\3"; }
};

std::string printed(const char* format, double value) {
    std::array<char, 64> buffer{};
    // NOLINTNEXTLINE: what a careless writer of numbers would do is the point.
    std::snprintf(buffer.data(), buffer.size(), format, value);
    return buffer.data();
}

// Runs in a Dutch locale and in a time zone of an odd offset.
class InTheNetherlands : public testing::StoreFixture {
protected:
    InTheNetherlands() : StoreFixture("/home/anna/.local/share/Vantor/file.json") {}

    void SetUp() override {
        ASSERT_NE(std::setlocale(LC_ALL, "nl_NL.UTF-8"), nullptr);
        std::locale::global(std::locale(std::locale(), new DutchNumbers));
        tzset();
        ASSERT_EQ(printed("%.1f", 0.5), "0,5");
        const std::time_t noon = 43200;
        ASSERT_EQ(std::localtime(&noon)->tm_min, 45);
    }

    void TearDown() override {
        std::locale::global(std::locale::classic());
        std::setlocale(LC_ALL, "C");
    }

    const testing::EnvironmentVariable m_locales{"LOCPATH", VANTOR_TEST_LOCALES};
    // Lets the zone hold without any database of zones.
    const testing::EnvironmentVariable m_zone{"TZ", "ODD-12:45"};
};

TEST_F(InTheNetherlands, ShootsAreSavedAndLoadedAsAnywhere) {
    testing::LoneShoots manager(&m_file, m_clock.clock());
    const auto shoots = testing::storedShoots();
    manager.insertShoot(shoots[1]);
    manager.insertShoot(shoots[0]);
    manager.save();
    EXPECT_EQ(saved(), data("shoots.json"));
    for (const auto* name : {"shoots.json", "shoots_other_writer.json"}) {
        m_files.files[m_path] = data(name);
        manager.load();
        EXPECT_EQ(differences(manager.shoots(), shoots), "") << name;
    }
    m_files.files[m_path] = "x";
    manager.load();
    manager.save();
    EXPECT_EQ(m_files.files.at(aside()), "x") << "set aside under its UTC time";
}

TEST_F(InTheNetherlands, CatalogueIsSavedAndLoadedAsAnywhere) {
    testing::LoneCatalog catalog(&m_file);
    for (const auto* name : {"catalog.json", "catalog_other_writer.json"}) {
        m_files.files[m_path] = data(name);
        catalog.load();
        EXPECT_EQ(differences(catalog.document.library().catalog, testing::storedCatalog()), "") << name;
    }
    catalog.save();
    EXPECT_EQ(saved(), data("catalog.json"));
}

TEST_F(InTheNetherlands, ShootFilesAndCsvAreWrittenAndReadAsAnywhere) {
    const auto golden =
        testing::readFile(std::filesystem::path(VANTOR_TEST_DATA) / "../../formats/data/ibiza.vantor");
    EXPECT_EQ(writeShootFile(testing::ibiza()), golden);
    EXPECT_EQ(differences(readShootFile(golden).value(), testing::ibiza()), "");

    testing::LoneShoots manager;
    auto shoot = testing::ibiza();
    shoot.sets = SetList{shoot.sets.front()};
    shoot.sets[0].taggedCount = 1'234'567;
    manager.insertShoot(shoot);
    EXPECT_EQ(manager.exportCSV(shoot.id),
              "Set;Merk;Items;Model;Locatie;Email;Getagd\n"
              "12;Noorderlicht;coated pants/brown, sweater/blue navy;Anna;Studio A;;1234567");
    std::string lines = "Merk";
    for (int i = 0; i < 1200; ++i)
        lines += "\nNike";
    manager.importCSV(lines, shoot.id);
    EXPECT_EQ(manager.shoots()[0].sets[0].setNumber, "1200");
}

} // namespace
} // namespace vantor
