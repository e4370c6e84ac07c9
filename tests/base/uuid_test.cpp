#include "base/uuid.h"
#include "tests/support/generators.h"
#include "tests/support/table.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <set>
#include <thread>
#include <vector>

namespace vantor {
namespace {

constexpr auto kText = "F81D4FAE-7DEC-41D0-A765-00A0C91E6BF6";

TEST(Uuid, IsReadInEitherCaseWrittenInUpperCaseAndOrderedByItsBytes) {
    const auto id = Uuid::parse("f81D4fae-7Dec-41d0-A765-00a0c91E6bf6");
    ASSERT_TRUE(id);
    EXPECT_EQ(id->text(), kText);
    const auto characters = id->characters();
    EXPECT_EQ(std::string(characters.begin(), characters.end()), kText);
    EXPECT_EQ(Uuid().text(), "00000000-0000-0000-0000-000000000000");
    EXPECT_LT(*Uuid::parse("00000000-0000-4000-8000-0000000000FF"),
              *Uuid::parse("01000000-0000-4000-8000-000000000000"));
}

TEST(UnreadableUuid, IsAbsent) {
    for (const auto& text : testing::tableOf<std::string>(
             "", "F81D4FAE", "F81D4FAE7DEC41D0A76500A0C91E6BF6", "{81D4FAE-7DEC-41D0-A765-00A0C91E6BF6}",
             "F81D4FAE-7DEC-41D0-A765-00A0C91E6BF", "F81D4FAE-7DEC-41D0-A765-00A0C91E6BF6 ",
             "G81D4FAE-7DEC-41D0-A765-00A0C91E6BF6", "F81D4FAE+7DEC-41D0-A765-00A0C91E6BF6",
             "F81D4FAE-7DEC-41D0-A76-500A0C91E6BF6", "F81D4FAE-7DEC-41D0-A765-00A0C91E6B-6",
             "F81D4FAE-7DEC-41D0-A765-00A0C91E6B 6",
             std::string("F81D4FAE-7DEC-41D0-A765-00A0C91E6BF\0", 36))) {
        EXPECT_FALSE(Uuid::parse(text)) << text;
    }
}

TEST(Uuid, RandomIsOfVersionFourAndNeverRepeatsItselfOnAnyThread) {
    std::vector<std::vector<Uuid>> made(4);
    std::vector<std::thread> threads;
    for (auto& list : made) {
        threads.emplace_back([&list] {
            for (int i = 0; i < 5000; ++i)
                list.push_back(Uuid::random());
        });
    }
    for (auto& thread : threads)
        thread.join();
    std::set<Uuid> all;
    for (const auto& list : made)
        all.insert(list.begin(), list.end());
    EXPECT_EQ(all.size(), 20'000U);
    for (const auto& id : all) {
        EXPECT_EQ(id.text()[14], '4') << id.text();
        EXPECT_THAT("89AB", ::testing::HasSubstr(id.text().substr(19, 1))) << id.text();
    }
}

RC_GTEST_PROP(UuidProperty, ReadsBackWhatItWritesAndNoTextIsACrash, ()) {
    const auto id = *testing::uuid();
    RC_ASSERT(Uuid::parse(id.text()) == id);
    auto text = *testing::damaged(kText);
    text.resize(Uuid::kTextLength, '-');
    if (const auto read = Uuid::parse(text))
        RC_ASSERT(Uuid::parse(read->text()) == read);
}

} // namespace
} // namespace vantor
