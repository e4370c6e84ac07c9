// Signal and Subscription: how a store tells whoever is interested that something is about to change.
//
// - connect() returns a Subscription; the callback is called until that object is destroyed or reset.
// - Callbacks run in the order in which they were connected, on the thread that emits.
// - While a signal is emitting, callbacks may connect, disconnect (themselves or each other), emit again, and
//   even destroy the signal: one that is disconnected is not called any more, one that is connected meanwhile
//   is first called at the next emission.
// - A Subscription may outlive its signal. Neither is safe to share between threads.
#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace vantor {

// Keeps one callback connected for as long as it lives. Movable, not copyable; empty by default.
class Subscription {
public:
    Subscription() = default;
    explicit Subscription(std::function<void()> disconnect) : m_disconnect(std::move(disconnect)) {}
    Subscription(Subscription&& other) noexcept : m_disconnect(std::exchange(other.m_disconnect, nullptr)) {}
    Subscription& operator=(Subscription&& other) noexcept {
        if (this != &other) {
            reset();
            m_disconnect = std::exchange(other.m_disconnect, nullptr);
        }
        return *this;
    }
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    ~Subscription() { reset(); }

    void reset() {
        if (const auto disconnect = std::exchange(m_disconnect, nullptr))
            disconnect();
    }

private:
    std::function<void()> m_disconnect;
};

template <typename... Arguments>
class Signal {
public:
    using Callback = std::function<void(Arguments...)>;

    Signal() = default;
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;

    [[nodiscard]] Subscription connect(Callback callback) {
        auto slot = std::make_shared<Slot>(Slot{std::move(callback), true});
        m_slots->push_back(slot);
        return Subscription([slot, slots = std::weak_ptr(m_slots)] {
            slot->connected = false;
            if (const auto list = slots.lock())
                std::erase(*list, slot);
        });
    }

    void emit(Arguments... arguments) const {
        // The copy keeps every callback alive while it runs, and this call safe if the signal goes away.
        const auto slots = *m_slots;
        for (const auto& slot : slots) {
            if (slot->connected)
                slot->callback(arguments...);
        }
    }

private:
    struct Slot {
        Callback callback;
        bool connected;
    };

    std::shared_ptr<std::vector<std::shared_ptr<Slot>>> m_slots =
        std::make_shared<std::vector<std::shared_ptr<Slot>>>();
};

} // namespace vantor
