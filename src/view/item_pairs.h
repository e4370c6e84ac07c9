// ItemPairs: a set's garments while they are edited, as (name, colour) texts in their order.
#pragma once

#include "model/shoot.h"

#include <string>
#include <vector>

namespace vantor {

struct ItemPair {
    std::string name;
    std::string color;

    [[nodiscard]] bool isBlank() const { return name.empty() && color.empty(); }
    friend bool operator==(const ItemPair&, const ItemPair&) = default;
};

using ItemPairs = std::vector<ItemPair>;

// The garments of the pairs that have a name, in order, each with a fresh id.
[[nodiscard]] std::vector<SetItem> itemsOf(const ItemPairs& pairs);

// The pairs of a set's garments; one blank pair for a set without any, so that there is a line to type in.
[[nodiscard]] ItemPairs pairsOf(const std::vector<SetItem>& items);

// Adds a garment picked from the catalogue: into the one pair there is if that is blank, otherwise at the end.
void addCatalogItem(ItemPairs& pairs, std::string name, std::string color);

[[nodiscard]] bool anyNamed(const ItemPairs& pairs);

} // namespace vantor
