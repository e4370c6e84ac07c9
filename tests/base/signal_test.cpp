#include "base/signal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

namespace vantor {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Called = std::vector<std::string>;

class SignalTest : public ::testing::Test {
protected:
    [[nodiscard]] Subscription note(const std::string& name) {
        return m_signal.connect([this, name] { m_called.push_back(name); });
    }
    Called emitted() {
        m_called.clear();
        m_signal.emit();
        return m_called;
    }

    Signal<> m_signal;
    Called m_called;
};

TEST_F(SignalTest, CallsInTheOrderOfConnecting) {
    EXPECT_THAT(emitted(), IsEmpty());
    const auto a = note("a");
    const auto b = note("b");
    const auto c = note("c");
    EXPECT_THAT(emitted(), ElementsAre("a", "b", "c"));
}

TEST_F(SignalTest, HandsOverItsArguments) {
    Signal<int, const std::string&> signal;
    std::string heard;
    const auto each =
        signal.connect([&](int number, const std::string& text) { heard += std::to_string(number) + text; });
    signal.emit(7, "x");
    signal.emit(8, "y");
    EXPECT_EQ(heard, "7x8y");
}

TEST_F(SignalTest, SubscriptionEndsWithItsObjectOrWhenReset) {
    auto a = note("a");
    {
        const auto b = note("b");
        EXPECT_THAT(emitted(), ElementsAre("a", "b"));
    }
    EXPECT_THAT(emitted(), ElementsAre("a"));
    a.reset();
    a.reset();
    EXPECT_THAT(emitted(), IsEmpty());
}

TEST_F(SignalTest, SubscriptionMovesWithItsObject) {
    static_assert(!std::is_copy_constructible_v<Subscription>);
    std::vector<Subscription> all;
    for (int i = 0; i < 20; ++i)
        all.push_back(note(std::to_string(i)));
    EXPECT_EQ(emitted().size(), 20U);
    all.erase(all.begin() + 5, all.end());
    EXPECT_THAT(emitted(), ElementsAre("0", "1", "2", "3", "4"));
}

TEST_F(SignalTest, AssigningASubscriptionEndsTheOneItHeld) {
    auto subscription = note("a");
    subscription = note("b");
    EXPECT_THAT(emitted(), ElementsAre("b"));
    auto& same = subscription;
    subscription = std::move(same);
    EXPECT_THAT(emitted(), ElementsAre("b"));
    subscription = Subscription();
    EXPECT_THAT(emitted(), IsEmpty());
}

TEST_F(SignalTest, CallbackMayUnsubscribeItself) {
    Subscription self;
    self = m_signal.connect([&] {
        m_called.emplace_back("self");
        self.reset();
        m_called.emplace_back("still running");
    });
    const auto after = note("after");
    EXPECT_THAT(emitted(), ElementsAre("self", "still running", "after"));
    EXPECT_THAT(emitted(), ElementsAre("after"));
}

TEST_F(SignalTest, CallbackThatUnsubscribesItselfKeepsWhatItHoldsWhileItRuns) {
    auto self = std::make_shared<Subscription>();
    const auto held = std::make_shared<std::string>("held");
    const std::weak_ptr<std::string> watched = held;
    std::string seen;
    *self = m_signal.connect([self, &seen, copy = held] {
        self->reset();
        seen = *copy;
    });
    m_signal.emit();
    EXPECT_EQ(seen, "held");
    EXPECT_EQ(watched.use_count(), 1) << "the callback is freed once it has returned";
}

// A later one is then not called, and none is passed over for an earlier one.
TEST_F(SignalTest, CallbackMayUnsubscribeOthers) {
    auto earlier = note("earlier");
    Subscription later;
    const auto middle = m_signal.connect([&] {
        m_called.emplace_back("middle");
        earlier.reset();
        later.reset();
    });
    later = note("later");
    const auto last = note("last");
    EXPECT_THAT(emitted(), ElementsAre("earlier", "middle", "last"));
    EXPECT_THAT(emitted(), ElementsAre("middle", "last"));
}

TEST_F(SignalTest, CallbackMaySubscribeOthersWhichAreFirstCalledNextTime) {
    std::vector<Subscription> added;
    const auto first = m_signal.connect([&] {
        m_called.emplace_back("first");
        while (added.size() < 1000)
            added.push_back(note("added"));
    });
    const auto last = note("last");
    EXPECT_THAT(emitted(), ElementsAre("first", "last"));
    EXPECT_EQ(emitted().size(), 1002U);
    EXPECT_EQ(m_called[2], "added");
}

TEST_F(SignalTest, CallbackMayEmitAgain) {
    int depth = 0;
    const auto nested = m_signal.connect([&] {
        m_called.push_back("in " + std::to_string(++depth));
        if (depth < 3)
            m_signal.emit();
        m_called.push_back("out " + std::to_string(depth--));
    });
    EXPECT_THAT(emitted(), ElementsAre("in 1", "in 2", "in 3", "out 3", "out 2", "out 1"));
}

TEST_F(SignalTest, CallbackMayDestroyTheSignal) {
    std::optional<Signal<>> signal(std::in_place);
    Called called;
    const auto first = signal->connect([&] {
        called.emplace_back("first");
        signal.reset();
    });
    const auto second = signal->connect([&] { called.emplace_back("second"); });
    signal->emit();
    EXPECT_THAT(called, ElementsAre("first", "second"));
}

TEST_F(SignalTest, EndingASubscriptionFreesItsCallbackAlsoWhenTheSignalIsGone) {
    const auto held = std::make_shared<int>(1);
    auto one = m_signal.connect([held] {});
    Subscription outliving;
    {
        Signal<> signal;
        outliving = signal.connect([held] {});
    }
    EXPECT_EQ(held.use_count(), 3);
    one.reset();
    EXPECT_EQ(held.use_count(), 2);
    outliving.reset();
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(SignalTest, CallbackMayOwnTheSubscriptionOfAnother) {
    auto inner = std::make_shared<Subscription>(note("inner"));
    auto outer = m_signal.connect([owned = std::move(inner)] {});
    EXPECT_THAT(emitted(), ElementsAre("inner"));
    outer.reset();
    EXPECT_THAT(emitted(), IsEmpty());
}

} // namespace
} // namespace vantor
