#include "ui/import_sheet.h"

#include "ui/text.h"

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
      m_manager(manager) {
    setFixedSize(kWidth, kHeight);
}

std::optional<int> ImportSheet::importText(std::string_view text) {
    const auto shoot = m_manager.activeShoot();
    if (shoot == nullptr)
        return std::nullopt;
    return m_manager.importCSV(text, shoot->id);
}

} // namespace vantor::ui
