// Fixed records that several tests, and the golden files beside them, are about.
#pragma once

#include "base/uuid.h"
#include "model/product.h"
#include "model/shoot.h"

#include <string>
#include <string_view>
#include <vector>

namespace vantor::testing {

inline Uuid id(std::string_view text) {
    return Uuid::parse(text).value();
}

// Identifiers that tell themselves apart: 00000000-0000-4000-8000-000000000001 and on.
inline Uuid numberedId(unsigned number) {
    auto digits = std::to_string(number);
    digits.insert(0, 12 - digits.size(), '0');
    return id("00000000-0000-4000-8000-" + digits);
}

// 2026-03-14T09:30:00Z
inline constexpr Timestamp kMorning{795173400};

// The set's number, brand, model, location and e-mail, then its items, in one readable line.
inline std::string summary(const SetData& set) {
    auto text = set.setNumber + "|" + set.brand + "|" + set.model + "|" + set.location + "|" + set.email;
    for (const auto& item : set.items)
        text += "|" + item.name + "+" + item.color;
    return text;
}

// The set "12" of Noorderlicht: two garments, a model, a place, no e-mail address.
inline SetData noorderlicht() {
    SetData set;
    set.id = numberedId(12);
    set.setNumber = "12";
    set.brand = "Noorderlicht";
    set.items = {{numberedId(121), "coated pants", "brown"}, {numberedId(122), "sweater", "blue navy"}};
    set.model = "Anna";
    set.location = "Studio A";
    set.timestamp = kMorning;
    return set;
}

// A set full of what a format may stumble over.
inline SetData troublesomeSet() {
    SetData set;
    set.id = id("F81D4FAE-7DEC-41D0-A765-00A0C91E6BF6");
    set.setNumber = "12b";
    set.brand = "Søster; \"Zoé\" / Co";
    set.items = {{numberedId(131), "", ""}, {numberedId(132), "línea\\", "röd, grün\tx"}};
    set.model = "李娜 \U0001F469\u200D\U0001F3A8";
    set.location = "regel 1\nregel 2";
    set.timestamp = {795173400.25};
    set.taggedCount = 9'223'372'036'854'775'807;
    set.email = "zoé@example.com";
    return set;
}

// A shoot of two sets, a folder and a log, whose moments are whole seconds.
inline Shoot ibiza() {
    Shoot shoot;
    shoot.id = numberedId(1);
    shoot.name = "Ibiza Zomer 2026";
    shoot.location = "Ibiza";
    shoot.client = "Café Zürich";
    shoot.date = kMorning;
    shoot.sets = {noorderlicht(), troublesomeSet()};
    shoot.sets[1].timestamp = {-0x1p31};
    shoot.watchFolderPath = "/Volumes/Ibiza/\u00E9";
    shoot.activationLog = {{numberedId(12), kMorning}, {numberedId(999), {795173461}}};
    return shoot;
}

// What the store of shoots may hold: the shoot above with parts of seconds, and one with nothing in it.
inline std::vector<Shoot> storedShoots() {
    auto full = ibiza();
    full.date = {795173400.123456};
    full.sets[1].timestamp = {-1234567.875};
    full.activationLog[1].activatedAt = {0.1};
    Shoot empty;
    empty.id = numberedId(2);
    return {full, empty};
}

inline CatalogData storedCatalog() {
    return {{{numberedId(21), "coated pants", {"brown", "navy", "black"}, "Mr Marvis"},
             {numberedId(22), "élan \"q\"", {}, ""},
             {numberedId(23), "sweater", {"blue navy"}, "Søster"}},
            {"Café Zürich", "Nike"},
            {"Marvis", "李宁"}};
}

} // namespace vantor::testing
