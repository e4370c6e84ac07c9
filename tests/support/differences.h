// differences(): compares records field by field and names the fields that differ, one a line, with both
// values; empty when there are none. Records have no equality of their own, and a test wants to know where
// they part.
#pragma once

#include "model/product.h"
#include "model/shoot.h"

#include <bit>
#include <concepts>
#include <cstdint>
#include <optional>
#include <ranges>
#include <sstream>
#include <string>
#include <string_view>

namespace vantor::testing {

// What two records may differ in all the same.
enum class Ignoring { Nothing, Identity };

class Differences {
public:
    explicit Differences(Ignoring ignoring) : m_ignoring(ignoring) {}

    void compare(const std::string& path, const std::string& a, const std::string& b) {
        if (a != b)
            note(path, a, b);
    }
    void compare(const std::string& path, std::int64_t a, std::int64_t b) {
        if (a != b)
            note(path, a, b);
    }
    void compare(const std::string& path, const Uuid& a, const Uuid& b) {
        if (m_ignoring == Ignoring::Nothing && a != b)
            note(path, a.text(), b.text());
    }
    // To the last bit, unless the making of records anew is what is ignored.
    void compare(const std::string& path, const Timestamp& a, const Timestamp& b) {
        if (m_ignoring == Ignoring::Nothing && std::bit_cast<std::uint64_t>(a.secondsSinceReference) !=
                                                   std::bit_cast<std::uint64_t>(b.secondsSinceReference))
            note(path, a.secondsSinceReference, b.secondsSinceReference);
    }
    void compare(const std::string& path, const std::optional<std::string>& a,
                 const std::optional<std::string>& b) {
        if (a != b)
            note(path, a.value_or("(absent)"), b.value_or("(absent)"));
    }
    void compare(const std::string& path, const SetItem& a, const SetItem& b) {
        compare(path + ".id", a.id, b.id);
        compare(path + ".name", a.name, b.name);
        compare(path + ".color", a.color, b.color);
    }
    void compare(const std::string& path, const SetData& a, const SetData& b) {
        compare(path + ".id", a.id, b.id);
        compare(path + ".setNumber", a.setNumber, b.setNumber);
        compare(path + ".brand", a.brand, b.brand);
        compareLists(path + ".items", a.items, b.items);
        compare(path + ".model", a.model, b.model);
        compare(path + ".location", a.location, b.location);
        compare(path + ".timestamp", a.timestamp, b.timestamp);
        compare(path + ".taggedCount", a.taggedCount, b.taggedCount);
        compare(path + ".email", a.email, b.email);
    }
    void compare(const std::string& path, const SetActivation& a, const SetActivation& b) {
        compare(path + ".setId", a.setId, b.setId);
        compare(path + ".activatedAt", a.activatedAt, b.activatedAt);
    }
    void compare(const std::string& path, const Shoot& a, const Shoot& b) {
        compare(path + ".id", a.id, b.id);
        compare(path + ".name", a.name, b.name);
        compare(path + ".location", a.location, b.location);
        compare(path + ".client", a.client, b.client);
        compare(path + ".date", a.date, b.date);
        compareLists(path + ".sets", a.sets, b.sets);
        compare(path + ".watchFolderPath", a.watchFolderPath, b.watchFolderPath);
        compareLists(path + ".activationLog", a.activationLog, b.activationLog);
    }
    void compare(const std::string& path, const Product& a, const Product& b) {
        compare(path + ".id", a.id, b.id);
        compare(path + ".name", a.name, b.name);
        compareLists(path + ".colors", a.colors, b.colors);
        compare(path + ".brand", a.brand, b.brand);
    }
    void compare(const std::string& path, const CatalogData& a, const CatalogData& b) {
        compareLists(path + ".products", a.products, b.products);
        compareLists(path + ".clients", a.clients, b.clients);
        compareLists(path + ".brands", a.brands, b.brands);
    }

    template <std::ranges::random_access_range List>
    void compareLists(const std::string& path, const List& a, const List& b) {
        if (a.size() != b.size())
            note(path + ".size", a.size(), b.size());
        for (std::size_t i = 0; i < a.size() && i < b.size(); ++i)
            compare(path + "[" + std::to_string(i) + "]", a[i], b[i]);
    }

    [[nodiscard]] std::string text() const { return m_text.str(); }

private:
    template <typename Value>
    void note(const std::string& path, const Value& a, const Value& b) {
        m_text.precision(17);
        m_text << path << ": " << a << " / " << b << '\n';
    }

    Ignoring m_ignoring;
    std::ostringstream m_text;
};

template <typename Record>
[[nodiscard]] std::string differences(const Record& a, const Record& b,
                                      Ignoring ignoring = Ignoring::Nothing) {
    Differences found(ignoring);
    if constexpr (requires { found.compare("", a, b); })
        found.compare("", a, b);
    else
        found.compareLists("", a, b);
    return found.text();
}

} // namespace vantor::testing
