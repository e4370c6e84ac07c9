#include "view/set_filter.h"

#include "base/text.h"

#include <algorithm>
#include <string>

namespace vantor {

std::vector<std::size_t> filteredSets(const SetList& sets, std::string_view query) {
    const auto wanted = caseFolded(trimmed(query));
    const auto holds = [&](std::string_view text) {
        return caseFolded(text).find(wanted) != std::string::npos;
    };
    const auto matches = [&](const SetData& set) {
        return wanted.empty() || holds(set.brand) || holds(set.model) || holds(set.setNumber) ||
               std::any_of(set.items.begin(), set.items.end(),
                           [&](const auto& item) { return holds(item.name); });
    };
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < sets.size(); ++i) {
        if (matches(sets[i]))
            places.push_back(i);
    }
    return places;
}

} // namespace vantor
