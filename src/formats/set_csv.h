// The CSV form of a shoot's sets.
//
// Reading: the first line that is not blank is the header. Columns are found by words in it, or by the titles
// that the text lookup writes, so their order is free and further columns are ignored; nothing in the text is an error, unusable lines are passed over.
// Writing: "Set;Merk;Items;Model;Locatie;Email;Getagd" and a line a set, in the shoot's order, joined by line
// feeds. What is written reads back, but for taggedCount, ids, times, quote characters, line breaks, and what
// reading trims.
#pragma once

#include "base/timestamp.h"
#include "model/import_report.h"
#include "model/shoot.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vantor {

// Calls `onSet` with every usable line's set, in the order of the lines; each has a fresh id and `now` as its
// timestamp, and `onLeftOut`, where it is given, with every other line behind the header that is not blank. Needs no more
// memory than one line's worth. False when there is no line behind the header.
bool readSetCSV(std::string_view text, Timestamp now, const std::function<void(SetData)>& onSet,
                const std::function<void(LeftOutLine)>& onLeftOut = {});

// All of them at once.
struct SetsOfCSV {
    std::vector<SetData> sets;
    bool hasLines = false;
    ImportReport leftOut;
};
[[nodiscard]] SetsOfCSV readSetCSV(std::string_view text, Timestamp now);

[[nodiscard]] std::string writeSetCSV(const Shoot& shoot);

} // namespace vantor
