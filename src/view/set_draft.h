// SetDraft: a set while it is typed or edited. Texts are taken as they stand.
#pragma once

#include "base/timestamp.h"
#include "model/shoot.h"
#include "store/shoot_manager.h"
#include "view/item_pairs.h"

#include <string>

namespace vantor {

struct SetDraft {
    std::string setNumber;
    std::string brand;
    std::string model;
    std::string location;
    std::string email;
    // At least one, so that there is a line to type in.
    ItemPairs items{ItemPair{}};

    [[nodiscard]] static SetDraft of(const SetData& set);

    // A new set needs a brand or a garment with a name.
    [[nodiscard]] bool canAdd() const { return !brand.empty() || anyNamed(items); }

    // Adds a new set to the shoot; without a number it gets the next one, the shoot's count of sets plus one. False, and
    // nothing stored, when there is no such shoot.
    [[nodiscard]] bool add(ShootManager& manager, Uuid shootId, Timestamp now) const;

    // Replaces the set, which keeps its id, its timestamp and its count of tagged photos. False, and nothing stored,
    // when no shoot holds that set.
    [[nodiscard]] bool save(ShootManager& manager, const SetData& edited) const;

private:
    void fill(SetData& set) const;
};

} // namespace vantor
