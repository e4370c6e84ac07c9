// ListPatch: what turns one list into another, holding only the elements that come; applied, what turns it back.
//
// - An element that only moves goes and comes as it is by then, whatever happened to it since the patch was made.
// - Places of what goes are counted in the list before, places of what comes in the list after; both ascend.
// - Applying moves elements between list and patch and copies none. Taking back is applying the result.
// - A patch fits the list it was made for, in the state it was made for; applying it to another is a programming error.
#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>
#include <unordered_map>
#include <utility>
#include <variant>
#include <vector>

namespace vantor {

template <typename T>
struct ListPatch {
    struct Put {
        std::size_t at;
        T element;
        // Where it stood before, in the place of `element`; such a place is among those that go.
        std::optional<std::size_t> from;
    };
    std::vector<std::size_t> take;
    std::vector<Put> put;

    [[nodiscard]] bool isEmpty() const { return take.empty() && put.empty(); }
};

// One element comes, at this place.
template <typename T>
[[nodiscard]] ListPatch<T> insertion(std::size_t at, T element) {
    ListPatch<T> patch;
    patch.put.push_back({at, std::move(element), {}});
    return patch;
}

// One element stands in another's place.
template <typename T>
[[nodiscard]] ListPatch<T> replacement(std::size_t at, T element) {
    auto patch = insertion(at, std::move(element));
    patch.take.push_back(at);
    return patch;
}

// Every element that `isRemoved` picks goes.
template <typename List, typename Predicate>
[[nodiscard]] auto removal(const List& list, Predicate isRemoved) {
    ListPatch<typename List::value_type> patch;
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (isRemoved(list[i]))
            patch.take.push_back(i);
    }
    return patch;
}

// An element of the list that is wanted: the place of one that stands there already, or a new one.
template <typename T>
using Wanted = std::variant<std::size_t, T>;

// Makes the list what is wanted. What keeps its order stays untouched; each place is named at most once.
template <typename List, typename T = typename List::value_type>
[[nodiscard]] ListPatch<T> patchTo(const List& before, std::vector<Wanted<T>> wanted) {
    // The longest run of kept elements whose order does not change, by the smallest ends of runs of each length.
    static constexpr auto kNone = static_cast<std::size_t>(-1);
    const auto placeOf = [&](std::size_t i) { return std::get<std::size_t>(wanted[i]); };
    std::vector<std::size_t> ends;
    std::vector<std::size_t> previous(wanted.size(), kNone);
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        if (!std::holds_alternative<std::size_t>(wanted[i]))
            continue;
        const auto end = std::ranges::lower_bound(ends, placeOf(i), {}, placeOf);
        previous[i] = end == ends.begin() ? kNone : *std::prev(end);
        if (end == ends.end())
            ends.push_back(i);
        else
            *end = i;
    }
    std::vector<bool> keepsOrder(wanted.size());
    std::vector<bool> stays(before.size());
    for (auto i = ends.empty() ? kNone : ends.back(); i != kNone; i = previous[i]) {
        keepsOrder[i] = true;
        stays[placeOf(i)] = true;
    }
    ListPatch<T> patch;
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (!stays[i])
            patch.take.push_back(i);
    }
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        if (auto* const element = std::get_if<T>(&wanted[i]))
            patch.put.push_back({i, std::move(*element), {}});
        else if (!keepsOrder[i])
            patch.put.push_back({i, T(), placeOf(i)});
    }
    return patch;
}

// Carries the patch out; the result takes it back.
template <typename List>
ListPatch<typename List::value_type> apply(List& list, ListPatch<typename List::value_type> patch) {
    using T = typename List::value_type;
    using Put = typename ListPatch<T>::Put;
    const bool movesNone =
        std::ranges::none_of(patch.put, [](const Put& put) { return put.from.has_value(); });
    if (movesNone && std::ranges::equal(patch.take, patch.put, {}, {}, &Put::at)) {
        for (auto& put : patch.put)
            std::swap(list[put.at], put.element);
        return patch;
    }
    ListPatch<T> inverse;
    inverse.take.reserve(patch.put.size());
    std::unordered_map<std::size_t, Put*> moved;
    for (auto& put : patch.put) {
        inverse.take.push_back(put.at);
        if (put.from)
            moved.emplace(*put.from, &put);
    }
    if constexpr (requires { list.push_front(std::declval<T>()); }) {
        if (patch.take.empty() && patch.put.back().at + 1 == patch.put.size()) {
            for (auto put = patch.put.rbegin(); put != patch.put.rend(); ++put)
                list.push_front(std::move(put->element));
            return inverse;
        }
    }
    for (const auto place : patch.take) {
        if (const auto found = moved.find(place); found != moved.end()) {
            found->second->element = std::move(list[place]);
            inverse.put.push_back({place, T(), found->second->at});
        } else {
            inverse.put.push_back({place, std::move(list[place]), {}});
        }
    }
    List after;
    after.reserve(list.size() + patch.put.size() - patch.take.size());
    auto put = patch.put.begin();
    const auto putWhatIsDue = [&] {
        for (; put != patch.put.end() && put->at == after.size(); ++put)
            after.push_back(std::move(put->element));
    };
    auto take = patch.take.begin();
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (take != patch.take.end() && *take == i) {
            ++take;
            continue;
        }
        putWhatIsDue();
        after.push_back(std::move(list[i]));
    }
    putWhatIsDue();
    list = std::move(after);
    return inverse;
}

} // namespace vantor
