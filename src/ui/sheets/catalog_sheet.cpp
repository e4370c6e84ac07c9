#include "ui/sheets/catalog_sheet.h"

#include "base/text.h"
#include "formats/csv_row.h"
#include "ui/frame/save_file.h"
#include "ui/frame/theme.h"
#include "ui/sheets/catalog_import_sheet.h"
#include "ui/sheets/edit_product_sheet.h"
#include "ui/sheets/two_line_row.h"
#include "ui/widgets/recycling_list.h"
#include "ui/widgets/text.h"
#include "view/proposed_names.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <utility>

namespace vantor::ui {
namespace {

constexpr int kWidth = 640;
constexpr int kHeight = 640;
// Where the picker's entries stand that are no brands.
constexpr int kAllBrands = 0;
constexpr int kGeneral = 1;
constexpr int kFirstBrand = 2;

class ProductRow : public TwoLineRow {
public:
    QPushButton* edit;
    QPushButton* remove;
    int place = 0;

    ProductRow() : TwoLineRow("productRow", "productName", "productColors") {
        edit = named(new QPushButton(shown("Bewerken")), "editProductButton");
        remove = named(new QPushButton(shown("Verwijderen")), "deleteProductButton");
        for (auto* const button : {edit, remove}) {
            button->setAutoDefault(false);
            addAtRight(button);
        }
    }
};

} // namespace

CatalogSheet::CatalogSheet(QWidget* over, ProductCatalog& catalog, const std::string& defaultBrand,
                           const Services& services)
    : Sheet(over, "catalogSheet", shown("Productcatalogus")),
      m_catalog(catalog),
      m_services(services),
      m_filter(defaultBrand.empty() ? BrandFilter::all() : BrandFilter::brand(defaultBrand)),
      m_renderSoon([this] { render(); }) {
    setFirstSize(kWidth, kHeight);
    makeTop();
    makeBrandBar();
    m_list = makeList();
    m_none = named(new TextLabel(QString(), theme::bodyFont(), TextColor::Secondary, true), "noProducts");
    m_stack = listOrText(m_list, m_none);
    column()->addWidget(m_stack, 1);
    makeNewProductRow();
    addCloseButton();
    m_subscription = m_catalog.willChange().connect([this](auto) { m_renderSoon.request(); });
    render();
    m_newBrandName->setFocus();
}

void CatalogSheet::makeTop() {
    auto* const import = named(new QPushButton(shown("Import CSV")), "importButton");
    auto* const exportButton = named(new QPushButton(shown("Export CSV")), "exportButton");
    import->setAutoDefault(false);
    exportButton->setAutoDefault(false);
    QObject::connect(import, &QPushButton::clicked, this, [this] {
        (new CatalogImportSheet(this, m_catalog, m_filter.brandForNew(), m_services))->open();
    });
    QObject::connect(exportButton, &QPushButton::clicked, this, [this] { exportCSV(); });
    addTitle(shown("Productcatalogus"), {import, exportButton});
    addExplanation(
        shown("Producten die je hier toevoegt kun je bij het aanmaken van een set direct kiezen, zonder "
              "opnieuw te typen. Per merk gescheiden, zodat je niet door andermans producten hoeft te "
              "scrollen — een klant kan best meerdere merken hebben (bijv. Wehkamp shoot je voor zowel "
              "Nike als Marvis), dus dit staat los van welke klant een shoot is."));
}

void CatalogSheet::makeBrandBar() {
    m_brandPicker = named(new ComboBox, "brandPicker", shown("Merk"));
    m_brandPicker->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_deleteBrand =
        named(new SymbolButton(QStringLiteral("trash"),
                               shown("Merk verwijderen uit de lijst (producten blijven bestaan)")),
              "deleteBrandButton");
    keepRoomOf(m_deleteBrand);
    m_newBrandName = makeField("newBrandField", shown("Nieuw merk..."));
    auto* const add = named(new QPushButton(shown("+ Merk")), "addBrandButton");
    add->setAutoDefault(false);
    QObject::connect(m_brandPicker, &QComboBox::activated, this, [this](int index) {
        if (index == kAllBrands)
            m_filter = BrandFilter::all();
        else if (index == kGeneral)
            m_filter = BrandFilter::general();
        else
            m_filter = BrandFilter::brand(typed(m_brandPicker->itemData(index).toString()));
        render();
        m_list->open(m_list->rowCount(), std::nullopt);
    });
    QObject::connect(m_deleteBrand, &QToolButton::clicked, this, [this] { deleteBrand(); });
    QObject::connect(m_newBrandName, &QLineEdit::returnPressed, this, [this] { addBrand(); });
    QObject::connect(add, &QPushButton::clicked, this, [this] { addBrand(); });
    auto* const row = new QHBoxLayout;
    row->setSpacing(theme::kStep);
    row->addLayout(labelled(shown("Merk"), m_brandPicker), 1);
    row->addWidget(m_deleteBrand, 0, Qt::AlignBottom);
    row->addLayout(labelled(shown("Naam van het merk"), m_newBrandName), 1);
    row->addWidget(add, 0, Qt::AlignBottom);
    column()->addLayout(row);
}

void CatalogSheet::makeNewProductRow() {
    m_newName = makeField("newProductNameField", shown("Naam (bijv. coated pants)"));
    m_newColors = makeField("newProductColorsField", shown("Kleuren, komma-gescheiden (optioneel)"));
    m_addProduct = named(new ProminentButton(shown("+ Toevoegen")), "addProductButton");
    m_addProduct->setAutoDefault(false);
    QObject::connect(m_newName, &QLineEdit::textChanged, this,
                     [this] { m_addProduct->setEnabled(!trimmed(typed(m_newName->text())).empty()); });
    m_addProduct->setEnabled(false);
    pressOnReturn(m_newName, m_addProduct);
    pressOnReturn(m_newColors, m_addProduct);
    QObject::connect(m_addProduct, &QPushButton::clicked, this, [this] { addProduct(); });
    auto* const row = new QHBoxLayout;
    row->setSpacing(theme::kStep);
    row->addLayout(labelled(shown("Nieuw product"), m_newName), 4);
    row->addLayout(labelled(shown("Kleuren"), m_newColors), 5);
    row->addWidget(m_addProduct, 0, Qt::AlignBottom);
    column()->addLayout(row);
}

RecyclingList* CatalogSheet::makeList() {
    RecyclingList::Rows rows;
    rows.make = [this] {
        auto* const row = new ProductRow;
        QObject::connect(row->edit, &QPushButton::clicked, this, [this, row] { editProduct(row->place); });
        QObject::connect(row->remove, &QPushButton::clicked, this,
                         [this, row] { deleteProduct(row->place); });
        return row;
    };
    rows.fill = [this](QWidget& widget, int place, bool isCurrent) {
        const auto* const product = productAt(place);
        if (product == nullptr)
            return;
        auto& row = static_cast<ProductRow&>(widget);
        row.place = place;
        row.headline()->setText(shownData(product->name));
        QStringList colors;
        for (const auto& color : product->colors)
            colors.append(shownData(color));
        row.caption()->setText(colors.join(QStringLiteral(", ")));
        row.caption()->setVisible(!product->colors.empty());
        row.setCurrent(isCurrent);
    };
    rows.key = [this](int place) {
        const auto* const product = productAt(place);
        return product != nullptr ? product->id.bytes() : std::string_view();
    };
    rows.tell = [this](int place) {
        const auto* const product = productAt(place);
        return RecyclingList::Told{product != nullptr ? shownData(product->name) : QString(), {}};
    };
    rows.activate = [this](int place) { editProduct(place); };
    rows.remove = [this](int place) { deleteProduct(place); };
    return named(new RecyclingList(std::move(rows)), "productList", shown("Producten"));
}

void CatalogSheet::render() {
    renderBrands();
    renderProducts();
}

void CatalogSheet::renderBrands() {
    auto names = m_catalog.allBrandNames();
    if (names != m_brandNames || m_brandPicker->count() == 0) {
        m_brandNames = std::move(names);
        m_brandPicker->clear();
        m_brandPicker->addItem(shown("Alle merken"));
        m_brandPicker->addItem(shown("Algemeen"));
        for (const auto& name : m_brandNames)
            m_brandPicker->addItem(shownData(name), qstring(name));
    }
    // A chosen name may be none of the catalogue's: one that it holds in another case. The picker then shows none.
    int index = kAllBrands;
    if (m_filter.isNamed()) {
        const auto found = std::ranges::find(m_brandNames, m_filter.brandForNew());
        index =
            found != m_brandNames.end() ? kFirstBrand + static_cast<int>(found - m_brandNames.begin()) : -1;
    } else if (!m_filter.isAll()) {
        index = kGeneral;
    }
    m_brandPicker->setCurrentIndex(index);
    m_deleteBrand->setVisible(m_filter.isNamed());
}

void CatalogSheet::renderProducts() {
    m_filtered = filteredProducts(m_catalog.products(), m_filter);
    m_none->setText(m_catalog.products().empty()
                        ? shown("Nog geen producten. Voeg er hieronder een toe of importeer een CSV.")
                        : shown("Geen producten voor dit merk."));
    m_stack->setCurrentIndex(m_filtered.empty() ? 1 : 0);
    m_list->setRowCount(static_cast<int>(m_filtered.size()));
}

const Product* CatalogSheet::productAt(int row) const {
    const auto place = static_cast<std::size_t>(row);
    if (row < 0 || place >= m_filtered.size() || m_filtered[place] >= m_catalog.products().size())
        return nullptr;
    return &m_catalog.products()[m_filtered[place]];
}

void CatalogSheet::addBrand() {
    const std::string name(trimmed(typed(m_newBrandName->text())));
    if (name.empty())
        return;
    m_catalog.addBrand(name);
    m_filter = BrandFilter::brand(name);
    emptyTaken(*m_newBrandName);
    render();
}

void CatalogSheet::addProduct() {
    m_catalog.addProduct(typed(m_newName->text()), splitAtCommas(typed(m_newColors->text())),
                         m_filter.brandForNew());
    emptyTaken(*m_newName);
    emptyTaken(*m_newColors);
    m_newName->setFocus();
}

void CatalogSheet::deleteBrand() {
    m_catalog.deleteBrand(m_filter.brandForNew());
    m_filter = BrandFilter::all();
    render();
    m_brandPicker->setFocus();
}

void CatalogSheet::editProduct(int row) {
    if (const auto* const product = productAt(row))
        (new EditProductSheet(this, m_catalog, *product))->open();
}

void CatalogSheet::deleteProduct(int row) {
    if (const auto* const product = productAt(row)) {
        m_catalog.deleteProduct(product->id);
        // At once: the next key would delete what stands in another place by then.
        renderProducts();
    }
}

void CatalogSheet::exportCSV() {
    saveFile(this, m_services, catalogName(), csvType(), m_catalog.exportCSV());
}

} // namespace vantor::ui
