// The message in which a later start names its files to the process that owns the data.
//
// It is "VANTOR1\n", the length of what follows in four bytes, the highest first, then the time of an earlier hand-over
// as a decimal number of seconds, or nothing, and a zero byte, and then for every file its path and a zero byte. Paths
// are absolute and of any bytes.
#pragma once

#include "base/timestamp.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantor {

struct HandOverMessage {
    static constexpr std::size_t kMostBytes = std::size_t{16} << 20U;

    std::vector<std::filesystem::path> files;
    // When an earlier owner, which has ended since, was told to open them.
    std::optional<Timestamp> handedBeforeAt;
};

// Absent when the message would be longer than kMostBytes.
[[nodiscard]] std::optional<std::string> writeHandOver(const HandOverMessage& message);

struct HandOverReading {
    enum class State { Incomplete, Malformed, Complete };
    State state = State::Incomplete;
    HandOverMessage message;
};

// Reads what has come in so far. Complete only with nothing behind the message.
[[nodiscard]] HandOverReading readHandOver(std::string_view bytes);

} // namespace vantor
