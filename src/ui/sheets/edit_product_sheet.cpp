#include "ui/sheets/edit_product_sheet.h"

#include "base/text.h"
#include "formats/csv_row.h"
#include "ui/widgets/text.h"

#include <QComboBox>
#include <QVBoxLayout>
#include <algorithm>

namespace vantor::ui {
namespace {

constexpr int kWidth = 400;

} // namespace

EditProductSheet::EditProductSheet(QWidget* over, ProductCatalog& catalog, const Product& product)
    : Sheet(over, "editProductSheet", shown("Product bewerken")),
      m_catalog(catalog),
      m_id(product.id) {
    setFirstSize(kWidth);
    addTitle(shown("Product bewerken"));
    m_name = makeField("productNameField", shown("Naam"));
    m_colors = makeField("productColorsField", shown("Kleuren, komma-gescheiden"));
    m_brand = named(new ComboBox, "productBrandPicker", shown("Merk"));
    // The name that is told of a box is what is chosen in it.
    m_brand->setAccessibleDescription(shown("Merk"));
    m_brand->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_brand->addItem(shown("Algemeen (alle merken)"), QString());
    for (const auto& name : catalog.allBrandNames())
        m_brand->addItem(shownData(name), qstring(name));
    m_name->setText(qstring(product.name));
    m_colors->setText(qstring(joined(product.colors, ", ")));
    m_brand->setCurrentIndex(std::max(0, m_brand->findData(qstring(product.brand))));
    m_save = named(new ProminentButton(shown("Opslaan")), "confirmButton");
    m_save->setAutoDefault(false);
    addField(shown("Productnaam"), m_name);
    addField(shown("Kleuren"), m_colors);
    addField(shown("Merk"), m_brand);
    addCancelButton(m_save);

    const auto enable = [this] { m_save->setEnabled(!trimmed(typed(m_name->text())).empty()); };
    QObject::connect(m_name, &QLineEdit::textChanged, this, enable);
    enable();
    pressOnReturn(m_name, m_save);
    pressOnReturn(m_colors, m_save);
    QObject::connect(m_save, &QPushButton::clicked, this, [this] { save(); });
    m_name->setFocus();
}

void EditProductSheet::save() {
    if (std::ranges::find(m_catalog.products(), m_id, &Product::id) == m_catalog.products().end())
        return tellProblem(shown("Dit product bestaat niet meer."));
    m_catalog.updateProduct(m_id, typed(m_name->text()), splitAtCommas(typed(m_colors->text())),
                            typed(m_brand->currentData().toString()));
    accept();
}

} // namespace vantor::ui
