#include "view/proposed_names.h"

namespace vantor {

std::string pngName(const SetData& set) {
    return "SET-" + set.setNumber + "-" + set.brand + ".png";
}

std::string shootFileName(const Shoot* shoot, std::string_view withoutShoot, std::string_view extension) {
    std::string name = shoot != nullptr ? shoot->name : std::string(withoutShoot);
    return name.append(extension);
}

std::string cardsName(std::string_view shootName) {
    return std::string(shootName) + "-QR-kaarten.pdf";
}

} // namespace vantor
