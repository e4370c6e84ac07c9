// What assistive technology finds in a RecyclingList: a list with one item for each row, in sight or not.
//
// - An item is made when it is asked for. It stands for what its row shows, and stays the same wherever that moves.
// - The current row's item is selected, active, and has the focus while the list has it.
// - The widgets of a row in sight are inside its item.
#pragma once

#include <optional>

namespace vantor::ui {

class RecyclingList;

// Makes the toolkit describe every RecyclingList that way. Doing it again changes nothing.
void makeListsAccessible();

// Tells who listens that another row than before is the current one, or that the list got the focus with it.
void announceCurrentRow(RecyclingList& list, std::optional<int> before);

// Tells who has heard this row's name that it has changed.
void announceNameOfRow(RecyclingList& list, int place);

// The list shows other rows altogether: those that were told of are no more.
void forgetRows(RecyclingList& list);

} // namespace vantor::ui
