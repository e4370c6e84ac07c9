// ShootManager: owns all shoots, the active shoot and the active set, and keeps them in their file.
//
// - Every change is announced through willChange() before it takes effect; whoever hears of it may read, but
//   not change, the store. The whole list is saved by every operation that says "Saves".
// - Unknown ids make an operation do nothing, unless it says otherwise. Nothing reports errors: when reading or
//   writing the file fails, what is in memory holds.
// - Index 0 of the shoots is listed first. Only the shoots are saved: which shoot and set are active is not.
// - Belongs to the user-interface thread.
#pragma once

#include "base/signal.h"
#include "base/timestamp.h"
#include "base/uuid.h"
#include "formats/set_csv.h"
#include "model/shoot.h"
#include "store/store_file.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantor {

class ShootManager {
public:
    enum class Change { Shoots, ActiveShootId, ActiveSetId };

    // An empty store; without a file, which outlives it, nothing is ever read or written.
    explicit ShootManager(StoreFile* file = nullptr, Clock clock = Timestamp::now);

    // Tells what is about to change; the new state can be read once the announcing operation has returned.
    [[nodiscard]] Signal<Change>& willChange() { return m_willChange; }

    [[nodiscard]] const std::vector<Shoot>& shoots() const { return m_shoots; }
    [[nodiscard]] std::optional<Uuid> activeShootId() const { return m_activeShootId; }
    [[nodiscard]] std::optional<Uuid> activeSetId() const { return m_activeSetId; }
    // Null when there is none; good until the next change.
    [[nodiscard]] const Shoot* shoot(Uuid id) const;
    [[nodiscard]] const Shoot* activeShoot() const;
    // The active set within the active shoot; null when that shoot has no such set. Good until the next change.
    [[nodiscard]] const SetData* activeSet() const;

    // Replaces the shoots by those of the file and makes the first one active; a file that is missing or
    // unreadable changes nothing.
    void load();
    void save();

    // At the front. Neither activates nor saves.
    void insertShoot(Shoot shoot);
    void setActiveShootId(std::optional<Uuid> id);

    // At the front of the shoot's sets; the set is not made active. Saves.
    void addSet(Uuid to, SetData setData);
    // Replaces the first set of that id in any shoot, wholesale. Saves.
    void updateSet(Uuid id, SetData updated);
    // Takes the set out of every shoot; the log keeps its entries. Saves, even when nothing was removed.
    void deleteSet(Uuid id);
    // The shoot now at the front becomes active if the deleted one was. Saves, even when nothing was removed.
    void deleteShoot(Uuid id);
    // Makes the set the active one, its shoot the active shoot, and logs the moment; again for a set that is
    // active already. An id that no shoot holds becomes the active set's all the same. Saves if it is held.
    void activateSet(Uuid id);

    // Activates the set that a card's text names: the first of the active shoot with that number and brand, to
    // the letter, or else a new one at the front. The result is that set; absent when the text holds no set.
    // Without an active shoot nothing is stored or activated. Saves.
    std::optional<SetData> handleScanInput(std::string_view text);

    // The shoot as a shoot file.
    [[nodiscard]] std::optional<std::string> exportJSON(Uuid shootId) const;
    // Adds the shoot of a shoot file at the front, as a new shoot of today with new set ids and an empty log,
    // and makes it active. Absent, and nothing changed, when the bytes are not a shoot file. Saves.
    std::optional<Shoot> importShoot(std::string_view from);
    // The same for a shoot that was read from a shoot file.
    Shoot importShoot(Shoot read);

    // Adds a set for every usable line, each at the front, so that the last line comes first. The result counts
    // the usable lines, also when there is no such shoot. Saves once, unless there is no line behind a header.
    int importCSV(std::string_view text, Uuid shootId);
    // The same for what was read from such a text.
    int addImported(SetsOfCSV read, Uuid shootId);
    // The shoot's sets as CSV; empty when there is no such shoot.
    [[nodiscard]] std::string exportCSV(Uuid shootId) const;

private:
    void announce(Change change) { m_willChange.emit(change); }
    void setActiveSetId(std::optional<Uuid> id);

    StoreFile* m_file;
    Clock m_clock;
    std::vector<Shoot> m_shoots;
    std::optional<Uuid> m_activeShootId;
    std::optional<Uuid> m_activeSetId;
    Signal<Change> m_willChange;
};

} // namespace vantor
