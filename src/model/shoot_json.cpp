#include "model/shoot_json.h"

#include <utility>

namespace vantor {

template <typename Visit, MaybeConst<SetItem> Item>
void visitMembers(Visit& visit, Item& item) {
    visit.required("color", item.color);
    visit.required("id", item.id);
    visit.required("name", item.name);
}

template <typename Visit, MaybeConst<SetData> Set>
void visitMembers(Visit& visit, Set& set) {
    visit.required("brand", set.brand);
    visit.optional("email", set.email);
    visit.required("id", set.id);
    visit.required("items", set.items);
    visit.required("location", set.location);
    visit.required("model", set.model);
    visit.required("setNumber", set.setNumber);
    visit.optional("taggedCount", set.taggedCount);
    visit.required("timestamp", set.timestamp);
}

template <typename Visit, MaybeConst<SetActivation> Activation>
void visitMembers(Visit& visit, Activation& activation) {
    visit.required("activatedAt", activation.activatedAt);
    visit.required("setId", activation.setId);
}

template <typename Visit, MaybeConst<Shoot> AnyShoot>
void visitMembers(Visit& visit, AnyShoot& shoot) {
    visit.optional("activationLog", shoot.activationLog);
    visit.required("client", shoot.client);
    visit.required("date", shoot.date);
    visit.required("id", shoot.id);
    visit.required("location", shoot.location);
    visit.required("name", shoot.name);
    visit.required("sets", shoot.sets);
    visit.optional("watchFolderPath", shoot.watchFolderPath);
}

void writeShoots(JsonWriter& out, const std::vector<Shoot>& shoots, DateForm dates) {
    RecordWriter(out, dates).write(shoots);
}

void writeShoot(JsonWriter& out, const Shoot& shoot, DateForm dates) {
    RecordWriter(out, dates).write(shoot);
}

void writeSet(JsonWriter& out, const SetData& set, DateForm dates) {
    RecordWriter(out, dates).write(set);
}

std::optional<std::vector<Shoot>> readShoots(std::string_view json, DateForm dates) {
    return readDocument<std::vector<Shoot>>(json, dates);
}

std::optional<Shoot> readShoot(std::string_view json, DateForm dates, std::size_t* stoppedAt) {
    return readDocument<Shoot>(json, dates, stoppedAt);
}

} // namespace vantor
