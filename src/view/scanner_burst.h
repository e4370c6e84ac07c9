// ScannerBurst: tells a scanner's keys from a person's, by the times at which they were pressed.
//
// - A scanner types the line feeds of a card as Return, and Return once more at its end. A Return that is
//   followed by another key within kReturnPause is a line break; one followed by silence ends the card.
// - Times are the keys' own, in milliseconds from any origin, so that keys that had to wait for a busy program
//   are judged by when they were pressed, not by when they were read.
#pragma once

#include <cstdint>
#include <optional>

namespace vantor {

class ScannerBurst {
public:
    // Milliseconds.
    using Time = std::int64_t;

    static constexpr Time kReturnPause = 120;
    // Keys closer together than this come from no hand.
    static constexpr Time kScannerPace = 60;

    // What the Return that was waiting, if any, turns out to be.
    enum class EarlierReturn { None, LineBreak, EndOfCard };

    // Another key but Return.
    EarlierReturn key(Time at);
    // A Return, which waits from now on.
    EarlierReturn returnKey(Time at);

    // Whether a Return waits for what comes next.
    [[nodiscard]] bool returnWaits() const { return m_waiting.has_value(); }
    // Nothing came: the waiting Return has ended the card.
    void fallSilent() { m_waiting.reset(); }

    // Whether a key pressed at this time belongs to a burst of a scanner that is still typing.
    [[nodiscard]] bool isRunning(Time at) const;

private:
    EarlierReturn judge(Time at);

    std::optional<Time> m_waiting;
    std::optional<Time> m_last;
    bool m_atScannerPace = false;
};

} // namespace vantor
