#include "platform/qt/qt_timer.h"
#include "tests/support/event_loop.h"

#include <gtest/gtest.h>

#include <memory>

namespace vantor {
namespace {

using namespace std::chrono_literals;
using testing::runFor;
using testing::runUntil;

TEST(QtTimerTest, RepeatsUntilStopped) {
    QtTimer timer;
    int fired = 0;
    timer.startRepeating(5ms, [&] {
        if (++fired == 3)
            timer.stop();
    });
    EXPECT_TRUE(runUntil([&] { return fired == 3; }));
    runFor(40ms);
    EXPECT_EQ(fired, 3);
}

TEST(QtTimerTest, FiresOnceAndNotEarly) {
    QtTimer timer;
    int fired = 0;
    const auto start = std::chrono::steady_clock::now();
    std::chrono::steady_clock::duration after{};
    timer.startOnce(60ms, [&] {
        ++fired;
        after = std::chrono::steady_clock::now() - start;
    });
    EXPECT_TRUE(runUntil([&] { return fired > 0; }));
    EXPECT_GE(after, 59ms);
    runFor(100ms);
    EXPECT_EQ(fired, 1);
}

TEST(QtTimerTest, ForgetsWhatWasStartedBeforeAndMayBeStartedAnewWhileItFires) {
    QtTimer timer;
    int first = 0;
    int second = 0;
    timer.startRepeating(5ms, [&] { ++first; });
    timer.startOnce(10ms, [&] { timer.startOnce(1ms, [&] { ++second; }); });
    EXPECT_TRUE(runUntil([&] { return second > 0; }));
    runFor(60ms);
    EXPECT_EQ(first, 0);
    EXPECT_EQ(second, 1);
}

TEST(QtTimerTest, DoesNotFireWhenStoppedOrGoneOrAtOnceForSixHours) {
    int fired = 0;
    QtTimer stopped;
    stopped.startRepeating(5ms, [&] { ++fired; });
    stopped.stop();
    auto gone = std::make_unique<QtTimer>();
    gone->startRepeating(5ms, [&] { ++fired; });
    gone.reset();
    QtTimer slow;
    slow.startRepeating(6h, [&] { ++fired; });
    runFor(40ms);
    EXPECT_EQ(fired, 0);
}

} // namespace
} // namespace vantor
