// What can be done to the shoots, as changes of a library: the rules of each act, without storing or telling anybody.
//
// Index 0 of shoots and of sets is the newest. Absent means that the act does nothing at all.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "edit/change.h"

namespace vantor {

// At the front, and the active one.
[[nodiscard]] Change addShoot(Shoot shoot);

// The shoot of a shoot file at the front, as a new shoot of `now` with new set ids and an empty log, and active.
[[nodiscard]] Change importShoot(Shoot read, Timestamp now);

// Every shoot of that id goes. The one then at the front becomes active if it was the active one.
[[nodiscard]] Change deleteShoot(const Library& library, const Uuid& id);

// At the front of the shoot's sets. Absent when there is no such shoot.
[[nodiscard]] std::optional<Change> addSet(const Library& library, const Uuid& to, SetData set);

// All of them, the last in front. Without such a shoot nothing is added. `leftOut` is what else their list held.
[[nodiscard]] Change importSets(const Library& library, const Uuid& to, std::vector<SetData> sets,
                                ImportReport leftOut = {});

// The first set of that id in any shoot becomes `updated`, all of it. Absent when there is none.
[[nodiscard]] std::optional<Change> updateSet(const Library& library, const Uuid& id, SetData updated);

// Every set of that id goes, in every shoot; the log keeps its entries.
[[nodiscard]] Change deleteSet(const Library& library, const Uuid& id);

// Makes the set the active one and its shoot the active shoot, and logs the moment. An id that no shoot holds becomes
// the active set's all the same.
[[nodiscard]] Change activateSet(const Library& library, const Uuid& id, Timestamp now);

// What a scanned card does: activates the first set of the active shoot with its number and brand, to the letter, or a
// new one at the front. Without an active shoot nothing.
struct Scan {
    // That set, as it is stored.
    SetData set;
    std::optional<Change> change;
};
// Absent when the text holds no set.
[[nodiscard]] std::optional<Scan> scan(const Library& library, std::string_view text, Timestamp now);

} // namespace vantor
