#include "base/uuid.h"

#include <algorithm>
#include <random>

namespace vantor {
namespace {

constexpr std::array<std::size_t, 4> kHyphens{8, 13, 18, 23};

constexpr int hexValue(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

// An import makes tens of thousands of identifiers at once; asking the system for every one of them would
// cost more than the import itself, so each thread keeps a generator filled once with system randomness.
std::mt19937_64& generator() {
    thread_local std::mt19937_64 engine = [] {
        std::random_device device;
        std::array<std::uint32_t, 16> words{};
        std::generate(words.begin(), words.end(), std::ref(device));
        std::seed_seq seed(words.begin(), words.end());
        return std::mt19937_64(seed);
    }();
    return engine;
}

} // namespace

Uuid Uuid::random() {
    auto& engine = generator();
    const std::array<std::uint64_t, 2> words{engine(), engine()};
    Uuid id;
    std::memcpy(id.m_bytes.data(), words.data(), id.m_bytes.size());
    id.m_bytes[6] = static_cast<std::uint8_t>((id.m_bytes[6] & 0x0FU) | 0x40U);
    id.m_bytes[8] = static_cast<std::uint8_t>((id.m_bytes[8] & 0x3FU) | 0x80U);
    return id;
}

std::optional<Uuid> Uuid::parse(std::string_view text) {
    if (text.size() != kTextLength)
        return std::nullopt;
    Uuid id;
    std::size_t at = 0;
    for (auto& byte : id.m_bytes) {
        if (std::find(kHyphens.begin(), kHyphens.end(), at) != kHyphens.end()) {
            if (text[at] != '-')
                return std::nullopt;
            ++at;
        }
        const int high = hexValue(text[at]);
        const int low = hexValue(text[at + 1]);
        if (high < 0 || low < 0)
            return std::nullopt;
        byte = static_cast<std::uint8_t>(high * 16 + low);
        at += 2;
    }
    return id;
}

std::array<char, Uuid::kTextLength> Uuid::characters() const {
    static constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::array<char, kTextLength> out{};
    std::size_t at = 0;
    for (const auto byte : m_bytes) {
        if (at == 8 || at == 13 || at == 18 || at == 23)
            out[at++] = '-';
        out[at++] = kDigits[byte >> 4U];
        out[at++] = kDigits[byte & 0x0FU];
    }
    return out;
}

std::string Uuid::text() const {
    const auto all = characters();
    return {all.data(), all.size()};
}

} // namespace vantor
