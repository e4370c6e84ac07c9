#include "view/shown_set.h"

#include "base/shown_text.h"

namespace vantor {

std::string shownHeadline(const SetData& set) {
    SetData shown;
    shown.setNumber = shownText(set.setNumber);
    shown.brand = shownText(set.brand);
    return shown.headline();
}

std::string shownDescription(const SetData& set) {
    SetData shown;
    for (const auto& item : set.items)
        shown.items.push_back({item.id, shownText(item.name), shownText(item.color)});
    return shown.description();
}

} // namespace vantor
