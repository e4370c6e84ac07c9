// What the tests of the stores stand on: a file store in memory, a clock that stands, one file's path.
#pragma once

#include "model/product_json.h"
#include "model/shoot_json.h"
#include "store/store_file.h"
#include "tests/support/examples.h"
#include "tests/support/memory_file_store.h"
#include "tests/support/read_file.h"
#include "tests/support/standing_clock.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace vantor::testing {

// As the stores' files hold them.
inline std::string jsonOf(const std::vector<Shoot>& shoots) {
    JsonWriter out(JsonWriter::Layout::Compact);
    writeShoots(out, shoots, DateForm::SecondsSinceReference);
    return std::string(out.written());
}
inline std::string jsonOf(const CatalogData& catalog) {
    JsonWriter out(JsonWriter::Layout::Compact);
    writeCatalog(out, catalog);
    return std::string(out.written());
}

class StoreFixture : public ::testing::Test {
protected:
    explicit StoreFixture(std::filesystem::path path) : m_path(std::move(path)) {}

    [[nodiscard]] std::filesystem::path aside() const {
        auto path = m_path;
        return path += ".unreadable-20260314T093000Z";
    }
    [[nodiscard]] std::size_t saves() const { return m_files.replacements.size(); }
    [[nodiscard]] std::string saved() const { return m_files.files.at(m_path); }
    // How often `act` saves.
    template <typename Act>
    std::size_t savesOf(Act act) {
        const auto before = saves();
        act();
        return saves() - before;
    }
    static std::string data(const char* name) {
        return readFile(std::filesystem::path(VANTOR_TEST_DATA) / name);
    }

    std::filesystem::path m_path;
    MemoryFileStore m_files;
    StandingClock m_clock{kMorning};
    StoreFile m_file{m_files, m_path, m_clock.clock()};
};

} // namespace vantor::testing
