// ShootManager: the shoots of a document, the active shoot and the active set, and all that can be done with them.
//
// - A view: everything is kept, announced and saved by the document. Each operation is one change, which can be undone,
//   but for activating, and saves once where it says "Saves".
// - Unknown ids make an operation do nothing, unless it says otherwise. Nothing reports errors: when reading or
//   writing the file fails, what is in memory holds.
// - Index 0 of the shoots is listed first. Only the shoots are saved: which shoot and set are active is not.
// - Belongs to the user-interface thread.
#pragma once

#include "formats/set_csv.h"
#include "store/document.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantor {

class ShootManager {
public:
    // The document outlives it.
    explicit ShootManager(Document& document) : m_document(document) {}

    // Tells what is about to change, in the whole document; the new state can be read once the announcing operation has
    // returned.
    [[nodiscard]] Signal<Aspect>& willChange() { return m_document.willChange(); }

    [[nodiscard]] const std::vector<Shoot>& shoots() const { return library().shoots; }
    [[nodiscard]] std::optional<Uuid> activeShootId() const { return library().active.shoot; }
    [[nodiscard]] std::optional<Uuid> activeSetId() const { return library().active.set; }
    // Null when there is none; good until the next change.
    [[nodiscard]] const Shoot* shoot(const Uuid& id) const { return library().shoot(id); }
    [[nodiscard]] const Shoot* activeShoot() const { return library().activeShoot(); }
    // The active set within the active shoot; null when that shoot has no such set. Good until the next change.
    [[nodiscard]] const SetData* activeSet() const { return library().activeSet(); }

    // Replaces the shoots by those of the file and makes the first one active; a file that is missing or
    // unreadable changes nothing.
    void load() { m_document.loadShoots(); }
    void save() { m_document.saveShoots(); }

    // At the front, and active. Saves.
    void addShoot(Shoot shoot);
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
    [[nodiscard]] const Library& library() const { return m_document.library(); }

    Document& m_document;
};

} // namespace vantor
