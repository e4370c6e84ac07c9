// ClientsSheet: the list of clients that can be chosen for a shoot.
#pragma once

#include "store/product_catalog.h"
#include "ui/sheets/sheet.h"
#include "ui/widgets/render_soon.h"

#include <string>
#include <vector>

class QStackedWidget;

namespace vantor::ui {

class RecyclingList;

class ClientsSheet : public Sheet {
public:
    // `knownClients` are listed beside the catalogue's own.
    ClientsSheet(QWidget* over, ProductCatalog& catalog, std::vector<std::string> knownClients);

private:
    void render();
    void addClient();
    [[nodiscard]] bool isStored(const std::string& name) const;
    RecyclingList* makeList();

    ProductCatalog& m_catalog;
    std::vector<std::string> m_knownClients;
    RenderSoon m_renderSoon;
    Subscription m_subscription;
    std::vector<std::string> m_all;
    QLineEdit* m_newClientName;
    QPushButton* m_add;
    QStackedWidget* m_stack;
    RecyclingList* m_list;
};

} // namespace vantor::ui
