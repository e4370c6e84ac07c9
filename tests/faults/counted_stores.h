// Stores that count: state n is what a store holds after its first n changes, so that what is read back tells by
// itself which state it is, and whether it is all of it.
//
// Every change rewrites one record, with texts of changing length, so that states differ in size and place.
#pragma once

#include "store/product_catalog.h"
#include "store/shoot_manager.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "edit/restore_edits.h"

namespace vantor::faults {

inline std::optional<int> number(std::string_view text) {
    int value = 0;
    const auto* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    return result.ec == std::errc() && result.ptr == end ? std::optional(value) : std::nullopt;
}

// What change `change` writes into its record.
inline std::string textOf(int change) {
    const auto length = static_cast<std::size_t>(20 + change % 101 * 37 % 400);
    return std::string(length, static_cast<char>('a' + change % 26)) + " \"\xC3\xA9\" " +
           std::to_string(change);
}

// The change that record `record` of so many was last written by in state `state`; 0 for the making.
inline int lastChange(int record, int records, int state) {
    const int change = state - ((state - record) % records + records) % records;
    return std::max(change, 0);
}

// Makes both stores, of so many sets and products.
inline void fill(Document& document, int records) {
    LibraryVersion made{std::vector{Shoot::make("Telling", "Texel", "Søster", {795173400})},
                        CatalogData{{}, {"Søster"}, {"Marvis", "Nike"}}};
    for (int i = 0; i < records; ++i) {
        auto set = SetData::make({795173400.25 + i});
        set.setNumber = "0";
        set.brand = std::to_string(i);
        set.items = {SetItem::make("coated pants", "brown"), SetItem::make("sweater", "blue navy")};
        set.location = textOf(0);
        made.shoots->front().sets.push_back(std::move(set));
        auto name = std::to_string(i);
        name.insert(0, 6 - name.size(), '0');
        made.catalog->products.push_back(Product::make(std::move(name), {"brown", textOf(0)}, "0"));
    }
    document.perform(restoreAll(document.library(), std::move(made), {}));
}

// Makes change `change` and saves; an empty store is saved as it is.
inline void change(ShootManager& shoots, int change) {
    if (shoots.shoots().empty()) {
        shoots.save();
        return;
    }
    const auto& sets = shoots.shoots().front().sets;
    auto set = sets[static_cast<std::size_t>(change) % sets.size()];
    set.setNumber = std::to_string(change);
    set.location = textOf(change);
    shoots.updateSet(set.id, set);
}

inline void change(ProductCatalog& catalog, int change) {
    if (catalog.products().empty()) {
        catalog.save();
        return;
    }
    const auto product = catalog.products()[static_cast<std::size_t>(change) % catalog.products().size()];
    catalog.updateProduct(product.id, product.name, {"brown", textOf(change)}, std::to_string(change));
}

// The state that the records, as pairs of change and text, are in; absent when it is none.
inline std::optional<int> stateOf(const std::vector<std::pair<std::string, std::string>>& records) {
    int state = 0;
    for (const auto& [text, unused] : records)
        state = std::max(state, number(text).value_or(-1));
    for (std::size_t i = 0; i < records.size(); ++i) {
        const int last = lastChange(static_cast<int>(i), static_cast<int>(records.size()), state);
        if (records[i].first != std::to_string(last) || records[i].second != textOf(last))
            return std::nullopt;
    }
    return records.empty() ? std::nullopt : std::optional(state);
}

inline std::optional<int> stateOf(const ShootManager& shoots) {
    if (shoots.shoots().size() != 1 || shoots.shoots().front().name != "Telling")
        return std::nullopt;
    std::vector<std::pair<std::string, std::string>> records;
    for (const auto& set : shoots.shoots().front().sets) {
        if (set.brand != std::to_string(records.size()) || set.items.size() != 2)
            return std::nullopt;
        records.emplace_back(set.setNumber, set.location);
    }
    return stateOf(records);
}

inline std::optional<int> stateOf(const ProductCatalog& catalog) {
    if (catalog.clients().size() != 1 || catalog.brands().size() != 2)
        return std::nullopt;
    std::vector<std::pair<std::string, std::string>> records;
    for (const auto& product : catalog.products()) {
        if (number(product.name) != static_cast<int>(records.size()) || product.colors.size() != 2)
            return std::nullopt;
        records.emplace_back(product.brand, product.colors[1]);
    }
    return stateOf(records);
}

} // namespace vantor::faults
