#include "view/qr_generator_draft.h"

namespace vantor {

SetData QRGeneratorDraft::buildSetData(Timestamp now) const {
    auto set = SetData::make(now);
    set.setNumber = setNumber;
    set.brand = brand;
    set.items = itemsOf(items);
    set.model = model;
    set.location = location;
    return set;
}

} // namespace vantor
