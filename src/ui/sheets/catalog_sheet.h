// CatalogSheet: the product catalogue, brand by brand.
#pragma once

#include "store/product_catalog.h"
#include "ui/frame/services.h"
#include "ui/sheets/sheet.h"
#include "ui/widgets/render_soon.h"
#include "view/brand_choice.h"

#include <string>
#include <vector>

class QComboBox;
class QStackedWidget;

namespace vantor::ui {

class RecyclingList;

class CatalogSheet : public Sheet {
public:
    // Opens on the default brand, or on all brands where that is empty.
    CatalogSheet(QWidget* over, ProductCatalog& catalog, const std::string& defaultBrand,
                 const Services& services);

private:
    void makeTop();
    void makeBrandBar();
    void makeNewProductRow();
    RecyclingList* makeList();
    void render();
    void renderBrands();
    void renderProducts();

    void addBrand();
    void addProduct();
    void deleteBrand();
    void editProduct(int row);
    void deleteProduct(int row);
    void exportCSV();
    [[nodiscard]] const Product* productAt(int row) const;

    ProductCatalog& m_catalog;
    const Services& m_services;
    BrandFilter m_filter;
    RenderSoon m_renderSoon;
    Subscription m_subscription;
    std::vector<std::string> m_brandNames;
    std::vector<std::size_t> m_filtered;
    QComboBox* m_brandPicker = nullptr;
    QToolButton* m_deleteBrand = nullptr;
    QLineEdit* m_newBrandName = nullptr;
    QStackedWidget* m_stack = nullptr;
    RecyclingList* m_list = nullptr;
    TextLabel* m_none = nullptr;
    QLineEdit* m_newName = nullptr;
    QLineEdit* m_newColors = nullptr;
    QPushButton* m_addProduct = nullptr;
};

} // namespace vantor::ui
