#include "formats/shoot_file.h"
#include "tests/support/differences.h"
#include "tests/support/examples.h"
#include "tests/support/generators.h"
#include "tests/support/read_file.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <filesystem>

namespace vantor {
namespace {

using testing::differences;

std::string data(const char* name) {
    return testing::readFile(std::filesystem::path(VANTOR_TEST_DATA) / name);
}

// Also from another writer, with other order, escapes, spaces and case, and from an earlier version.
TEST(ShootFile, IsWrittenAndReadAsEver) {
    auto expected = testing::ibiza();
    EXPECT_EQ(writeShootFile(expected), data("ibiza.vantor"));
    for (const auto* name : {"ibiza.vantor", "ibiza_other_writer.vantor"})
        EXPECT_EQ(differences(readShootFile(data(name)).value(), expected), "") << name;
    expected.watchFolderPath.reset();
    expected.activationLog.clear();
    for (auto& set : expected.sets) {
        set.taggedCount = 0;
        set.email.clear();
    }
    EXPECT_EQ(differences(readShootFile(data("legacy.vantor")).value(), expected), "");
}

TEST(ShootFile, IsUnreadableWhereverItIsCutOffOrAByteIsNoUtf8AndTellsWhere) {
    const auto text = data("ibiza.vantor");
    for (std::size_t at = 0; at < text.size(); ++at) {
        EXPECT_FALSE(readShootFile(std::string_view(text).substr(0, at))) << at;
        auto damaged = text;
        damaged[at] = '\xFF';
        EXPECT_FALSE(readShootFile(damaged)) << at;
    }
    EXPECT_TRUE(readShootFile(text + "\n"));
    EXPECT_FALSE(readShootFile("[" + text + "]"));
    const auto at = text.find("\"2026-03-14");
    auto damaged = text;
    damaged[at] = 'x';
    EXPECT_GE(whereUnreadable(damaged), at);
    EXPECT_LE(whereUnreadable(damaged), at + 1);
    EXPECT_EQ(whereUnreadable(""), 0U);
}

TEST(SetObject, IsWrittenInTheFormItHasInAShootFile) {
    const auto object = writeSetObject(testing::noorderlicht());
    std::string indented;
    for (const char c : object)
        indented += c == '\n' ? "\n    " : std::string(1, c);
    EXPECT_NE(data("ibiza.vantor").find(indented), std::string::npos) << object;
}

RC_GTEST_PROP(ShootFileProperty, AnyMomentIsWrittenSoThatItReads, ()) {
    const auto shoot = *testing::generated<Shoot>();
    const auto text = writeShootFile(shoot);
    const auto back = readShootFile(text);
    RC_ASSERT(back.has_value());
    RC_ASSERT(writeShootFile(*back) == text);
}

RC_GTEST_PROP(ShootFileProperty, NoBytesAreACrash, ()) {
    static const auto kText = writeShootFile(testing::ibiza());
    const auto bytes = *rc::gen::oneOf(testing::bytes(), testing::text(), testing::damaged(kText));
    const auto shoot = readShootFile(bytes);
    RC_ASSERT(whereUnreadable(bytes) <= bytes.size());
    if (shoot)
        RC_ASSERT(readShootFile(writeShootFile(*shoot)).has_value());
}

} // namespace
} // namespace vantor
