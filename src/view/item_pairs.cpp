#include "view/item_pairs.h"

#include <algorithm>
#include <utility>

namespace vantor {

std::vector<SetItem> itemsOf(const ItemPairs& pairs) {
    std::vector<SetItem> items;
    for (const auto& pair : pairs) {
        if (!pair.name.empty())
            items.push_back(SetItem::make(pair.name, pair.color));
    }
    return items;
}

ItemPairs pairsOf(const std::vector<SetItem>& items) {
    ItemPairs pairs;
    for (const auto& item : items)
        pairs.push_back({item.name, item.color});
    if (pairs.empty())
        pairs.emplace_back();
    return pairs;
}

void addCatalogItem(ItemPairs& pairs, std::string name, std::string color) {
    if (pairs.size() == 1 && pairs.front().isBlank())
        pairs.clear();
    pairs.push_back({std::move(name), std::move(color)});
}

bool anyNamed(const ItemPairs& pairs) {
    return std::ranges::any_of(pairs, [](const auto& pair) { return !pair.name.empty(); });
}

} // namespace vantor
