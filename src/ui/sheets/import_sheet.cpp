#include "ui/sheets/import_sheet.h"

#include "formats/set_csv.h"
#include "ui/widgets/text.h"

#include <memory>
#include <utility>

namespace vantor::ui {
namespace {

constexpr int kWidth = 550;
constexpr int kHeight = 400;

} // namespace

ImportSheet::ImportSheet(QWidget* over, ShootManager& manager, const Services& services)
    : CsvImportSheet(
          over, "importSheet",
          {shown("Import CSV"),
           shown("Plak CSV data of kies een bestand. Kolommen: Set, Merk, Items (item/kleur, item/kleur), "
                 "Model, Locatie"),
           shown("Voorbeeld:\nSet;Merk;Items;Model;Locatie\n1;Marvis;coated pants/brown, sweater/blue "
                 "navy;Anna;Studio A"),
           shown("%1 sets geïmporteerd"), false},
          services),
      m_manager(manager),
      m_clock(services.clock) {
    setFirstSize(kWidth, kHeight);
    if (const auto* const shoot = manager.activeShoot())
        m_shootId = shoot->id;
}

CsvImportSheet::Reader ImportSheet::reader() {
    return [this, now = m_clock()](std::string_view text) -> Add {
        // Shared as a function can be copied, which what was read is not to be.
        auto read = std::make_shared<SetsOfCSV>(readSetCSV(text, now));
        return [this, read]() -> Result {
            const auto shootId = m_shootId ? m_shootId : m_manager.activeShootId();
            if (!shootId)
                return {};
            if (m_manager.shoot(*shootId) == nullptr)
                return {{}, shown("Deze shoot bestaat niet meer.")};
            return {m_manager.addImported(std::move(*read), *shootId), {}};
        };
    };
}

} // namespace vantor::ui
