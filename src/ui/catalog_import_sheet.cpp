#include "ui/catalog_import_sheet.h"

#include "ui/text.h"

#include <utility>

namespace vantor::ui {
namespace {

constexpr int kWidth = 550;
constexpr int kHeight = 460;

} // namespace

CatalogImportSheet::CatalogImportSheet(QWidget* over, ProductCatalog& catalog, std::string defaultBrand,
                                       const Services& services)
    : CsvImportSheet(
          over, "catalogImportSheet",
          {shown("Import Productcatalogus"),
           shown("Plak CSV data of kies een bestand. Kolommen: Naam;Kleuren;Merk (kleuren "
                 "komma-gescheiden, merk optioneel — leeg = Algemeen, oudere exports zonder Merk-kolom "
                 "worden aan het huidig geselecteerde merk toegewezen)"),
           shown("Voorbeeld:\nNaam;Kleuren;Merk\ncoated pants;brown, navy, black;Mr "
                 "Marvis\nsweater;blue navy;"),
           shown("%1 producten geïmporteerd"), true},
          services),
      m_catalog(catalog),
      m_defaultBrand(std::move(defaultBrand)) {
    setFixedSize(kWidth, kHeight);
}

std::optional<int> CatalogImportSheet::importText(std::string_view text) {
    return m_catalog.importCSV(text, m_defaultBrand);
}

} // namespace vantor::ui
