#include "view/notices.h"

#include <gmock/gmock.h>

namespace vantor {
namespace {

using namespace std::chrono_literals;
using Kind = Notice::Kind;

class NoticesTest : public ::testing::Test {
protected:
    void show(Kind kind, const std::string& text, const std::string& topic = {}) {
        m_notices.show({kind, text, {}, topic});
    }
    [[nodiscard]] std::string shown() const {
        return m_notices.current() != nullptr ? m_notices.current()->text : std::string();
    }
    void passes(std::chrono::milliseconds time) {
        m_now += time;
        m_notices.expire();
    }

    std::chrono::milliseconds m_now{0};
    Notices m_notices{[this] { return m_now; }};
};

TEST_F(NoticesTest, WhatIsNoErrorGoesAfterItsTimeOrForANewerOne) {
    show(Kind::Done, "een");
    show(Kind::Warning, "twee");
    EXPECT_EQ(shown(), "twee");
    passes(Notices::kShown - 1ms);
    EXPECT_EQ(shown(), "twee");
    EXPECT_EQ(m_notices.timeLeft(), 1ms);
    passes(1ms);
    EXPECT_EQ(shown(), "");
    EXPECT_EQ(m_notices.timeLeft(), std::nullopt);
}

TEST_F(NoticesTest, ErrorStaysAndOnlyANewerOneTakesItsPlace) {
    show(Kind::Error, "schijf vol", "saving");
    show(Kind::Done, "verwijderd");
    show(Kind::Error, "kan niet lezen", "file");
    passes(Notices::kShown - 1ms);
    EXPECT_EQ(shown(), "kan niet lezen");
    m_notices.dismiss();
    EXPECT_EQ(shown(), "schijf vol");
    m_notices.dismiss();
    EXPECT_EQ(shown(), "verwijderd") << "its time is not over yet";
    passes(1ms);
    EXPECT_EQ(shown(), "");

    // Those of one topic are one.
    show(Kind::Error, "schijf vol", "saving");
    show(Kind::Error, "alleen te lezen", "saving");
    EXPECT_EQ(shown(), "alleen te lezen");
    m_notices.withdraw("file");
    EXPECT_EQ(shown(), "alleen te lezen");
    m_notices.withdraw("saving");
    EXPECT_EQ(shown(), "");
}

} // namespace
} // namespace vantor
