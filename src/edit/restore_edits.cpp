#include "edit/restore_edits.h"

#include "base/text_lookup.h"

#include <algorithm>
#include <tuple>
#include <type_traits>
#include <unordered_map>
#include <utility>
#include <variant>
#include <vector>

#include "edit/activation_log.h"

namespace vantor {
namespace {

const Uuid& keyOf(const SetData& set) {
    return set.id;
}
const Uuid& keyOf(const Product& product) {
    return product.id;
}
const std::string& keyOf(const std::string& name) {
    return name;
}

// Makes `before` to `after`; elements that are the same, contents and all, stay untouched.
template <typename List>
ListPatch<typename List::value_type> patchBetween(const List& before, List after) {
    using T = typename List::value_type;
    std::unordered_multimap<std::decay_t<decltype(keyOf(std::declval<const T&>()))>, std::size_t> places;
    for (std::size_t i = 0; i < before.size(); ++i)
        places.emplace(keyOf(before[i]), i);
    std::vector<Wanted<T>> wanted;
    wanted.reserve(after.size());
    for (auto& element : after) {
        const auto [first, end] = places.equal_range(keyOf(element));
        const auto same =
            std::find_if(first, end, [&](const auto& place) { return before[place.second] == element; });
        if (same == end) {
            wanted.emplace_back(std::move(element));
        } else {
            wanted.emplace_back(same->second);
            places.erase(same);
        }
    }
    return patchTo(before, std::move(wanted));
}

bool differsInMoreThanSets(const Shoot& now, const Shoot& then) {
    const auto rest = [](const Shoot& shoot) {
        return std::tie(shoot.name, shoot.location, shoot.client, shoot.date, shoot.watchFolderPath);
    };
    return rest(now) != rest(then) || mergedLog(now.activationLog, then.activationLog) != now.activationLog;
}

// What stands in the list in the place of the shoot that is there: itself, with other sets, or another one.
Wanted<Shoot> restoredAt(Change& change, const Library& library, std::size_t place, Shoot then) {
    const auto& now = library.shoots[place];
    if (differsInMoreThanSets(now, then)) {
        then.activationLog = mergedLog(now.activationLog, then.activationLog);
        return then;
    }
    auto sets = patchBetween(now.sets, std::move(then.sets));
    if (!sets.isEmpty())
        change.inShoots.push_back({place, std::move(sets)});
    return place;
}

} // namespace

Change restoreAll(const Library& library, LibraryVersion version, const std::string& when) {
    auto change = changeNamed(lookUp("Versie van %1 teruggezet", {when}));
    if (version.shoots) {
        const auto& then = *version.shoots;
        const auto isThere = [&](const Uuid& id) {
            return std::ranges::find(then, id, &Shoot::id) != then.end();
        };
        if (!library.active.shoot || !isThere(*library.active.shoot))
            change.activeShoot = then.empty() ? std::optional<Uuid>() : std::optional(then.front().id);
        std::vector<Wanted<Shoot>> wanted;
        std::vector<bool> isTaken(library.shoots.size());
        for (auto& shoot : *version.shoots) {
            std::size_t place = 0;
            while (place < isTaken.size() && (isTaken[place] || library.shoots[place].id != shoot.id))
                ++place;
            if (place == isTaken.size()) {
                wanted.emplace_back(std::move(shoot));
                continue;
            }
            isTaken[place] = true;
            wanted.push_back(restoredAt(change, library, place, std::move(shoot)));
        }
        change.shoots = patchTo(library.shoots, std::move(wanted));
    }
    if (version.catalog) {
        change.products = patchBetween(library.catalog.products, std::move(version.catalog->products));
        change.clients = patchBetween(library.catalog.clients, std::move(version.catalog->clients));
        change.brands = patchBetween(library.catalog.brands, std::move(version.catalog->brands));
    }
    change.isTold = true;
    change.needsRestorePoint = true;
    return change;
}

Change restoreShoot(const Library& library, Shoot shoot) {
    auto change = changeNamed(lookUp("Shoot \"%1\" teruggezet", {inName(shoot.name)}));
    change.activeShoot = shoot.id;
    change.isTold = true;
    change.needsRestorePoint = true;
    const auto found = std::ranges::find(library.shoots, shoot.id, &Shoot::id);
    if (found == library.shoots.end()) {
        change.shoots = insertion(0, std::move(shoot));
        return change;
    }
    const auto place = static_cast<std::size_t>(found - library.shoots.begin());
    auto wanted = restoredAt(change, library, place, std::move(shoot));
    if (auto* const other = std::get_if<Shoot>(&wanted))
        change.shoots = replacement(place, std::move(*other));
    return change;
}

} // namespace vantor
