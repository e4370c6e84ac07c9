#include "tests/support/manual_timer.h"
#include "tests/support/memory_key_value_store.h"
#include "tests/support/scripted_http_client.h"
#include "tests/support/standing_clock.h"
#include "update/update_checker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace vantor {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::ManualTimer;
using testing::MemoryKeyValueStore;
using testing::ScriptedHttpClient;
using testing::StandingClock;

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

    ScriptedHttpClient client;
    MemoryKeyValueStore defaults;
    ManualTimer timer;
    StandingClock clock{kNow};
};

TEST_F(UpdateCheckerTest, BuildsItsKeysFromThePrefix) {
    const UpdateChecker checker(kEndpoint, "vantorprep.updateChecker", "1.2", client, defaults, timer,
                                clock.clock());
    EXPECT_EQ(checker.lastKnownVersionKey(), "vantorprep.updateChecker.lastKnownVersion");
    EXPECT_EQ(checker.lastKnownURLKey(), "vantorprep.updateChecker.lastKnownDownloadURL");
    EXPECT_EQ(checker.lastCheckKey(), "vantorprep.updateChecker.lastCheckDate");
    EXPECT_EQ(checker.endpoint(), kEndpoint);
    EXPECT_EQ(checker.currentVersion(), "1.2");
    EXPECT_EQ(checker.minCheckInterval(), 21'600s);
}

TEST_F(UpdateCheckerTest, MakingItAsksNothingAndStoresNothing) {
    const auto checker = makeChecker();
    EXPECT_EQ(client.questions, 0);
    EXPECT_EQ(timer.starts, 0);
    EXPECT_THAT(defaults.values, IsEmpty());
}

TEST_F(UpdateCheckerTest, AsksTheEndpointWithinItsLimits) {
    const auto checker = makeChecker();
    checker->checkForUpdate();
    EXPECT_EQ(client.questions, 1);
    EXPECT_EQ(client.lastAddress, kEndpoint);
    EXPECT_EQ(client.lastLimits.silence, 6s);
    EXPECT_EQ(client.lastLimits.whole, 8s);
    EXPECT_EQ(client.lastLimits.mostBytes, 65'536U);
}

// Remembered versions

TEST_F(UpdateCheckerTest, KnowsARememberedNewerVersionAtOnce) {
    defaults.setText(kVersionKey, "2.0");
    defaults.setText(kURLKey, kDownload);
    const auto checker = makeChecker();
    EXPECT_EQ(checker->availableVersion(), "2.0");
    EXPECT_EQ(checker->downloadURL(), kDownload);
    EXPECT_EQ(client.questions, 0);
}

struct Remembered {
    const char* name;
    Text version;
    Text url;
};

void PrintTo(const Remembered& each, std::ostream* out) {
    *out << each.name;
}

class UnusableMemoryTest : public UpdateCheckerTest, public ::testing::WithParamInterface<Remembered> {};

TEST_P(UnusableMemoryTest, GivesNoNoticeAndIsLeftAsItIs) {
    if (GetParam().version)
        defaults.setText(kVersionKey, *GetParam().version);
    if (GetParam().url)
        defaults.setText(kURLKey, *GetParam().url);
    const auto checker = makeChecker();
    EXPECT_EQ(checker->availableVersion(), std::nullopt);
    EXPECT_EQ(checker->downloadURL(), std::nullopt);
    EXPECT_EQ(defaults.text(kVersionKey), GetParam().version);
    EXPECT_EQ(defaults.text(kURLKey), GetParam().url);
}

INSTANTIATE_TEST_SUITE_P(All, UnusableMemoryTest,
                         ::testing::Values(Remembered{"NoURL", "3", std::nullopt},
                                           Remembered{"NoVersion", std::nullopt, kDownload},
                                           Remembered{"NotAURL", "3", "http:// geen adres"},
                                           Remembered{"EmptyURL", "3", ""},
                                           Remembered{"OtherScheme", "3", "file:///tmp/prep"},
                                           Remembered{"Script", "3", "javascript:alert(1)"},
                                           Remembered{"BlankInFront", "3", " https://vantor.example/"},
                                           Remembered{"SameVersion", "1.9.9.0", kDownload},
                                           Remembered{"OlderVersion", "1.9.8", kDownload},
                                           Remembered{"EmptyVersion", "", kDownload}),
                         [](const auto& each) { return each.param.name; });

TEST_F(UpdateCheckerTest, DoesNotTakeADateForARememberedVersion) {
    defaults.setDate(kVersionKey, kNow);
    defaults.setText(kURLKey, kDownload);
    EXPECT_EQ(makeChecker()->availableVersion(), std::nullopt);
}

// When it asks

TEST_F(UpdateCheckerTest, StartsWithACheckAndRepeatsItEverySixHours) {
    const auto checker = makeChecker();
    checker->start();
    EXPECT_EQ(client.questions, 1);
    EXPECT_TRUE(timer.repeating);
    EXPECT_EQ(timer.interval, 21'600s);

    client.answer(std::nullopt);
    clock.set(later(kNow, 21'600));
    timer.fire();
    EXPECT_EQ(client.questions, 2);
}

TEST_F(UpdateCheckerTest, StartedTwiceKeepsOneTimer) {
    const auto checker = makeChecker();
    checker->start();
    client.answer(std::nullopt);
    checker->start();
    EXPECT_EQ(client.questions, 1);
    EXPECT_EQ(timer.interval, 21'600s);

    clock.set(later(kNow, 21'600));
    timer.fire();
    EXPECT_EQ(client.questions, 2);
}

struct Elapsed {
    const char* name;
    double seconds;
    bool asks;
};

void PrintTo(const Elapsed& each, std::ostream* out) {
    *out << each.name;
}

class ElapsedTest : public UpdateCheckerTest, public ::testing::WithParamInterface<Elapsed> {};

TEST_P(ElapsedTest, DecidesWhetherItAsks) {
    defaults.setDate(kDateKey, kNow);
    clock.set(later(kNow, GetParam().seconds));
    makeChecker()->checkForUpdate();
    EXPECT_EQ(client.questions, GetParam().asks ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(All, ElapsedTest,
                         ::testing::Values(Elapsed{"Nothing", 0, false}, Elapsed{"OneSecond", 1, false},
                                           Elapsed{"AlmostSixHours", 21'599.5, false},
                                           Elapsed{"ExactlySixHours", 21'600, true},
                                           Elapsed{"MoreThanSixHours", 21'600.5, true},
                                           Elapsed{"AYear", 31'536'000, true},
                                           Elapsed{"ClockSetBackAnHour", -3'600, false},
                                           Elapsed{"ClockSetBackAYear", -31'536'000, false}),
                         [](const auto& each) { return each.param.name; });

TEST_F(UpdateCheckerTest, AsksWhenTheStoredDateIsAText) {
    defaults.setText(kDateKey, "2026-11-21T09:00:00Z");
    makeChecker()->checkForUpdate();
    EXPECT_EQ(client.questions, 1);
}

TEST_F(UpdateCheckerTest, AsksWhenTheStoredDateIsNoMoment) {
    defaults.setDate(kDateKey, {std::numeric_limits<double>::quiet_NaN()});
    makeChecker()->checkForUpdate();
    EXPECT_EQ(client.questions, 1);
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

TEST_F(UpdateCheckerTest, WaitsSixHoursAfterNoAnswerToo) {
    const auto checker = makeChecker();
    checker->checkForUpdate();
    client.answer(std::nullopt);
    clock.set(later(kNow, 21'599));
    checker->checkForUpdate();
    EXPECT_EQ(client.questions, 1);
}

// What it makes of an answer

TEST_F(UpdateCheckerTest, PublishesAndRemembersANewerVersionUntilItIsInstalled) {
    const auto checker = makeChecker("1.9.9");
    answerNext(*checker, answerOf("2.0"));
    EXPECT_EQ(checker->availableVersion(), "2.0");
    EXPECT_EQ(checker->downloadURL(), kDownload);
    EXPECT_EQ(defaults.text(kVersionKey), "2.0");
    EXPECT_EQ(defaults.text(kURLKey), kDownload);

    answerNext(*checker, answerOf("1.9.9"));
    EXPECT_EQ(checker->availableVersion(), std::nullopt);
    EXPECT_EQ(checker->downloadURL(), std::nullopt);
    EXPECT_FALSE(defaults.values.contains(kVersionKey));
    EXPECT_FALSE(defaults.values.contains(kURLKey));
    EXPECT_TRUE(defaults.date(kDateKey));
}

TEST_F(UpdateCheckerTest, ForgetsWhatAnAnswerSaysIsOld) {
    defaults.setText(kVersionKey, "2.0");
    defaults.setText(kURLKey, kDownload);
    const auto checker = makeChecker("1.0");
    answerNext(*checker, answerOf("0.9"));
    EXPECT_EQ(checker->availableVersion(), std::nullopt);
    EXPECT_FALSE(defaults.values.contains(kVersionKey));
    EXPECT_FALSE(defaults.values.contains(kURLKey));
}

TEST_F(UpdateCheckerTest, RemembersForTheNextStart) {
    answerNext(*makeChecker("1.0"), answerOf("1.1", "http://vantor.example/1%2E1"));
    const auto next = makeChecker("1.0");
    EXPECT_EQ(next->availableVersion(), "1.1");
    EXPECT_EQ(next->downloadURL(), "http://vantor.example/1%2E1");
    EXPECT_EQ(makeChecker("1.1")->availableVersion(), std::nullopt);
}

// Announcements

TEST_F(UpdateCheckerTest, AnnouncesEveryChangeBeforeItTakesEffect) {
    const auto checker = makeChecker();
    std::vector<std::pair<Change, Text>> announced;
    const auto subscription = checker->willChange().connect([&](Change change) {
        announced.emplace_back(change, change == Change::AvailableVersion ? checker->availableVersion()
                                                                          : checker->downloadURL());
    });
    using Announced = std::pair<Change, Text>;

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

// Lifetime

TEST_F(UpdateCheckerTest, GoneBeforeTheAnswerStoresNothing) {
    auto checker = makeChecker();
    checker->checkForUpdate();
    checker.reset();
    client.answer(answerOf("2.0"));
    EXPECT_THAT(defaults.values, IsEmpty());
}

TEST_F(UpdateCheckerTest, GoneBeforeTheTickAsksNothing) {
    auto checker = makeChecker();
    checker->start();
    client.answer(std::nullopt);
    clock.set(later(kNow, 50'000));
    checker.reset();
    timer.fire();
    EXPECT_EQ(client.questions, 1);
}

// Versions

struct Versions {
    const char* a;
    const char* b;
    // Negative, zero or positive as `a` is older than, as new as, or newer than `b`.
    int order;
};

void PrintTo(const Versions& each, std::ostream* out) {
    *out << each.a << " and " << each.b;
}

class VersionTest : public ::testing::TestWithParam<Versions> {};

TEST_P(VersionTest, IsNewerOrNot) {
    const auto& [a, b, order] = GetParam();
    EXPECT_EQ(UpdateChecker::isVersion(a, b), order > 0) << a << " newer than " << b;
    EXPECT_EQ(UpdateChecker::isVersion(b, a), order < 0) << b << " newer than " << a;
    EXPECT_FALSE(UpdateChecker::isVersion(a, a)) << a;
}

INSTANTIATE_TEST_SUITE_P(
    All, VersionTest,
    ::testing::Values(
        Versions{"1.10", "1.9", 1}, Versions{"1.2", "1.2.0", 0}, Versions{"1.2.0.0.1", "1.2", 1},
        Versions{"2.0", "1.9.9", 1}, Versions{"1", "0", 1}, Versions{"0.0.1", "0", 1},
        Versions{"0.0.0", "0", 0}, Versions{"", "0", 0}, Versions{"", "", 0}, Versions{"...", "0", 0},
        Versions{"1", "", 1}, Versions{"beta", "0", 0}, Versions{"beta", "0.1", -1}, Versions{"1b", "0", 0},
        // A piece that is no number is left out, so that those behind it move up.
        Versions{"1b.2", "2", 0}, Versions{"1.beta.3", "1.3", 0}, Versions{"v2.0", "1.0", -1},
        Versions{"1..2", "1.2", 0}, Versions{".1.2.", "1.2", 0}, Versions{"+2", "2", 0},
        Versions{"+2", "1.9", 1}, Versions{"-1", "0", -1}, Versions{"-1", "", -1}, Versions{"1.-1", "1", -1},
        Versions{"-1", "-2", 1}, Versions{"-10", "-9", -1}, Versions{"-0", "0", 0}, Versions{"+0", "-0", 0},
        Versions{"+", "0", 0}, Versions{"-", "0", 0}, Versions{"+-5", "0", 0}, Versions{"--5", "0", 0},
        Versions{"5-", "0", 0},
        Versions{"\xE2\x88\x92"
                 "1",
                 "0", 0},
        Versions{" 1", "0", 0}, Versions{"1 ", "0", 0}, Versions{"0x10", "0", 0}, Versions{"1e9", "0", 0},
        Versions{"\xD9\xA1", "0", 0}, Versions{"007", "7", 0}, Versions{"1.010", "1.9", 1},
        Versions{"9223372036854775808", "9223372036854775807", 1}, Versions{"18446744073709551616", "1", 1},
        Versions{"18446744073709551617", "18446744073709551616", 1},
        Versions{"-99999999999999999999", "-9223372036854775808", -1},
        Versions{"00000000000000000000000000000001", "2", -1},
        Versions{"123456789012345678901234567890", "123456789012345678901234567890.0", 0},
        Versions{"1.99999999999999999999999999999999", "2", -1},
        // A point that carries an accent is no separator.
        Versions{"1.\xCC\x81"
                 "5",
                 "0", 0},
        Versions{"3\xFF", "0", 0}));

} // namespace
} // namespace vantor
