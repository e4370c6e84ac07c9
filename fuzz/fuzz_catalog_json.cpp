// The catalogue as JSON, in every form it ever had: what can be read is written and read again as the same.

#include "model/product_json.h"

#include <cstddef>
#include <cstdint>

#include "fuzz/require.h"

using namespace vantor;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    if (const auto catalog = readCatalog(bytes)) {
        JsonWriter out(JsonWriter::Layout::Compact);
        writeCatalog(out, *catalog);
        const auto again = readCatalog(out.written());
        require(again && again->products == catalog->products && again->clients == catalog->clients &&
                again->brands == catalog->brands);
        require(!readProducts(bytes));
    } else {
        static_cast<void>(readProducts(bytes));
    }
    return 0;
}
