// QtKeyValueStore: a KeyValueStore where the desktop keeps its programs' settings, or in a file of its own.
//
// - Values are the user's alone: what the machine has for all its users is not looked at.
// - They are written on the next turn of the event loop and when the store goes away.
// - Texts are kept as they are, and dates to the last bit; a date is never read as a text, nor a text as a
// date.
#pragma once

#include "platform/key_value_store.h"

#include <QSettings>
#include <filesystem>

namespace vantor {

class QtKeyValueStore final : public KeyValueStore {
public:
    QtKeyValueStore(std::string_view organisation, std::string_view application);
    explicit QtKeyValueStore(const std::filesystem::path& file);

    [[nodiscard]] std::optional<std::string> text(std::string_view key) const override;
    [[nodiscard]] std::optional<Timestamp> date(std::string_view key) const override;

    void setText(std::string_view key, std::string_view value) override;
    void setDate(std::string_view key, Timestamp value) override;
    void remove(std::string_view key) override;

private:
    QSettings m_settings;
};

} // namespace vantor
