#include "ui/sheets/catalog_picker_menu.h"

#include "ui/frame/theme.h"
#include "ui/widgets/text.h"
#include "ui/widgets/widgets.h"
#include "view/brand_choice.h"

#include <QMenu>
#include <utility>

namespace vantor::ui {
CatalogPickerMenu::CatalogPickerMenu(const ProductCatalog& catalog, std::string client, OnPick onPick)
    : m_catalog(catalog),
      m_client(std::move(client)),
      m_onPick(std::move(onPick)),
      m_menu(new QMenu(this)) {
    named(this, "catalogPicker", shown("Uit catalogus"));
    setText(shown("Uit catalogus"));
    setFont(theme::captionFont());
    setAutoDefault(false);
    m_menu->setObjectName(QStringLiteral("catalogPickerMenu"));
    setMenu(m_menu);
    QObject::connect(m_menu, &QMenu::aboutToShow, this, [this] { fillMenu(); });
    // Clearing a menu leaves its submenus where they are. Later, as what was picked is told only after this.
    QObject::connect(m_menu, &QMenu::aboutToHide, this, [this] {
        for (auto* const brand : m_menu->findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly))
            brand->deleteLater();
    });
}

void CatalogPickerMenu::fillMenu() {
    m_menu->clear();
    const auto groups = productGroups(m_catalog, m_client);
    if (groups.empty()) {
        m_menu->addAction(shown("Catalogus is leeg"))->setEnabled(false);
        return;
    }
    for (const auto& group : groups) {
        auto* const submenu =
            m_menu->addMenu(group.brand.empty() ? shown("Algemeen") : dataInMenu(group.brand));
        QObject::connect(submenu, &QMenu::aboutToShow, this, [this, submenu, products = group.products] {
            if (submenu->isEmpty())
                fillBrand(*submenu, products);
        });
    }
}

void CatalogPickerMenu::fillBrand(QMenu& menu, const std::vector<std::size_t>& products) {
    for (const auto place : products) {
        if (place < m_catalog.products().size())
            addProduct(menu, m_catalog.products()[place]);
    }
}

void CatalogPickerMenu::addProduct(QMenu& menu, const Product& product) {
    const auto pick = [this, name = product.name](const std::string& color) {
        return [this, name, color] { m_onPick(name, color); };
    };
    if (product.colors.empty()) {
        QObject::connect(menu.addAction(dataInMenu(product.name)), &QAction::triggered, this, pick({}));
        return;
    }
    auto* const colors = menu.addMenu(dataInMenu(product.name));
    QObject::connect(colors, &QMenu::aboutToShow, this, [this, colors, pick, all = product.colors] {
        if (!colors->isEmpty())
            return;
        for (const auto& color : all)
            QObject::connect(colors->addAction(dataInMenu(color)), &QAction::triggered, this, pick(color));
        QObject::connect(colors->addAction(shown("Geen kleur")), &QAction::triggered, this, pick({}));
    });
}

} // namespace vantor::ui
