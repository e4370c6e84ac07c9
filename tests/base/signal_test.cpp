#include "base/signal.h"

#include <gmock/gmock.h>

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

TEST_F(SignalTest, CallsInTheOrderOfConnectingWithItsArguments) {
    Signal<int, const std::string&> signal;
    signal.emit(6, "w");
    std::string heard;
    const auto first =
        signal.connect([&](int number, const std::string& text) { heard += std::to_string(number) + text; });
    const auto second = signal.connect([&](int, const std::string&) { heard += ";"; });
    signal.emit(7, "x");
    signal.emit(8, "y");
    EXPECT_EQ(heard, "7x;8y;");
}

TEST_F(SignalTest, SubscriptionEndsWithItsObjectOrWhenResetOrAssignedTo) {
    static_assert(!std::is_copy_constructible_v<Subscription>);
    auto a = note("a");
    {
        const auto b = note("b");
        EXPECT_THAT(emitted(), ElementsAre("a", "b"));
    }
    EXPECT_THAT(emitted(), ElementsAre("a"));
    a = note("c");
    auto& same = a;
    a = std::move(same);
    EXPECT_THAT(emitted(), ElementsAre("c"));
    a.reset();
    a.reset();
    EXPECT_THAT(emitted(), IsEmpty());
}

TEST_F(SignalTest, SubscriptionMovesWithItsObject) {
    std::vector<Subscription> all;
    for (int i = 0; i < 20; ++i)
        all.push_back(note(std::to_string(i)));
    EXPECT_EQ(emitted().size(), 20U);
    all.erase(all.begin() + 5, all.end());
    EXPECT_THAT(emitted(), ElementsAre("0", "1", "2", "3", "4"));
}

TEST_F(SignalTest, CallbackThatUnsubscribesItselfKeepsWhatItHoldsWhileItRuns) {
    auto self = std::make_shared<Subscription>();
    const auto held = std::make_shared<std::string>("held");
    *self = m_signal.connect([this, self, copy = held] {
        self->reset();
        m_called.push_back(*copy);
    });
    const auto after = note("after");
    EXPECT_THAT(emitted(), ElementsAre("held", "after"));
    EXPECT_EQ(held.use_count(), 1) << "the callback is freed once it has returned";
    EXPECT_THAT(emitted(), ElementsAre("after"));
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
    const auto first = signal->connect([&] { signal.reset(); });
    const auto second = signal->connect([&] { m_called.emplace_back("second"); });
    signal->emit();
    EXPECT_THAT(m_called, ElementsAre("second"));
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

// Which then ends while its own ends.
TEST_F(SignalTest, CallbackMayOwnTheSubscriptionOfAnother) {
    auto outer = m_signal.connect([owned = std::make_shared<Subscription>(note("inner"))] {});
    EXPECT_THAT(emitted(), ElementsAre("inner"));
    outer.reset();
    EXPECT_THAT(emitted(), IsEmpty());
}

} // namespace
} // namespace vantor
