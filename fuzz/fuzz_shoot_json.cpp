// Shoots as JSON, in both forms of dates: what can be read is written and read again as the same text.

#include "formats/shoot_file.h"
#include "model/shoot_json.h"

#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/require.h"

using namespace vantor;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (const auto shoot = readShootFile(bytes)) {
        const auto written = writeShootFile(*shoot);
        const auto again = readShootFile(written);
        require(again && writeShootFile(*again) == written);
    } else {
        require(whereUnreadable(bytes) <= size);
    }
    if (const auto shoots = readShoots(bytes, DateForm::SecondsSinceReference)) {
        JsonWriter first(JsonWriter::Layout::Compact);
        writeShoots(first, *shoots, DateForm::SecondsSinceReference);
        const auto again = readShoots(first.written(), DateForm::SecondsSinceReference);
        require(again.has_value());
        JsonWriter second(JsonWriter::Layout::Compact);
        writeShoots(second, *again, DateForm::SecondsSinceReference);
        require(first.written() == second.written());
    }
    return 0;
}
