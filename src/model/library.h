// Library: all that a user keeps, the shoots and the catalogue, with the shoot and the set that are active.
//
// A plain value. Only shoots and catalogue are stored; what is active is not.
#pragma once

#include "model/product.h"
#include "model/shoot.h"

#include <optional>
#include <vector>

namespace vantor {

// Either may name what no longer exists, and then counts as absent.
struct ActiveIds {
    std::optional<Uuid> shoot;
    std::optional<Uuid> set;

    friend bool operator==(const ActiveIds&, const ActiveIds&) = default;
};

struct Library {
    // Index 0 is listed first.
    std::vector<Shoot> shoots;
    CatalogData catalog;
    ActiveIds active;

    // Null when there is none; good until the next change.
    [[nodiscard]] const Shoot* shoot(const Uuid& id) const;
    [[nodiscard]] const Shoot* activeShoot() const;
    // The active set within the active shoot; null when that shoot has no such set.
    [[nodiscard]] const SetData* activeSet() const;
};

} // namespace vantor
