#include "ui/sheets/catalog_import_sheet.h"

#include "formats/catalog_csv.h"
#include "ui/widgets/text.h"

#include <memory>
#include <utility>
#include <vector>

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
    setFirstSize(kWidth, kHeight);
}

CsvImportSheet::Reader CatalogImportSheet::reader() {
    return [this, brand = m_defaultBrand](std::string_view text) -> Add {
        // Shared as a function can be copied, which what was read is not to be.
        auto read = std::make_shared<ProductsOfCSV>(readCatalogCSV(text, brand));
        return [this, read]() -> Result { return {m_catalog.addImported(std::move(*read)), {}}; };
    };
}

} // namespace vantor::ui
