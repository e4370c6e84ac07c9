// readFile(): the bytes of a test's data file; a test that cannot have them fails.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace vantor::testing {

inline std::string readFile(const std::filesystem::path& path) {
    const std::ifstream in(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    EXPECT_TRUE(in.good() && !bytes.str().empty()) << "cannot read " << path;
    return bytes.str();
}

} // namespace vantor::testing
