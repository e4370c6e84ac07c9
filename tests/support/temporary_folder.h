// TemporaryFolder: an empty folder of a test's own, gone with all it holds when the test is over.
#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <set>
#include <string>
#include <system_error>

namespace vantor::testing {

class TemporaryFolder {
public:
    TemporaryFolder() {
        auto name = (std::filesystem::temp_directory_path() / "vantor-test-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr)
            ADD_FAILURE() << "cannot make " << name;
        m_path = name;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code error;
        std::filesystem::remove_all(m_path, error);
    }

    [[nodiscard]] const std::filesystem::path& path() const { return m_path; }

    // The names of what it holds, not of what its folders hold.
    [[nodiscard]] std::set<std::string> names() const {
        std::set<std::string> found;
        for (const auto& entry : std::filesystem::directory_iterator(m_path))
            found.insert(entry.path().filename().string());
        return found;
    }

private:
    std::filesystem::path m_path;
};

inline std::filesystem::path operator/(const TemporaryFolder& folder, const std::filesystem::path& name) {
    return folder.path() / name;
}

} // namespace vantor::testing
