#include "view/set_draft.h"

#include <algorithm>
#include <utility>

namespace vantor {

SetDraft SetDraft::of(const SetData& set) {
    SetDraft draft;
    draft.setNumber = set.setNumber;
    draft.brand = set.brand;
    draft.model = set.model;
    draft.location = set.location;
    draft.email = set.email;
    draft.items = pairsOf(set.items);
    return draft;
}

void SetDraft::fill(SetData& set) const {
    set.setNumber = setNumber;
    set.brand = brand;
    set.items = itemsOf(items);
    set.model = model;
    set.location = location;
    set.email = email;
}

bool SetDraft::add(ShootManager& manager, Uuid shootId, Timestamp now) const {
    const auto* const shoot = manager.shoot(shootId);
    if (shoot == nullptr)
        return false;
    auto set = SetData::make(now);
    fill(set);
    if (set.setNumber.empty())
        set.setNumber = std::to_string(shoot->sets.size() + 1);
    manager.addSet(shootId, std::move(set));
    return true;
}

bool SetDraft::save(ShootManager& manager, const SetData& edited) const {
    const bool isHeld = std::ranges::any_of(manager.shoots(), [&](const Shoot& shoot) {
        return std::ranges::find(shoot.sets, edited.id, &SetData::id) != shoot.sets.end();
    });
    auto set = edited;
    fill(set);
    manager.updateSet(edited.id, std::move(set));
    return isHeld;
}

} // namespace vantor
