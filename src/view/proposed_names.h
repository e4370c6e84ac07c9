// The file names that the save dialogs propose. Names of shoots and sets are taken as they stand, but for what no file
// system takes (base/file_name.h).
#pragma once

#include "model/shoot.h"

#include <string>
#include <string_view>

namespace vantor {

// "SET-12-Marvis.png"
[[nodiscard]] std::string pngName(const SetData& set);

// The shoot's name, or `withoutShoot` when there is no shoot, and the extension with its dot.
[[nodiscard]] std::string shootFileName(const Shoot* shoot, std::string_view withoutShoot,
                                        std::string_view extension);

// "Zomer op Texel-QR-kaarten.pdf"
[[nodiscard]] std::string cardsName(std::string_view shootName);

// "productcatalogus.csv"
[[nodiscard]] std::string catalogName();

} // namespace vantor
