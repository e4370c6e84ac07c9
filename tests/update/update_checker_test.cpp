#include "tests/support/manual_timer.h"
#include "tests/support/memory_key_value_store.h"
#include "tests/support/scripted_http_client.h"
#include "tests/support/standing_clock.h"
#include "update/update_checker.h"

#include <gmock/gmock.h>

#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vantor {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Text = std::optional<std::string>;
using Change = UpdateChecker::Change;

constexpr const char* kEndpoint = "https://vantor.example/version";
constexpr const char* kVersionKey = "check.lastKnownVersion";
constexpr const char* kURLKey = "check.lastKnownDownloadURL";
constexpr const char* kDateKey = "check.lastCheckDate";
constexpr const char* kDownload = "https://vantor.example/download";
constexpr Timestamp kNow{800'000'000.25};

Timestamp later(Timestamp than, double seconds) {
    return {than.secondsSinceReference + seconds};
}

std::string answerOf(const std::string& version, const std::string& url = kDownload) {
    return R"({"version":")" + version + R"(","download_url":")" + url + R"("})";
}

class UpdateCheckerTest : public ::testing::Test {
protected:
    std::unique_ptr<UpdateChecker> makeChecker(std::string currentVersion = "1.9.9") {
        return std::make_unique<UpdateChecker>(kEndpoint, "check", std::move(currentVersion), client,
                                               defaults, timer, clock.clock());
    }

    // Lets a checker that may ask again take one more answer.
    void answerNext(UpdateChecker& checker, const Text& body) {
        clock.set(later(clock.now(), 21'600));
        checker.checkForUpdate();
        client.answer(body);
    }

    // What an earlier run has left.
    void remember(const Text& version, const Text& url) {
        defaults.values.clear();
        if (version)
            defaults.setText(kVersionKey, *version);
        if (url)
            defaults.setText(kURLKey, *url);
    }

    static void expectKnown(const UpdateChecker& checker, const Text& version, const Text& url) {
        EXPECT_EQ(checker.availableVersion(), version);
        EXPECT_EQ(checker.downloadURL(), url);
    }

    testing::ScriptedHttpClient client;
    testing::MemoryKeyValueStore defaults;
    testing::ManualTimer timer;
    testing::StandingClock clock{kNow};
};

TEST_F(UpdateCheckerTest, AsksItsEndpointWithinLimitsAndNothingBeforeItIsToldTo) {
    UpdateChecker checker(kEndpoint, "vantorprep.updateChecker", "1.2", client, defaults, timer,
                          clock.clock());
    EXPECT_EQ(checker.lastKnownVersionKey(), "vantorprep.updateChecker.lastKnownVersion");
    EXPECT_EQ(checker.lastKnownURLKey(), "vantorprep.updateChecker.lastKnownDownloadURL");
    EXPECT_EQ(checker.lastCheckKey(), "vantorprep.updateChecker.lastCheckDate");
    EXPECT_EQ(checker.endpoint(), kEndpoint);
    EXPECT_EQ(checker.currentVersion(), "1.2");
    EXPECT_EQ(client.questions + timer.starts, 0);
    EXPECT_THAT(defaults.values, IsEmpty());

    checker.checkForUpdate();
    EXPECT_EQ(client.questions, 1);
    EXPECT_EQ(client.lastAddress, kEndpoint);
    EXPECT_EQ(client.lastLimits.silence, 6s);
    EXPECT_EQ(client.lastLimits.whole, 8s);
    EXPECT_EQ(client.lastLimits.mostBytes, 65'536U);
}

TEST_F(UpdateCheckerTest, GivesNoNoticeOfAnUnusableMemoryAndLeavesItAsItIs) {
    using Left = std::pair<Text, Text>;
    for (const auto& [version, url] :
         {Left{"3", std::nullopt}, Left{std::nullopt, kDownload}, Left{"3", "http:// geen adres"},
          Left{"3", ""}, Left{"3", "file:///tmp/prep"}, Left{"3", "javascript:alert(1)"},
          Left{"3", " https://vantor.example/"}, Left{"1.9.9.0", kDownload}, Left{"1.9.8", kDownload},
          Left{"", kDownload}}) {
        SCOPED_TRACE(version.value_or("(no version)") + " at " + url.value_or("(no address)"));
        remember(version, url);
        expectKnown(*makeChecker(), std::nullopt, std::nullopt);
        EXPECT_EQ(defaults.text(kVersionKey), version);
        EXPECT_EQ(defaults.text(kURLKey), url);
    }
}

TEST_F(UpdateCheckerTest, StartsWithACheckAndRepeatsItEverySixHoursHoweverOftenItIsStarted) {
    const auto checker = makeChecker();
    checker->start();
    EXPECT_EQ(client.questions, 1);
    EXPECT_TRUE(timer.repeating);
    EXPECT_EQ(timer.interval, 21'600s);
    client.answer(std::nullopt);
    checker->start();
    EXPECT_EQ(client.questions, 1);

    clock.set(later(kNow, 21'600));
    timer.fire();
    EXPECT_EQ(client.questions, 2);
}

TEST_F(UpdateCheckerTest, AsksSixHoursAfterTheLastAnswer) {
    constexpr double kYear = 31'536'000;
    using Asked = std::pair<double, int>;
    // The clock may have been set back too, and the moment be none.
    for (const auto& [seconds, questions] :
         {Asked{0, 0}, Asked{1, 0}, Asked{21'599.5, 0}, Asked{21'600, 1}, Asked{21'600.5, 1}, Asked{kYear, 1},
          Asked{-3'600, 0}, Asked{-kYear, 0}, Asked{std::numeric_limits<double>::quiet_NaN(), 1}}) {
        client.questions = 0;
        defaults.setDate(kDateKey, kNow);
        clock.set(later(kNow, seconds));
        makeChecker()->checkForUpdate();
        EXPECT_EQ(client.questions, questions) << seconds;
    }
}

TEST_F(UpdateCheckerTest, StoresTheMomentOfTheAnswerNotOfTheQuestion) {
    const auto checker = makeChecker();
    checker->checkForUpdate();
    EXPECT_EQ(defaults.date(kDateKey), std::nullopt);
    clock.set(later(kNow, 5));
    client.answer(answerOf("2.0"));
    ASSERT_TRUE(defaults.date(kDateKey));
    EXPECT_EQ(defaults.date(kDateKey)->secondsSinceReference, later(kNow, 5).secondsSinceReference);

    clock.set(later(kNow, 21'604));
    checker->checkForUpdate();
    EXPECT_EQ(client.questions, 1);
    clock.set(later(kNow, 21'605));
    checker->checkForUpdate();
    EXPECT_EQ(client.questions, 2);
}

TEST_F(UpdateCheckerTest, PublishesAndRemembersANewerVersionUntilItIsInstalled) {
    const auto checker = makeChecker("1.9.9");
    answerNext(*checker, answerOf("2.0", "http://vantor.example/2%2E0"));
    expectKnown(*checker, "2.0", "http://vantor.example/2%2E0");
    expectKnown(*makeChecker("1.9.9"), "2.0", "http://vantor.example/2%2E0");
    expectKnown(*makeChecker("2.0"), std::nullopt, std::nullopt);

    answerNext(*checker, answerOf("1.9.9"));
    expectKnown(*checker, std::nullopt, std::nullopt);
    EXPECT_FALSE(defaults.values.contains(kVersionKey));
    EXPECT_FALSE(defaults.values.contains(kURLKey));
    EXPECT_TRUE(defaults.date(kDateKey));
}

struct Answer {
    std::string name;
    Text body;
    // Where version 3.0 can be downloaded; absent where the answer is a bad one.
    Text url;
};

std::vector<Answer> answers() {
    const std::string version = R"("version":"3.0")";
    const std::string address = R"("download_url":"https://vantor.example/download")";
    const auto plain = "{" + version + "," + address + "}";
    const auto longAddress = "https://vantor.example/" + std::string(60'000, 'x');
    std::vector<Answer> all{
        {"plain", plain, kDownload},
        {"escaped", R"({"download\u005Furl":"https:\/\/vantor.example/downl\u006Fad","version":"\u0033.0"})",
         kDownload},
        {"other members", R"({"a":[1,{"version":"9"}],"":"",)" + plain.substr(1), kDownload},
        {"last of several addresses", R"({"download_url":"javascript:x",)" + plain.substr(1), kDownload},
        {"long address", "{" + version + R"(,"download_url":")" + longAddress + "\"}", longAddress},
    };
    const auto bad = [&](const char* name, const Text& body) { all.push_back({name, body, std::nullopt}); };
    bad("no body", std::nullopt);
    bad("nothing in it", "");
    bad("web page with the answer in it", "<script>" + plain + "</script>");
    bad("answer in an array", "[" + plain + "]");
    bad("answer in an object", R"({"data":)" + plain + "}");
    bad("text behind", plain + "x");
    bad("no version", "{" + address + "}");
    bad("no address", "{" + version + "}");
    bad("empty version", R"({"version":"",)" + address + "}");
    bad("version in capitals", R"({"VERSION":"3.0",)" + address + "}");
    for (const auto* const value : {"null", "true", "3.0", R"(["3.0"])", R"({"major":3})"}) {
        bad("version of another kind", R"({"version":)" + std::string(value) + "," + address + "}");
        bad("address of another kind", "{" + version + R"(,"download_url":)" + value + "}");
    }
    for (const auto* const other :
         {"", "javascript:alert(1)", "file:///etc/passwd", " https://vantor.example/"})
        bad("no web address", "{" + version + R"(,"download_url":")" + other + "\"}");
    bad("last of several addresses is none",
        plain.substr(0, plain.size() - 1) + R"(,"download_url":"javascript:x"})");
    bad("old version without an address", R"({"version":"1.0","download_url":"geen adres"})");
    return all;
}

TEST_F(UpdateCheckerTest, BelievesAnAnswerWholeOrKeepsNothingOfItButItsTime) {
    for (const auto& answer : answers()) {
        for (const Text& known : {Text(), Text("2.0")}) {
            SCOPED_TRACE(answer.name + ": " + answer.body.value_or("").substr(0, 200) + " where " +
                         known.value_or("nothing") + " was known");
            const Text knownURL = known ? Text("https://vantor.example/2.0") : std::nullopt;
            remember(known, knownURL);
            const auto checker = makeChecker();
            int changes = 0;
            const auto subscription = checker->willChange().connect([&](Change) { ++changes; });
            checker->checkForUpdate();
            client.answer(answer.body);

            const auto version = answer.url ? Text("3.0") : known;
            const auto url = answer.url ? answer.url : knownURL;
            EXPECT_EQ(changes, answer.url ? 2 : 0);
            expectKnown(*checker, version, url);
            expectKnown(*makeChecker(), version, url);
            EXPECT_EQ(defaults.date(kDateKey), kNow);
            EXPECT_EQ(defaults.values.size(), version ? 3U : 1U);
        }
    }
}

TEST_F(UpdateCheckerTest, AnnouncesEveryChangeBeforeItTakesEffect) {
    const auto checker = makeChecker();
    using Announced = std::pair<Change, Text>;
    std::vector<Announced> announced;
    const auto subscription = checker->willChange().connect([&](Change change) {
        announced.emplace_back(change, change == Change::AvailableVersion ? checker->availableVersion()
                                                                          : checker->downloadURL());
    });

    answerNext(*checker, answerOf("2.0"));
    EXPECT_THAT(announced, ElementsAre(Announced(Change::AvailableVersion, std::nullopt),
                                       Announced(Change::DownloadURL, std::nullopt)));
    announced.clear();
    answerNext(*checker, answerOf("2.1"));
    EXPECT_THAT(announced, ElementsAre(Announced(Change::AvailableVersion, "2.0")));
    announced.clear();
    answerNext(*checker, answerOf("2.1"));
    EXPECT_THAT(announced, IsEmpty());
    answerNext(*checker, answerOf("1.0"));
    EXPECT_THAT(announced, ElementsAre(Announced(Change::AvailableVersion, "2.1"),
                                       Announced(Change::DownloadURL, kDownload)));
}

TEST_F(UpdateCheckerTest, GoneBeforeAnAnswerOrATickStoresAndAsksNothing) {
    auto checker = makeChecker();
    checker->start();
    checker.reset();
    client.answer(answerOf("2.0"));
    clock.set(later(kNow, 50'000));
    timer.fire();
    EXPECT_EQ(client.questions, 1);
    EXPECT_THAT(defaults.values, IsEmpty());
}

TEST(UpdateCheckerVersions, AreComparedNumberByNumber) {
    struct Versions {
        const char* a;
        const char* b;
        // Negative, zero or positive as `a` is older than, as new as, or newer than `b`.
        int order;
    };
    for (const auto& [a, b, order] :
         {Versions{"1.10", "1.9", 1}, Versions{"1.2", "1.2.0", 0}, Versions{"1.2.0.0.1", "1.2", 1},
          Versions{"2.0", "1.9.9", 1}, Versions{"1", "0", 1}, Versions{"0.0.1", "0", 1},
          Versions{"0.0.0", "0", 0}, Versions{"", "0", 0}, Versions{"", "", 0}, Versions{"...", "0", 0},
          Versions{"1", "", 1}, Versions{"beta", "0", 0}, Versions{"beta", "0.1", -1}, Versions{"1b", "0", 0},
          // A piece that is no number is left out, so that those behind it move up.
          Versions{"1b.2", "2", 0}, Versions{"1.beta.3", "1.3", 0}, Versions{"v2.0", "1.0", -1},
          Versions{"1..2", "1.2", 0}, Versions{".1.2.", "1.2", 0}, Versions{"+2", "2", 0},
          Versions{"+2", "1.9", 1}, Versions{"-1", "0", -1}, Versions{"-1", "", -1},
          Versions{"1.-1", "1", -1}, Versions{"-1", "-2", 1}, Versions{"-10", "-9", -1},
          Versions{"-0", "0", 0}, Versions{"+0", "-0", 0}, Versions{"+", "0", 0}, Versions{"-", "0", 0},
          Versions{"+-5", "0", 0}, Versions{"--5", "0", 0}, Versions{"5-", "0", 0},
          Versions{"\u22121", "0", 0}, Versions{" 1", "0", 0}, Versions{"1 ", "0", 0},
          Versions{"0x10", "0", 0}, Versions{"1e9", "0", 0}, Versions{"\u0661", "0", 0},
          Versions{"007", "7", 0}, Versions{"1.010", "1.9", 1},
          Versions{"9223372036854775808", "9223372036854775807", 1}, Versions{"18446744073709551616", "1", 1},
          Versions{"18446744073709551617", "18446744073709551616", 1},
          Versions{"-99999999999999999999", "-9223372036854775808", -1},
          Versions{"00000000000000000000000000000001", "2", -1},
          Versions{"123456789012345678901234567890", "123456789012345678901234567890.0", 0},
          Versions{"1.99999999999999999999999999999999", "2", -1},
          // A point that carries an accent is no separator.
          Versions{"1.\u03015", "0", 0}, Versions{"3\xFF", "0", 0}}) {
        EXPECT_EQ(UpdateChecker::isVersion(a, b), order > 0) << a << " newer than " << b;
        EXPECT_EQ(UpdateChecker::isVersion(b, a), order < 0) << b << " newer than " << a;
        EXPECT_FALSE(UpdateChecker::isVersion(a, a)) << a;
    }
}

} // namespace
} // namespace vantor
