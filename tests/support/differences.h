// differences(): compares records field by field and names the fields that differ, one a line, with both
// values; empty when there are none. Their equality alone would not tell a test where they part.
#pragma once

#include "model/product_fields.h"
#include "model/shoot_fields.h"

#include <bit>
#include <cstdint>
#include <optional>
#include <sstream>
#include <string>

namespace vantor::testing {

// What two records may differ in all the same.
enum class Ignoring { Nothing, Identity };

class Differences {
public:
    explicit Differences(Ignoring ignoring) : m_ignoring(ignoring) { m_text.precision(17); }

    template <typename Value>
    void compare(const std::string& path, const Value& a, const Value& b) {
        if constexpr (HasFields<Value>) {
            forEachField<Value>([&](const auto& field) {
                compare(path + "." + std::string(field.key), a.*field.member, b.*field.member);
            });
        } else if constexpr (ValueList<Value>) {
            if (a.size() != b.size())
                m_text << path << ".size: " << a.size() << " / " << b.size() << '\n';
            for (std::size_t i = 0; i < a.size() && i < b.size(); ++i)
                compare(path + "[" + std::to_string(i) + "]", a[i], b[i]);
        } else if (!isSame(a, b)) {
            note(m_text << path << ": ", a);
            note(m_text << " / ", b);
            m_text << '\n';
        }
    }

    [[nodiscard]] std::string text() const { return m_text.str(); }

private:
    template <typename Value>
    [[nodiscard]] bool isSame(const Value& a, const Value& b) const {
        return a == b;
    }
    [[nodiscard]] bool isSame(const Uuid& a, const Uuid& b) const {
        return m_ignoring == Ignoring::Identity || a == b;
    }
    // To the last bit, unless the making of records anew is what is ignored.
    [[nodiscard]] bool isSame(const Timestamp& a, const Timestamp& b) const {
        return m_ignoring == Ignoring::Identity || std::bit_cast<std::uint64_t>(a.secondsSinceReference) ==
                                                       std::bit_cast<std::uint64_t>(b.secondsSinceReference);
    }

    template <typename Value>
    static void note(std::ostream& out, const Value& value) {
        out << value;
    }
    static void note(std::ostream& out, const Uuid& value) { out << value.text(); }
    static void note(std::ostream& out, const Timestamp& value) { out << value.secondsSinceReference; }
    static void note(std::ostream& out, const std::optional<std::string>& value) {
        out << value.value_or("(absent)");
    }

    Ignoring m_ignoring;
    std::ostringstream m_text;
};

template <typename Record>
[[nodiscard]] std::string differences(const Record& a, const Record& b,
                                      Ignoring ignoring = Ignoring::Nothing) {
    Differences found(ignoring);
    found.compare("", a, b);
    return found.text();
}

} // namespace vantor::testing
