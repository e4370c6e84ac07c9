// A card's text: what is read as a set is written as a text that reads as the same set, once it was trimmed.

#include "model/shoot.h"

#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/require.h"

using namespace vantor;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto set = SetData::parse({reinterpret_cast<const char*>(data), size}, Timestamp{});
    if (!set)
        return 0;
    require(!set->headline().empty());
    static_cast<void>(set->description());
    const auto again = SetData::parse(set->toQRText(), Timestamp{});
    require(again && again->setNumber == set->setNumber && again->brand == set->brand);
    require(again->toQRText() == set->toQRText());
    return 0;
}
