#include "model/library.h"

#include <algorithm>

namespace vantor {

const Shoot* Library::shoot(const Uuid& id) const {
    const auto found = std::ranges::find(shoots, id, &Shoot::id);
    return found == shoots.end() ? nullptr : &*found;
}

const Shoot* Library::activeShoot() const {
    return active.shoot ? shoot(*active.shoot) : nullptr;
}

const SetData* Library::activeSet() const {
    const auto* const in = activeShoot();
    if (in == nullptr || !active.set)
        return nullptr;
    const auto found = std::ranges::find(in->sets, *active.set, &SetData::id);
    return found == in->sets.end() ? nullptr : &*found;
}

} // namespace vantor
