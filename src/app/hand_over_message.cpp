#include "app/hand_over_message.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <system_error>

namespace vantor {
namespace {

constexpr std::string_view kGreeting = "VANTOR1\n";
constexpr std::size_t kLengthBytes = 4;
constexpr std::size_t kHeadBytes = kGreeting.size() + kLengthBytes;

std::string written(std::optional<Timestamp> time) {
    std::array<char, 64> text{};
    if (!time)
        return {};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), time->secondsSinceReference).ptr;
    return {text.data(), end};
}

// The text up to the next zero byte, which is there.
std::string_view nextPart(std::string_view& rest) {
    const auto end = rest.find('\0');
    const auto part = rest.substr(0, end);
    rest.remove_prefix(end + 1);
    return part;
}

} // namespace

std::optional<std::string> writeHandOver(const HandOverMessage& message) {
    std::string body = written(message.handedBeforeAt) + '\0';
    for (const auto& file : message.files)
        body += file.native() + '\0';
    if (kHeadBytes + body.size() > HandOverMessage::kMostBytes)
        return std::nullopt;
    std::string bytes(kGreeting);
    for (std::size_t i = kLengthBytes; i > 0; --i)
        bytes += static_cast<char>((body.size() >> (8 * (i - 1))) & 0xFFU);
    return bytes + body;
}

HandOverReading readHandOver(std::string_view bytes) {
    using State = HandOverReading::State;
    const auto greeting = std::min(bytes.size(), kGreeting.size());
    if (bytes.substr(0, greeting) != kGreeting.substr(0, greeting))
        return {State::Malformed, {}};
    if (bytes.size() < kHeadBytes)
        return {State::Incomplete, {}};
    std::size_t length = 0;
    for (const char c : bytes.substr(kGreeting.size(), kLengthBytes))
        length = (length << 8U) | static_cast<unsigned char>(c);
    auto rest = bytes.substr(kHeadBytes);
    if (length == 0 || length > HandOverMessage::kMostBytes - kHeadBytes || rest.size() > length)
        return {State::Malformed, {}};
    if (rest.size() < length)
        return {State::Incomplete, {}};
    if (rest.back() != '\0')
        return {State::Malformed, {}};

    HandOverReading reading{State::Complete, {}};
    if (const auto time = nextPart(rest); !time.empty()) {
        Timestamp before{};
        const auto [end, error] =
            std::from_chars(time.data(), time.data() + time.size(), before.secondsSinceReference);
        if (error != std::errc() || end != time.data() + time.size())
            return {State::Malformed, {}};
        reading.message.handedBeforeAt = before;
    }
    while (!rest.empty()) {
        const auto file = nextPart(rest);
        if (!file.starts_with('/'))
            return {State::Malformed, {}};
        reading.message.files.emplace_back(file);
    }
    return reading;
}

} // namespace vantor
