#include "view/set_draft.h"

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

void SetDraft::add(ShootManager& manager, Timestamp now) const {
    const auto* const shoot = manager.activeShoot();
    if (shoot == nullptr)
        return;
    auto set = SetData::make(now);
    fill(set);
    if (set.setNumber.empty())
        set.setNumber = std::to_string(shoot->sets.size() + 1);
    manager.addSet(shoot->id, std::move(set));
}

void SetDraft::save(ShootManager& manager, const SetData& edited) const {
    auto set = edited;
    fill(set);
    manager.updateSet(edited.id, std::move(set));
}

} // namespace vantor
