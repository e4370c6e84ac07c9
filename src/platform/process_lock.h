// ProcessLock: one process at a time may hold it, whichever way the last one ended.
//
// - Nothing waits for the holder; nothing throws. Used from one thread.
// - The holder may leave a line for the others, such as where it can be reached.
#pragma once

#include <string>
#include <string_view>

namespace vantor {

class ProcessLock {
public:
    enum class Attempt {
        // This process holds it, until it lets go or ends.
        Taken,
        // Another process does, and lives.
        HeldByOther,
        // There can be no lock: its folder cannot be made or written.
        Impossible,
    };

    virtual ~ProcessLock() = default;

    // Takes the lock if it is free or its holder has ended. Again while it is held: Taken.
    [[nodiscard]] virtual Attempt tryTake() = 0;
    virtual void release() = 0;

    // Leaves a text for the others, in place of an earlier one. Only for the holder; may fail in silence.
    virtual void tell(std::string_view text) = 0;
    // What the holder left; empty when it left nothing or it cannot be read.
    [[nodiscard]] virtual std::string told() const = 0;
};

} // namespace vantor
