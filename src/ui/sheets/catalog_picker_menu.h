// CatalogPickerMenu: a button whose menu offers the catalogue's products, by brand and colour, the client's own
// brand first.
//
// Submenus are filled when they are opened, so that a large catalogue costs nothing until it is looked into.
#pragma once

#include "store/product_catalog.h"

#include <QPushButton>
#include <functional>
#include <string>

class QMenu;
class QStyle;

namespace vantor::ui {

class CatalogPickerMenu : public QPushButton {
public:
    using OnPick = std::function<void(const std::string& name, const std::string& color)>;

    CatalogPickerMenu(const ProductCatalog& catalog, std::string client, OnPick onPick);

private:
    void fillMenu();
    void fillBrand(QMenu& menu, const std::vector<std::size_t>& products);
    void addProduct(QMenu& menu, const Product& product);

    const ProductCatalog& m_catalog;
    std::string m_client;
    OnPick m_onPick;
    QMenu* m_menu;
};

} // namespace vantor::ui
