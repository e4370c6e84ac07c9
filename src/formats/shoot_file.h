// The shoot file: one shoot as indented JSON with sorted keys and ISO 8601 dates, in UTF-8.
#pragma once

#include "model/shoot.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vantor {

[[nodiscard]] std::string writeShootFile(const Shoot& shoot);

// The shoot as it stands in the file, ids and all. Absent when the bytes are not a shoot file.
[[nodiscard]] std::optional<Shoot> readShootFile(std::string_view bytes);

// How many bytes of something that is not a shoot file could be read before that showed.
[[nodiscard]] std::size_t whereUnreadable(std::string_view bytes);

// One set in the form that it has inside a shoot file.
[[nodiscard]] std::string writeSetObject(const SetData& set);

} // namespace vantor
