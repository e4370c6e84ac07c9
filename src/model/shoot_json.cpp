#include "model/shoot_json.h"

#include "model/shoot_fields.h"

namespace vantor {

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
