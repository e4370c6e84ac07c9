#include "view/scanner_burst.h"

#include <gmock/gmock.h>

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

const std::string kCard = "SET:3\nBRAND:X\nITEM:cap/red";
const std::string kOtherCard = "SET:4\nBRAND:Y";

TEST(ScannerBurst, KeepsLinesTogetherAndCardsApartAtEveryPace) {
    for (const Time pace : {0, 1, 5, 20, 50}) {
        SCOPED_TRACE(pace);
        // Return and line feed are one end; the line break that stays is trimmed by whoever takes the card.
        for (const std::string_view typed :
             {"SET:3\nBRAND:X\nITEM:cap/red\n", "SET:3\nBRAND:X\n\n", "SET:3\n\nBRAND:X\n\n"}) {
            Field field;
            field.type(1000, typed, pace);
            EXPECT_THAT(field.cards(), ElementsAre(typed.substr(0, typed.size() - 1)));
            EXPECT_EQ(field.text(), "");
        }
        for (const bool isBusyMeanwhile : {false, true}) {
            Field field;
            if (isBusyMeanwhile)
                field.beBusy();
            Time at = 700;
            for (const auto& each : {kCard, kOtherCard, kCard})
                at = field.type(at + 300, each + "\n", pace);
            EXPECT_THAT(field.cards(), ElementsAre(kCard, kOtherCard, kCard)) << isBusyMeanwhile;
        }
        Field field;
        const auto last = field.type(1000, "SET:3", pace);
        EXPECT_TRUE(field.burst().isRunning(last + pace));
        EXPECT_TRUE(field.burst().isRunning(last + ScannerBurst::kReturnPause));
        EXPECT_FALSE(field.burst().isRunning(last + ScannerBurst::kReturnPause + 1));
    }
}

TEST(ScannerBurst, AReturnIsALineBreakUpToExactlyThePauseAndTheEndOfTheCardAfterIt) {
    ScannerBurst burst;
    burst.returnKey(1000);
    EXPECT_EQ(burst.key(1000 + ScannerBurst::kReturnPause), EarlierReturn::LineBreak);
    burst.returnKey(2000);
    EXPECT_EQ(burst.key(2001 + ScannerBurst::kReturnPause), EarlierReturn::EndOfCard);
    burst.returnKey(3000);
    EXPECT_EQ(burst.returnKey(4000), EarlierReturn::EndOfCard);
    EXPECT_TRUE(burst.returnWaits());
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
        field.type(origin, kCard + "\n", 5);
        EXPECT_THAT(field.cards(), ElementsAre(kCard)) << origin;
    }
}

} // namespace
} // namespace vantor
