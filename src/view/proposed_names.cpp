#include "view/proposed_names.h"

#include "base/text_lookup.h"

namespace vantor {

std::string pngName(const SetData& set) {
    return "SET-" + set.setNumber + "-" + set.brand + ".png";
}

std::string shootFileName(const Shoot* shoot, std::string_view withoutShoot, std::string_view extension) {
    std::string name = shoot != nullptr ? shoot->name : std::string(withoutShoot);
    return name.append(extension);
}

std::string cardsName(std::string_view shootName) {
    return lookUp("%1-QR-kaarten.pdf", {shootName});
}

std::string catalogName() {
    return lookUp("productcatalogus.csv");
}

} // namespace vantor
