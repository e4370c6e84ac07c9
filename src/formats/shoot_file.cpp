#include "formats/shoot_file.h"

#include "base/json.h"
#include "model/shoot_json.h"

namespace vantor {

std::string writeShootFile(const Shoot& shoot) {
    JsonWriter out(JsonWriter::Layout::Indented);
    writeShoot(out, shoot, DateForm::Iso8601);
    return std::string(out.written());
}

std::optional<Shoot> readShootFile(std::string_view bytes) {
    return readShoot(bytes, DateForm::Iso8601);
}

std::size_t whereUnreadable(std::string_view bytes) {
    std::size_t stoppedAt = 0;
    static_cast<void>(readShoot(bytes, DateForm::Iso8601, &stoppedAt));
    return stoppedAt;
}

std::string writeSetObject(const SetData& set) {
    JsonWriter out(JsonWriter::Layout::Indented);
    writeSet(out, set, DateForm::Iso8601);
    return std::string(out.written());
}

} // namespace vantor
