// The JSON form of shoots, for the store's own file and for shoot files, which differ in the form of dates.
//
// Keys are the field names, in alphabetical order; every key is written but an absent watchFolderPath. Reading
// takes them in any order, gives files written before taggedCount, email, activationLog and watchFolderPath
// existed their creation values, and keeps every id. Nothing is read in part: absent means unreadable.
#pragma once

#include "base/json.h"
#include "model/record_json.h"
#include "model/shoot.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace vantor {

void writeShoots(JsonWriter& out, const std::vector<Shoot>& shoots, DateForm dates);
void writeShoot(JsonWriter& out, const Shoot& shoot, DateForm dates);
void writeSet(JsonWriter& out, const SetData& set, DateForm dates);

[[nodiscard]] std::optional<std::vector<Shoot>> readShoots(std::string_view json, DateForm dates);
// `stoppedAt`, where it is asked for, tells how far reading came, in bytes.
[[nodiscard]] std::optional<Shoot> readShoot(std::string_view json, DateForm dates,
                                             std::size_t* stoppedAt = nullptr);

} // namespace vantor
