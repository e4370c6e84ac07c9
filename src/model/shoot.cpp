#include "model/shoot.h"

#include "base/text.h"

#include <utility>

namespace vantor {

SetItem SetItem::make(std::string name, std::string color) {
    return {Uuid::random(), std::move(name), std::move(color)};
}

SetData SetData::make(Timestamp now) {
    SetData set;
    set.id = Uuid::random();
    set.timestamp = now;
    return set;
}

Shoot Shoot::make(std::string name, std::string location, std::string client, Timestamp now) {
    Shoot shoot;
    shoot.id = Uuid::random();
    shoot.name = std::move(name);
    shoot.location = std::move(location);
    shoot.client = std::move(client);
    shoot.date = now;
    return shoot;
}

std::string slashed(const SetItem& item) {
    return item.color.empty() ? item.name : item.name + "/" + item.color;
}

std::optional<SetItem> parseSlashedItem(std::string_view text) {
    const auto parts = splitOnce(text, '/');
    if (!parts.first || parts.first->empty())
        return std::nullopt;
    return SetItem::make(std::string(*parts.first), std::string(parts.second.value_or("")));
}

} // namespace vantor
