// KeyValueStore: a few remembered values that belong to the user, not to a shoot.
#pragma once

#include "base/timestamp.h"

#include <optional>
#include <string>
#include <string_view>

namespace vantor {

class KeyValueStore {
public:
    virtual ~KeyValueStore() = default;

    // Absent when nothing, or something else than a text or a date, is stored under the key.
    [[nodiscard]] virtual std::optional<std::string> text(std::string_view key) const = 0;
    [[nodiscard]] virtual std::optional<Timestamp> date(std::string_view key) const = 0;

    // Kept from one start to the next; failures are silent.
    virtual void setText(std::string_view key, std::string_view value) = 0;
    virtual void setDate(std::string_view key, Timestamp value) = 0;
    virtual void remove(std::string_view key) = 0;
};

} // namespace vantor
