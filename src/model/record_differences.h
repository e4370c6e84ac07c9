// differingFields(): tells in which fields two records part, by the table of their fields.
//
// Fields are compared as a whole, a list or a record within one too, by their own equality.
#pragma once

#include "model/record_fields.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>
#include <vector>

namespace vantor {

// Their keys, in the order of the table; none for equal records.
template <HasFields Record>
[[nodiscard]] std::vector<std::string_view> differingFields(const Record& a, const Record& b) {
    std::vector<std::string_view> keys;
    forEachField<Record>([&](const auto& field) {
        if (!(a.*field.member == b.*field.member))
            keys.push_back(field.key);
    });
    return keys;
}

// Whether the two are equal in all fields but these.
template <HasFields Record>
[[nodiscard]] bool agreeExceptIn(std::initializer_list<std::string_view> keys, const Record& a,
                                 const Record& b) {
    bool agree = true;
    forEachField<Record>([&](const auto& field) {
        agree =
            agree && (std::ranges::find(keys, field.key) != keys.end() || a.*field.member == b.*field.member);
    });
    return agree;
}

} // namespace vantor
