// Change: one act of a person as a value: what it is called, what it puts in place, what is active afterwards.
//
// - Made by the functions of this room from a library and a wish; nothing is stored or announced here.
// - Holds only what it touches. Applied, it moves its records into the library and becomes what takes them back, with
//   what stood there before: undo and redo are the same step.
// - What the scanner logged is a fact. A change may add to a shoot's log; taking it back does not take that back. A
//   shoot that goes takes its log along, as it is by then, and brings it back.
#pragma once

#include "model/import_report.h"
#include "model/library.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "edit/list_patch.h"

namespace vantor {

struct Change {
    // For "Ongedaan maken: …", in the language of the windows.
    std::string name;

    struct InShoot {
        // Its place in the earlier of the two lists of shoots.
        std::size_t shoot;
        ListPatch<SetData> sets;
    };
    std::vector<InShoot> inShoots;
    ListPatch<Shoot> shoots;
    ListPatch<Product> products;
    ListPatch<std::string> clients;
    ListPatch<std::string> brands;

    // What is active afterwards, where the change says so.
    std::optional<std::optional<Uuid>> activeShoot;
    std::optional<std::optional<Uuid>> activeSet;

    struct LogEntry {
        // Its place in the later list.
        std::size_t shoot;
        SetActivation activation;
    };
    std::optional<LogEntry> logged;

    // Of an import: the lines that brought nothing. Told once; what takes the change back has none.
    ImportReport leftOut;

    // Whether the person is told of it, because something went or much came.
    bool isTold = false;
    // Whether so much goes or comes at once that a copy of what there is now is to be kept before.
    bool needsRestorePoint = false;

    // Whether this takes another one back. Sets change while the shoots stand in the earlier of the two lists: first on
    // the way there, last on the way back.
    bool isInverse = false;

    [[nodiscard]] bool touchesShoots() const;
    [[nodiscard]] bool touchesCatalog() const;
    // Whether there is anything that could be taken back; activating a set, for one, is not.
    [[nodiscard]] bool isStep() const { return touchesShoots() || touchesCatalog(); }
};

// A piece of data as it stands in a change's name: fit for a line, and cut off where it is long, as menus show it.
[[nodiscard]] std::string inName(std::string_view text);

// A change that changes nothing yet.
[[nodiscard]] Change changeNamed(std::string name);

// Carries the change out, which has to be made for this library as it is, but for what is to be active, which is the
// caller's to say. The result takes it back, but for the log.
[[nodiscard]] Change apply(Library& library, Change change);

} // namespace vantor
