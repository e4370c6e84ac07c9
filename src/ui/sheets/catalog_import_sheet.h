// CatalogImportSheet: brings products into the catalogue from CSV.
#pragma once

#include "store/product_catalog.h"
#include "ui/sheets/csv_import_sheet.h"

#include <string>

namespace vantor::ui {

class CatalogImportSheet : public CsvImportSheet {
public:
    // Lines without a brand column get `defaultBrand`.
    CatalogImportSheet(QWidget* over, ProductCatalog& catalog, std::string defaultBrand,
                       const Services& services);

protected:
    [[nodiscard]] Reader reader() override;

private:
    ProductCatalog& m_catalog;
    std::string m_defaultBrand;
};

} // namespace vantor::ui
