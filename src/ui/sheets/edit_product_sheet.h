// EditProductSheet: changes one product of the catalogue.
#pragma once

#include "store/product_catalog.h"
#include "ui/sheets/sheet.h"

class QComboBox;

namespace vantor::ui {

class EditProductSheet : public Sheet {
public:
    EditProductSheet(QWidget* over, ProductCatalog& catalog, const Product& product);

private:
    void save();

    ProductCatalog& m_catalog;
    Uuid m_id;
    QLineEdit* m_name;
    QLineEdit* m_colors;
    QComboBox* m_brand;
    QPushButton* m_save;
};

} // namespace vantor::ui
