#include "edit/shoot_edits.h"

#include "base/text_lookup.h"

#include <algorithm>
#include <utility>

namespace vantor {
namespace {

template <typename Records>
std::optional<std::size_t> placeOf(const Records& records, const Uuid& id) {
    const auto found =
        std::find_if(records.begin(), records.end(), [&](const auto& each) { return each.id == id; });
    return found == records.end() ? std::nullopt
                                  : std::optional(static_cast<std::size_t>(found - records.begin()));
}

std::string nameOf(const SetData& set) {
    SetData named;
    named.setNumber = inName(set.setNumber);
    named.brand = inName(set.brand);
    auto name = named.headline();
    return name.empty() ? lookUp("Set zonder nummer en merk") : name;
}

std::string nameOf(const Shoot& shoot) {
    return lookUp("Shoot \"%1\"", {inName(shoot.name)});
}

// What is active, and what is logged, once a set of this shoot is activated.
void activate(Change& change, std::size_t shootPlace, const Uuid& shoot, const Uuid& set, Timestamp now) {
    change.activeSet = set;
    change.activeShoot = shoot;
    change.logged = {shootPlace, {set, now}};
}

} // namespace

Change addShoot(Shoot shoot) {
    auto change = changeNamed(lookUp("%1 aangemaakt", {nameOf(shoot)}));
    change.activeShoot = shoot.id;
    change.shoots = insertion(0, std::move(shoot));
    return change;
}

Change importShoot(Shoot read, Timestamp now) {
    auto shoot = Shoot::make(std::move(read.name), std::move(read.location), std::move(read.client), now);
    shoot.sets = std::move(read.sets);
    for (auto& set : shoot.sets)
        set.id = Uuid::random();
    auto change = addShoot(std::move(shoot));
    change.name = lookUp("%1 geopend", {nameOf(change.shoots.put.front().element)});
    change.isTold = true;
    change.needsRestorePoint = true;
    return change;
}

Change deleteShoot(const Library& library, const Uuid& id) {
    const auto* const shoot = library.shoot(id);
    auto change = changeNamed(shoot != nullptr ? lookUp("%1 verwijderd", {nameOf(*shoot)}) : std::string());
    change.shoots = removal(library.shoots, [&](const Shoot& each) { return each.id == id; });
    change.isTold = true;
    change.needsRestorePoint = true;
    if (library.active.shoot == id) {
        const auto next =
            std::ranges::find_if(library.shoots, [&](const Shoot& each) { return each.id != id; });
        change.activeShoot = next != library.shoots.end() ? std::optional(next->id) : std::optional<Uuid>();
    }
    return change;
}

std::optional<Change> addSet(const Library& library, const Uuid& to, SetData set) {
    const auto place = placeOf(library.shoots, to);
    if (!place)
        return std::nullopt;
    auto change = changeNamed(lookUp("%1 toegevoegd", {nameOf(set)}));
    change.inShoots.push_back({*place, insertion(0, std::move(set))});
    return change;
}

Change importSets(const Library& library, const Uuid& to, std::vector<SetData> sets, ImportReport leftOut) {
    auto change = changeNamed(lookUp("%1 sets geïmporteerd", {std::to_string(sets.size())}));
    change.leftOut = std::move(leftOut);
    const auto place = placeOf(library.shoots, to);
    if (!place || sets.empty())
        return change;
    ListPatch<SetData> patch;
    patch.put.reserve(sets.size());
    for (auto set = sets.rbegin(); set != sets.rend(); ++set)
        patch.put.push_back({patch.put.size(), std::move(*set), {}});
    change.inShoots.push_back({*place, std::move(patch)});
    change.isTold = true;
    change.needsRestorePoint = true;
    return change;
}

std::optional<Change> updateSet(const Library& library, const Uuid& id, SetData updated) {
    for (std::size_t i = 0; i < library.shoots.size(); ++i) {
        const auto place = placeOf(library.shoots[i].sets, id);
        if (!place)
            continue;
        auto change = changeNamed(lookUp("%1 gewijzigd", {nameOf(library.shoots[i].sets[*place])}));
        if (library.shoots[i].sets[*place] != updated)
            change.inShoots.push_back({i, replacement(*place, std::move(updated))});
        return change;
    }
    return std::nullopt;
}

Change deleteSet(const Library& library, const Uuid& id) {
    auto change = changeNamed({});
    for (std::size_t i = 0; i < library.shoots.size(); ++i) {
        const auto& sets = library.shoots[i].sets;
        auto patch = removal(sets, [&](const SetData& set) { return set.id == id; });
        if (patch.isEmpty())
            continue;
        if (change.name.empty())
            change.name = lookUp("%1 verwijderd", {nameOf(sets[patch.take.front()])});
        change.inShoots.push_back({i, std::move(patch)});
    }
    if (library.active.set == id)
        change.activeSet = std::optional<Uuid>();
    std::size_t count = 0;
    for (const auto& each : change.inShoots)
        count += each.sets.take.size();
    change.isTold = true;
    change.needsRestorePoint = count > 1;
    return change;
}

Change activateSet(const Library& library, const Uuid& id, Timestamp now) {
    auto change = changeNamed({});
    change.activeSet = id;
    for (std::size_t i = 0; i < library.shoots.size(); ++i) {
        if (!placeOf(library.shoots[i].sets, id))
            continue;
        activate(change, i, library.shoots[i].id, id, now);
        break;
    }
    return change;
}

std::optional<Scan> scan(const Library& library, std::string_view text, Timestamp now) {
    auto parsed = SetData::parse(text, now);
    if (!parsed)
        return std::nullopt;
    if (const auto* const shoot = library.activeShoot()) {
        const auto known = std::find_if(shoot->sets.begin(), shoot->sets.end(), [&](const auto& each) {
            return each.setNumber == parsed->setNumber && each.brand == parsed->brand;
        });
        if (known != shoot->sets.end())
            return Scan{*known, activateSet(library, known->id, now)};
    }
    if (!library.active.shoot)
        return Scan{*std::move(parsed), std::nullopt};
    auto change = addSet(library, *library.active.shoot, *parsed);
    if (change)
        activate(*change, change->inShoots.front().shoot, *library.active.shoot, parsed->id, now);
    else
        (change = changeNamed({}))->activeSet = parsed->id;
    return Scan{*std::move(parsed), std::move(change)};
}

} // namespace vantor
