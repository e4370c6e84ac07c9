// The catalogue as CSV: importing the same text twice adds nothing the second time, and the list is sorted.

#include "base/text.h"
#include "store/product_catalog.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "fuzz/require.h"

using namespace vantor;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    Document document;
    ProductCatalog catalog(document);
    const int count = catalog.importCSV(text, "Marvis");
    require(static_cast<std::size_t>(count) == catalog.products().size());
    require(catalog.importCSV(text, "Noorderlicht") == 0);
    require(std::ranges::is_sorted(catalog.products(), [](const Product& a, const Product& b) {
        return compareNames(a.name, b.name) < 0;
    }));
    static_cast<void>(catalog.importCSV(catalog.exportCSV(), ""));
    return 0;
}
