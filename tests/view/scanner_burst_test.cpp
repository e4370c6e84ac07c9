#include "view/scanner_burst.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace vantor {
namespace {

using ::testing::ElementsAre;
using EarlierReturn = ScannerBurst::EarlierReturn;
using Time = ScannerBurst::Time;

// Types keys into a field that does what the burst tells it, and keeps the cards that were submitted.
class Field {
public:
    void key(Time at, char letter) {
        silenceUntil(at);
        settle(letter == '\n' ? m_burst.returnKey(at) : m_burst.key(at));
        if (letter == '\n')
            m_waitingSince = at;
        else
            m_text += letter;
    }
    // A key a pause; the first one at `from`. The result is the time of the last one.
    Time type(Time from, std::string_view keys, Time pause) {
        Time at = from;
        for (const char letter : keys) {
            key(at, letter);
            at += pause;
        }
        return at - pause;
    }
    // The program was busy: what was pressed meanwhile is read before any timer is served.
    void beBusy() { m_busy = true; }

    std::vector<std::string> cards() {
        if (m_burst.returnWaits()) {
            m_burst.fallSilent();
            submit();
        }
        return m_cards;
    }
    [[nodiscard]] const std::string& text() const { return m_text; }
    [[nodiscard]] const ScannerBurst& burst() const { return m_burst; }

private:
    void silenceUntil(Time at) {
        if (m_busy || !m_burst.returnWaits() || at - m_waitingSince <= ScannerBurst::kReturnPause)
            return;
        m_burst.fallSilent();
        submit();
    }
    void settle(EarlierReturn earlier) {
        if (earlier == EarlierReturn::LineBreak)
            m_text += '\n';
        else if (earlier == EarlierReturn::EndOfCard)
            submit();
    }
    void submit() {
        m_cards.push_back(m_text);
        m_text.clear();
    }

    ScannerBurst m_burst;
    Time m_waitingSince = 0;
    bool m_busy = false;
    std::string m_text;
    std::vector<std::string> m_cards;
};

constexpr const char* kCard = "SET:3\nBRAND:X\nITEM:cap/red";
constexpr const char* kOtherCard = "SET:4\nBRAND:Y";

// Milliseconds a key.
class ScannerPace : public ::testing::TestWithParam<Time> {};

TEST_P(ScannerPace, KeepsTheCardsLines) {
    Field field;
    field.type(1000, std::string(kCard) + "\n", GetParam());
    EXPECT_THAT(field.cards(), ElementsAre(kCard));
    EXPECT_EQ(field.text(), "");
}

TEST_P(ScannerPace, TakesReturnAndLineFeedAsOneEnd) {
    Field field;
    field.type(1000, std::string(kCard) + "\n\n", GetParam());
    // The line break at the end is trimmed by whoever takes the card.
    EXPECT_THAT(field.cards(), ElementsAre(std::string(kCard) + "\n"));
}

TEST_P(ScannerPace, TakesLinesThatEndInReturnAndLineFeed) {
    Field field;
    field.type(1000, "SET:3\n\nBRAND:X\n\n", GetParam());
    EXPECT_THAT(field.cards(), ElementsAre("SET:3\n\nBRAND:X\n"));
}

TEST_P(ScannerPace, TellsCardsApartThatCome300MillisecondsAfterEachOther) {
    Field field;
    const auto end = field.type(1000, std::string(kCard) + "\n", GetParam());
    field.type(end + 300, std::string(kOtherCard) + "\n", GetParam());
    EXPECT_THAT(field.cards(), ElementsAre(kCard, kOtherCard));
}

TEST_P(ScannerPace, TellsThemApartAlsoWhenTheProgramWasBusyMeanwhile) {
    Field field;
    field.beBusy();
    const auto end = field.type(1000, std::string(kCard) + "\n", GetParam());
    field.type(end + 300, std::string(kOtherCard) + "\n", GetParam());
    EXPECT_THAT(field.cards(), ElementsAre(kCard, kOtherCard));
}

TEST_P(ScannerPace, IsRunningBetweenItsKeysAndNotLongAfterThem) {
    Field field;
    const auto last = field.type(1000, "SET:3", GetParam());
    EXPECT_TRUE(field.burst().isRunning(last + GetParam()));
    EXPECT_TRUE(field.burst().isRunning(last + ScannerBurst::kReturnPause));
    EXPECT_FALSE(field.burst().isRunning(last + ScannerBurst::kReturnPause + 1));
}

INSTANTIATE_TEST_SUITE_P(ScannerBurst, ScannerPace, ::testing::Values(0, 1, 5, 20, 50),
                         [](const auto& tested) { return std::to_string(tested.param) + "ms"; });

TEST(ScannerBurst, AReturnThatIsFollowedByKeysAfterExactlyThePauseIsALineBreak) {
    ScannerBurst burst;
    burst.returnKey(1000);
    EXPECT_EQ(burst.key(1000 + ScannerBurst::kReturnPause), EarlierReturn::LineBreak);
    burst.returnKey(2000);
    EXPECT_EQ(burst.key(2001 + ScannerBurst::kReturnPause), EarlierReturn::EndOfCard);
}

TEST(ScannerBurst, AReturnIsJudgedOnce) {
    ScannerBurst burst;
    burst.key(0);
    EXPECT_EQ(burst.returnKey(5), EarlierReturn::None);
    EXPECT_TRUE(burst.returnWaits());
    EXPECT_EQ(burst.key(10), EarlierReturn::LineBreak);
    EXPECT_FALSE(burst.returnWaits());
    EXPECT_EQ(burst.key(15), EarlierReturn::None);
    burst.returnKey(20);
    burst.fallSilent();
    EXPECT_FALSE(burst.returnWaits());
    EXPECT_EQ(burst.key(25), EarlierReturn::None);
}

TEST(ScannerBurst, AReturnAfterALongWaitEndsTheCardAndWaitsItself) {
    ScannerBurst burst;
    burst.returnKey(0);
    EXPECT_EQ(burst.returnKey(1000), EarlierReturn::EndOfCard);
    EXPECT_TRUE(burst.returnWaits());
}

TEST(ScannerBurst, APersonsKeysAreNoBurstAndReturnEndsWhatWasTyped) {
    Field field;
    const auto last = field.type(1000, "SET:7", 180);
    EXPECT_FALSE(field.burst().isRunning(last + ScannerBurst::kScannerPace + 1));
    field.type(last + 180, "\n", 180);
    EXPECT_THAT(field.cards(), ElementsAre("SET:7"));
    ScannerBurst burst;
    EXPECT_FALSE(burst.isRunning(0)) << "before the first key";
    burst.key(1000);
    EXPECT_FALSE(burst.isRunning(1100)) << "a shortcut right after a key";
}

TEST(ScannerBurst, AnswersFromAnyOrigin) {
    // 49 days after the start of the windowing system, and before any clock began.
    for (const Time origin : {Time{-5000}, Time{0}, Time{4'294'967'290}}) {
        Field field;
        field.type(origin, std::string(kCard) + "\n", 5);
        EXPECT_THAT(field.cards(), ElementsAre(kCard)) << origin;
    }
}

TEST(ScannerBurst, ThreeCardsInARowStayThree) {
    Field field;
    Time at = 0;
    for (int i = 0; i < 3; ++i)
        at = field.type(at + 300, std::string(kCard) + "\n", 1);
    EXPECT_THAT(field.cards(), ElementsAre(kCard, kCard, kCard));
}

} // namespace
} // namespace vantor
