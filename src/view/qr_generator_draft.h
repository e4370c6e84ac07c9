// QRGeneratorDraft: what is typed in the free-form QR generator. Nothing of it is ever stored.
#pragma once

#include "base/timestamp.h"
#include "model/shoot.h"
#include "view/item_pairs.h"

#include <string>

namespace vantor {

struct QRGeneratorDraft {
    std::string setNumber;
    std::string brand;
    std::string model;
    std::string location;
    ItemPairs items;

    // A set of what was typed; garments without a name are left out.
    [[nodiscard]] SetData buildSetData(Timestamp now) const;
};

} // namespace vantor
