// How a set is named and described on screen: as always, with each of its own texts made fit for a line.
#pragma once

#include "model/shoot.h"

#include <string>

namespace vantor {

// "Set 12 — Marvis". Each text is closed off by itself, so that a number cannot reorder the brand behind it.
[[nodiscard]] std::string shownHeadline(const SetData& set);

// "coated pants brown, sweater blue navy", the same way.
[[nodiscard]] std::string shownDescription(const SetData& set);

} // namespace vantor
