// A card's text: what is read as a set is written as a text that reads as the same set, once it was trimmed.

#include "base/text.h"
#include "model/shoot.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/require.h"

using namespace vantor;

namespace {

bool separates(const std::string& before, char separator, const std::string& behind) {
    return findCharacter(before + separator + behind, separator, before.size()) == before.size();
}

// A value that opens with a combining mark makes another character of the separator before it, and a garment that
// is nothing but a colour reads as a garment of that name: such lines say something else when they are read again.
bool readsBack(const SetData& set) {
    const auto field = [](const std::string& value) { return separates("", ':', value); };
    return field(set.setNumber) && field(set.brand) && field(set.model) && field(set.location) &&
           field(set.email) && std::ranges::all_of(set.items, [&](const SetItem& item) {
               return !item.name.empty() && field(item.name) && separates(item.name, '/', item.color);
           });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto set = SetData::parse({reinterpret_cast<const char*>(data), size}, Timestamp{});
    if (!set)
        return 0;
    require(!set->headline().empty());
    static_cast<void>(set->description());
    if (!readsBack(*set))
        return 0;
    const auto again = SetData::parse(set->toQRText(), Timestamp{});
    require(again && again->setNumber == set->setNumber && again->brand == set->brand);
    require(again->toQRText() == set->toQRText());
    return 0;
}
