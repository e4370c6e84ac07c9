// Sets as CSV: every usable line becomes one set at the front, and the export reads back as many lines.

#include "base/text.h"
#include "formats/csv_row.h"
#include "formats/set_csv.h"
#include "store/shoot_manager.h"

#include <cstddef>
#include <cstdint>

#include "fuzz/require.h"

using namespace vantor;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    require(!parseCSVRow(text).empty());

    Document document;
    ShootManager manager(document);
    manager.addShoot(Shoot::make("", "", "", Timestamp{}));
    const auto id = manager.shoots().front().id;
    const int count = manager.importCSV(text, id);
    require(static_cast<std::size_t>(count) == manager.shoots().front().sets.size());
    for (const auto& set : manager.shoots().front().sets)
        require(!set.setNumber.empty() && (!set.brand.empty() || !set.items.empty()));
    const auto exported = manager.exportCSV(id);
    require(exported.starts_with("Set;Merk;Items;Model;Locatie;Email;Getagd"));
    static_cast<void>(manager.importCSV(exported, id));
    return 0;
}
