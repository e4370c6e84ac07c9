// NewShootSheet: makes a shoot, which becomes the active one at once.
#pragma once

#include "store/product_catalog.h"
#include "store/shoot_manager.h"
#include "ui/frame/services.h"
#include "ui/sheets/sheet.h"
#include "ui/widgets/render_soon.h"
#include "view/new_shoot_draft.h"

class QComboBox;

namespace vantor::ui {

class NewShootSheet : public Sheet {
public:
    NewShootSheet(QWidget* over, ShootManager& manager, ProductCatalog& catalog, const Services& services);

private:
    void render();
    void renderClients();
    void create();

    ShootManager& m_manager;
    ProductCatalog& m_catalog;
    const Services& m_services;
    NewShootDraft m_draft;
    RenderSoon m_renderSoon;
    Subscription m_subscription;
    std::vector<std::string> m_clients;
    QLineEdit* m_name;
    QLineEdit* m_location;
    QComboBox* m_client;
    QPushButton* m_create;
};

} // namespace vantor::ui
