// Uuid: the identity of shoots, sets, items and products (RFC 9562).
//
// - A value of 16 bytes, compared and ordered by its bytes.
// - random() makes version 4 identifiers; two calls, on whichever threads, never share state.
// - The text form is the canonical one: 36 characters, hyphenated, upper case. Reading accepts either case.
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <cstring>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace vantor {

class Uuid {
public:
    static constexpr std::size_t kTextLength = 36;

    // The nil identifier: what a record holds before it is read or given an identity.
    constexpr Uuid() = default;

    [[nodiscard]] static Uuid random();

    // Absent unless the text is exactly the canonical form, in upper or lower case.
    [[nodiscard]] static std::optional<Uuid> parse(std::string_view text);

    [[nodiscard]] std::array<char, kTextLength> characters() const;
    [[nodiscard]] std::string text() const;
    // Its 16 bytes, for as long as it stays where it is.
    [[nodiscard]] std::string_view bytes() const {
        return {reinterpret_cast<const char*>(m_bytes.data()), m_bytes.size()};
    }

    friend constexpr bool operator==(const Uuid&, const Uuid&) = default;
    friend constexpr std::strong_ordering operator<=>(const Uuid&, const Uuid&) = default;

private:
    friend struct std::hash<Uuid>;

    std::array<std::uint8_t, 16> m_bytes{};
};

} // namespace vantor

template <>
struct std::hash<vantor::Uuid> {
    std::size_t operator()(const vantor::Uuid& id) const noexcept {
        std::size_t value = 0;
        std::memcpy(&value, id.m_bytes.data(), sizeof value);
        return value;
    }
};
