// What the checker makes of an answer. A good one is published and remembered; a bad one leaves no trace but the time of
// the check. What counts as JSON and as a web address is tested where it is read.

#include "tests/support/manual_timer.h"
#include "tests/support/memory_key_value_store.h"
#include "tests/support/scripted_http_client.h"
#include "tests/support/standing_clock.h"
#include "update/update_checker.h"

#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace vantor {
namespace {

using namespace std::string_literals;
using testing::ManualTimer;
using testing::MemoryKeyValueStore;
using testing::ScriptedHttpClient;
using testing::StandingClock;

using Text = std::optional<std::string>;

constexpr const char* kVersionKey = "check.lastKnownVersion";
constexpr const char* kURLKey = "check.lastKnownDownloadURL";
constexpr const char* kDateKey = "check.lastCheckDate";
constexpr const char* kDownload = "https://vantor.example/download";
constexpr const char* kRememberedVersion = "2.0";
constexpr const char* kRememberedURL = "https://vantor.example/2.0";
constexpr Timestamp kNow{800'000'000.25};

struct Answer {
    std::string name;
    Text body;
    // Where version 3.0 can be downloaded; absent where the answer is a bad one.
    Text url;
};

void PrintTo(const Answer& each, std::ostream* out) {
    *out << each.name;
}

// What the checker knows before the answer comes, from an earlier run.
enum class Memory { None, Newer };

void PrintTo(Memory memory, std::ostream* out) {
    *out << (memory == Memory::None ? "nothing known" : "a newer version known");
}

class UpdateAnswersTest : public ::testing::TestWithParam<std::tuple<Answer, Memory>> {
protected:
    UpdateAnswersTest() {
        if (std::get<Memory>(GetParam()) == Memory::Newer) {
            defaults.setText(kVersionKey, kRememberedVersion);
            defaults.setText(kURLKey, kRememberedURL);
        }
    }

    UpdateChecker makeChecker() {
        return {"https://vantor.example/version", "check", "1.9.9", client, defaults, timer, clock.clock()};
    }

    ScriptedHttpClient client;
    MemoryKeyValueStore defaults;
    ManualTimer timer;
    StandingClock clock{kNow};
};

TEST_P(UpdateAnswersTest, IsBelievedWholeOrLeavesNoTraceButItsTime) {
    const auto& answer = std::get<Answer>(GetParam());
    auto checker = makeChecker();
    const auto versionBefore = checker.availableVersion();
    const auto urlBefore = checker.downloadURL();
    int changes = 0;
    const auto subscription = checker.willChange().connect([&](UpdateChecker::Change) { ++changes; });

    checker.checkForUpdate();
    client.answer(answer.body);

    const auto version = answer.url ? Text("3.0") : versionBefore;
    const auto url = answer.url ? answer.url : urlBefore;
    EXPECT_EQ(checker.availableVersion(), version);
    EXPECT_EQ(checker.downloadURL(), url);
    EXPECT_EQ(changes, answer.url ? 2 : 0);
    EXPECT_EQ(defaults.text(kVersionKey), version);
    EXPECT_EQ(defaults.text(kURLKey), url);
    ASSERT_TRUE(defaults.date(kDateKey));
    EXPECT_EQ(defaults.date(kDateKey)->secondsSinceReference, kNow.secondsSinceReference);
    EXPECT_EQ(defaults.values.size(), version ? 3U : 1U);

    const auto next = makeChecker();
    EXPECT_EQ(next.availableVersion(), version);
    EXPECT_EQ(next.downloadURL(), url);
}

std::vector<Answer> answers() {
    const std::string version = R"("version":"3.0")";
    const std::string address = R"("download_url":"https://vantor.example/download")";
    const auto plain = "{" + version + "," + address + "}";
    std::vector<Answer> all{
        {"Plain", plain, kDownload},
        {"SpreadOutAndEscaped",
         "\uFEFF\r\n{ \"download\\u005Furl\" : \"https:\\/\\/vantor.example/downl\\u006Fad\" ,\n "
         "\"version\" : \"\\u0033.0\" } \r\n",
         kDownload},
        {"OtherMembers", R"({"a":[1,{"version":"9"}],"":"",)" + plain.substr(1), kDownload},
        {"LastOfSeveralAddresses", R"({"download_url":"javascript:x",)" + plain.substr(1), kDownload},
        {"LongAddress",
         "{" + version + R"(,"download_url":"https://vantor.example/)" + std::string(60'000, 'x') + "\"}",
         "https://vantor.example/" + std::string(60'000, 'x')},
    };
    const auto bad = [&](const char* name, const Text& body) { all.push_back({name, body, std::nullopt}); };
    bad("NoBody", std::nullopt);
    bad("NothingInIt", "");
    bad("WebPageWithTheAnswerInIt", "<script>" + plain + "</script>");
    bad("AnswerInAnArray", "[" + plain + "]");
    bad("AnswerInAnObject", R"({"data":)" + plain + "}");
    bad("NotClosed", plain.substr(0, plain.size() - 1));
    bad("TextBehind", plain + "x");
    bad("NulBehind", plain + "\0"s);
    bad("InvalidUtf8InAnIgnoredMember", "{\"a\":\"\xC3\"," + plain.substr(1));
    bad("VersionMissing", "{" + address + "}");
    bad("AddressMissing", "{" + version + "}");
    bad("VersionEmpty", R"({"version":"",)" + address + "}");
    bad("VersionInCapitals", R"({"VERSION":"3.0",)" + address + "}");
    for (const auto* const value : {"null", "true", "3.0", R"(["3.0"])", R"({"major":3})"}) {
        bad("VersionOfAnotherKind", R"({"version":)" + std::string(value) + "," + address + "}");
        bad("AddressOfAnotherKind", "{" + version + R"(,"download_url":)" + value + "}");
    }
    for (const auto* const other :
         {"", "javascript:alert(1)", "file:///etc/passwd", " https://vantor.example/"})
        bad("NoWebAddress", "{" + version + R"(,"download_url":")" + other + "\"}");
    bad("LastOfSeveralAddressesIsNone",
        plain.substr(0, plain.size() - 1) + R"(,"download_url":"javascript:x"})");
    // Old versions too are only believed together with an address.
    bad("OldVersionWithoutAnAddress", R"({"version":"1.0","download_url":"geen adres"})");
    return all;
}

std::string nameOf(const ::testing::TestParamInfo<std::tuple<Answer, Memory>>& info) {
    return std::get<Answer>(info.param).name + "Nr" + std::to_string(info.index) +
           (std::get<Memory>(info.param) == Memory::None ? "" : "WhileANewerVersionIsKnown");
}

INSTANTIATE_TEST_SUITE_P(All, UpdateAnswersTest,
                         ::testing::Combine(::testing::ValuesIn(answers()),
                                            ::testing::Values(Memory::None, Memory::Newer)),
                         nameOf);

} // namespace
} // namespace vantor
