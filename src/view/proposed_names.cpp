#include "view/proposed_names.h"

#include "base/file_name.h"
#include "base/text_lookup.h"

namespace vantor {

std::string pngName(const SetData& set) {
    static constexpr std::string_view kExtension = ".png";
    return fileNamePart("SET-" + set.setNumber + "-" + set.brand, kExtension.size()).append(kExtension);
}

std::string shootFileName(const Shoot* shoot, std::string_view withoutShoot, std::string_view extension) {
    const auto name = shoot != nullptr ? std::string_view(shoot->name) : withoutShoot;
    return fileNamePart(name, extension.size()).append(extension);
}

std::string cardsName(std::string_view shootName) {
    const auto further = lookUp("%1-QR-kaarten.pdf", {""}).size();
    return lookUp("%1-QR-kaarten.pdf", {fileNamePart(shootName, further)});
}

std::string catalogName() {
    return lookUp("productcatalogus.csv");
}

} // namespace vantor
