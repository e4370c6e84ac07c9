// Program: runs the built command-line program in a folder of its own, as a user's shell would.
//
// - What it is given and what it prints goes through files, so that it can neither wait for the test nor be
//   waited for; one that has not ended after two minutes is killed.
// - The user's folders are empty ones; a test that left something in them fails at its end.
#pragma once

#include "model/shoot.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace vantor::testing {

inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;
inline constexpr int kMisused = 2;

struct Outcome {
    // As a shell tells it; absent when the program never ran.
    std::optional<int> status;
    std::string output;
    std::string errors;
};

struct Streams {
    // Bytes for standard input; without them it is empty.
    std::string input = {};
    // A file for standard input instead.
    std::filesystem::path inputFile = {};
    // A file, or a device, for standard output instead of Outcome::output.
    std::filesystem::path outputFile = {};
    bool outputClosed = false;
};

class Program : public ::testing::Test {
protected:
    void TearDown() override;

    [[nodiscard]] Outcome run(const std::vector<std::string>& arguments, const Streams& streams = {}) const;

    // Expects success without a complaint; what was printed.
    std::string done(const std::vector<std::string>& arguments, const Streams& streams = {}) const;
    // Expects failure with this complaint, and nothing else printed.
    void expectFailure(const std::vector<std::string>& arguments, const std::string& complaint,
                       const Streams& streams = {}) const;

    // The program's folder.
    [[nodiscard]] std::filesystem::path at(const std::filesystem::path& name) const {
        return m_folder / name;
    }
    [[nodiscard]] std::set<std::string> names() const { return m_folder.names(); }

    void write(const std::filesystem::path& name, std::string_view bytes) const;
    [[nodiscard]] std::string read(const std::filesystem::path& name) const;
    // A shoot file of these sets.
    void writeShoot(const std::filesystem::path& name, SetList sets) const;

private:
    TemporaryFolder m_folder;
    TemporaryFolder m_home;
    TemporaryFolder m_streams;
};

[[nodiscard]] SetData setOf(std::string number, std::string brand, std::vector<SetItem> items = {});

// The files in examples/.
[[nodiscard]] std::string example(const std::string& name);

} // namespace vantor::testing
