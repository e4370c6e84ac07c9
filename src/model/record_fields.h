// kFields: what a record consists of, said once for whoever goes through it field by field, such as its JSON form, its
// comparison and the values that tests make up.
//
// A record type takes part by specialising kFields with a tuple of all its members, each with the key that it has in
// files. The order of the tuple is the order in the file.
#pragma once

#include <concepts>
#include <string>
#include <string_view>
#include <tuple>

namespace vantor {

template <typename Record, typename Value>
struct Field {
    std::string_view key;
    Value Record::*member;
    // Whether a file without it is unreadable; otherwise the record keeps the value that it is made with.
    bool isRequired;
};

template <typename Record, typename Value>
constexpr Field<Record, Value> requiredField(std::string_view key, Value Record::*member) {
    return {key, member, true};
}

template <typename Record, typename Value>
constexpr Field<Record, Value> optionalField(std::string_view key, Value Record::*member) {
    return {key, member, false};
}

struct NoFields {};

template <typename Record>
inline constexpr NoFields kFields;

template <typename T>
concept HasFields = !std::same_as<decltype(kFields<T>), const NoFields>;

// A list of records or of values, but not a text.
template <typename T>
concept ValueList = requires(T list) {
    list.emplace_back();
}
&&!std::same_as<T, std::string>;

// Calls visit(field) for each of them in order.
template <HasFields Record, typename Visit>
constexpr void forEachField(Visit visit) {
    std::apply([&](const auto&... field) { (visit(field), ...); }, kFields<Record>);
}

} // namespace vantor
