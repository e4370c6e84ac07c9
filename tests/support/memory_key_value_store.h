// MemoryKeyValueStore: a KeyValueStore that keeps its values for as long as it lives.
#pragma once

#include "platform/key_value_store.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace vantor::testing {

class MemoryKeyValueStore final : public KeyValueStore {
public:
    std::map<std::string, std::variant<std::string, Timestamp>, std::less<>> values;

    [[nodiscard]] std::optional<std::string> text(std::string_view key) const override {
        return value<std::string>(key);
    }
    [[nodiscard]] std::optional<Timestamp> date(std::string_view key) const override {
        return value<Timestamp>(key);
    }
    void setText(std::string_view key, std::string_view value) override {
        values.insert_or_assign(std::string(key), std::string(value));
    }
    void setDate(std::string_view key, Timestamp value) override {
        values.insert_or_assign(std::string(key), value);
    }
    void remove(std::string_view key) override {
        if (const auto found = values.find(key); found != values.end())
            values.erase(found);
    }

private:
    template <typename Value>
    [[nodiscard]] std::optional<Value> value(std::string_view key) const {
        const auto found = values.find(key);
        if (found == values.end() || !std::holds_alternative<Value>(found->second))
            return std::nullopt;
        return std::get<Value>(found->second);
    }
};

} // namespace vantor::testing
