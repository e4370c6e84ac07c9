#include "base/timestamp.h"
#include "tests/support/generators.h"
#include "tests/support/table.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <chrono>
#include <cmath>
#include <limits>

namespace vantor {
namespace {

struct Moment {
    double seconds;
    std::string text;
};

TEST(WrittenMoment, IsIso8601InUtcRoundedDown) {
    for (const auto& [seconds, text] :
         {Moment{0, "2001-01-01T00:00:00Z"}, Moment{795173400, "2026-03-14T09:30:00Z"},
          Moment{795173400.999, "2026-03-14T09:30:00Z"}, Moment{-0.25, "2000-12-31T23:59:59Z"},
          Moment{-978307200, "1970-01-01T00:00:00Z"}, Moment{-27043200.0, "2000-02-23T00:00:00Z"},
          Moment{252423993599, "9999-12-31T23:59:59Z"}, Moment{252423993600, "9999-12-31T23:59:59Z"},
          Moment{-63145526400, "0000-01-01T00:00:00Z"}, Moment{-63145526401, "0000-01-01T00:00:00Z"},
          Moment{1e300, "9999-12-31T23:59:59Z"}, Moment{-1e300, "0000-01-01T00:00:00Z"},
          Moment{std::numeric_limits<double>::infinity(), "9999-12-31T23:59:59Z"},
          Moment{std::numeric_limits<double>::quiet_NaN(), "0000-01-01T00:00:00Z"}}) {
        EXPECT_EQ(Timestamp{seconds}.iso8601(), text) << seconds;
    }
}

TEST(ReadMoment, IsThatManySecondsFromTheReferenceDate) {
    for (const auto& [seconds, text] :
         {Moment{795173400, "2026-03-14T09:30:00Z"}, Moment{795173400, "2026-03-14t09:30:00z"},
          Moment{795173400.25, "2026-03-14T09:30:00.25Z"},
          Moment{795173400.123456, "2026-03-14T09:30:00.123456000Z"},
          Moment{795173400, "2026-03-14T10:30:00+01:00"}, Moment{795173400, "2026-03-14T10:30:00+0100"},
          Moment{795173400, "2026-03-14T04:00:00-05:30"}, Moment{-26352000, "2000-03-02T00:00:00Z"},
          Moment{-26524800, "2000-02-29T00:00:00Z"}, Moment{-978307200, "1970-01-01T00:00:00Z"}}) {
        const auto read = Timestamp::parseIso8601(text);
        ASSERT_TRUE(read) << text;
        EXPECT_NEAR(read->secondsSinceReference, seconds, 1e-6) << text;
    }
}

TEST(UnreadableMoment, IsAbsent) {
    for (const auto& text : testing::tableOf<std::string>(
             "", "Z", "795173400", "2026-03-14", "2026-03-14T09:30:00", "2026-03-14T09:30Z",
             "2026-03-14 09:30:00Z", "2026-02-29T09:30:00Z", "2026-02-30T09:30:00Z", "2026-13-01T09:30:00Z",
             "2026-00-01T09:30:00Z", "2026-01-00T09:30:00Z", "2026-01-32T09:30:00Z", "2026-03-14T24:00:00Z",
             "2026-03-14T09:60:00Z", "2026-03-14T09:30:61Z", "2026-03-14T09:30:00.Z",
             "2026-03-14T09:30:00,5Z", "2026-03-14T09:30:00Zz", "2026-03-14T09:30:00Z ",
             " 2026-03-14T09:30:00Z", "2026-03-14T09:30:00.5", "2026-03-14T09:30:00+",
             "2026-03-14T09:30:00+01", "2026-03-14T09:30:00+xx:00", "2026-03-14T09:30:00+1",
             "2026-03-14T09:30:00+01:0", "2026-03-14T09:30:00+24:00", "2026-03-14T09:30:00+01:60",
             "2026-03-14T09:30:00*01:00", "12026-03-14T09:30:00Z", "-026-03-14T09:30:00Z",
             "+026-03-14T09:30:00Z", "2026-3-14T09:30:00Z", "2026-03-14T 9:30:00Z", "2026-03-14T09:30:-1Z")) {
        EXPECT_FALSE(Timestamp::parseIso8601(text)) << text;
    }
}

TEST(Timestamp, NowIsNow) {
    const auto sinceReference = [] {
        const auto sinceUnix = std::chrono::system_clock::now().time_since_epoch();
        return std::chrono::duration<double>(sinceUnix).count() - 978307200;
    };
    const auto before = sinceReference();
    const auto now = Timestamp::now().secondsSinceReference;
    EXPECT_GE(now, before - 1e-3);
    EXPECT_LE(now, sinceReference() + 1e-3);
}

RC_GTEST_PROP(TimestampProperty, WritesEveryNumberInOneFormThatReadsBackToTheSecond, (double seconds)) {
    RC_ASSERT(Timestamp{seconds}.iso8601().size() == 20U);
    RC_ASSERT(Timestamp::parseIso8601(Timestamp{seconds}.iso8601()).has_value());
    const auto moment = *testing::wholeSecond();
    const auto read = Timestamp::parseIso8601(moment.iso8601());
    RC_ASSERT(read.has_value());
    RC_ASSERT(read->secondsSinceReference == moment.secondsSinceReference);
}

RC_GTEST_PROP(TimestampProperty, NoTextIsACrash, ()) {
    const auto read = Timestamp::parseIso8601(*testing::damaged("2026-03-14T09:30:00.123+01:00"));
    if (read)
        RC_ASSERT(std::isfinite(read->secondsSinceReference));
}

} // namespace
} // namespace vantor
