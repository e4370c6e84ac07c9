// Notices: what the notice strip says: one line at a time, with what can be done about it.
//
// - An error stays until it is mended or dismissed. Nothing but a newer error takes its place, and that one only until it is
//   dismissed. Whatever else came meanwhile is shown after them, if its time is not over by then.
// - Everything else goes after kShown; a newer one takes its place at once.
// - Notices of one topic are one: a later one takes the place of the earlier, and withdraw() takes it away.
#pragma once

#include "base/signal.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vantor {

struct NoticeAction {
    std::string text;
    std::function<void()> run;
};

struct Notice {
    enum class Kind { Plain, Done, Warning, Error };
    static constexpr std::size_t kMostActions = 3;

    Kind kind = Kind::Plain;
    // One line, in the language of the windows.
    std::string text;
    // kMostActions at most.
    std::vector<NoticeAction> actions;
    // What it is about: "saving"; empty for one of its own.
    std::string topic;
    // Given as it is shown: which one it is, from 1.
    std::uint64_t number = 0;
};

class Notices {
public:
    static constexpr std::chrono::milliseconds kShown{8000};
    // Tells the time, from any origin.
    using Stopwatch = std::function<std::chrono::milliseconds()>;

    explicit Notices(Stopwatch stopwatch) : m_stopwatch(std::move(stopwatch)) {}

    void show(Notice notice);
    // Takes away what is shown of this topic, or waits.
    void withdraw(const std::string& topic);
    // Takes away what is shown.
    void dismiss();
    // Takes away what has been shown long enough.
    void expire();

    // Null when there is nothing to say. Good until the next call.
    [[nodiscard]] const Notice* current() const;
    // How many were shown so far.
    [[nodiscard]] std::uint64_t count() const { return m_count; }
    // When expire() has something to do next, from now; absent when never.
    [[nodiscard]] std::optional<std::chrono::milliseconds> timeLeft() const;

    [[nodiscard]] Signal<>& didChange() { return m_didChange; }

private:
    struct Shown {
        Notice notice;
        std::chrono::milliseconds until;
    };

    void removeTopic(const std::string& topic);

    Stopwatch m_stopwatch;
    // Errors, the oldest first, and the one other notice.
    std::vector<Notice> m_errors;
    std::optional<Shown> m_other;
    std::uint64_t m_count = 0;
    Signal<> m_didChange;
};

} // namespace vantor
