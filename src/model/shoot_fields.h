// The fields of Shoot and of what it holds, in the order of the alphabet.
#pragma once

#include "model/record_fields.h"
#include "model/shoot.h"

#include <tuple>

namespace vantor {

template <>
inline constexpr auto kFields<SetItem> = std::tuple{
    requiredField("color", &SetItem::color),
    requiredField("id", &SetItem::id),
    requiredField("name", &SetItem::name),
};

template <>
inline constexpr auto kFields<SetData> = std::tuple{
    requiredField("brand", &SetData::brand),
    optionalField("email", &SetData::email),
    requiredField("id", &SetData::id),
    requiredField("items", &SetData::items),
    requiredField("location", &SetData::location),
    requiredField("model", &SetData::model),
    requiredField("setNumber", &SetData::setNumber),
    optionalField("taggedCount", &SetData::taggedCount),
    requiredField("timestamp", &SetData::timestamp),
};

template <>
inline constexpr auto kFields<SetActivation> = std::tuple{
    requiredField("activatedAt", &SetActivation::activatedAt),
    requiredField("setId", &SetActivation::setId),
};

template <>
inline constexpr auto kFields<Shoot> = std::tuple{
    optionalField("activationLog", &Shoot::activationLog),
    requiredField("client", &Shoot::client),
    requiredField("date", &Shoot::date),
    requiredField("id", &Shoot::id),
    requiredField("location", &Shoot::location),
    requiredField("name", &Shoot::name),
    requiredField("sets", &Shoot::sets),
    optionalField("watchFolderPath", &Shoot::watchFolderPath),
};

} // namespace vantor
