#include "ui/sheets/new_shoot_sheet.h"

#include "ui/frame/theme.h"
#include "ui/sheets/clients_sheet.h"
#include "ui/widgets/text.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>

namespace vantor::ui {
namespace {

constexpr int kWidth = 400;

} // namespace

NewShootSheet::NewShootSheet(QWidget* over, ShootManager& manager, ProductCatalog& catalog,
                             const Services& services)
    : Sheet(over, "newShootSheet", shown("Nieuwe Shoot")),
      m_manager(manager),
      m_catalog(catalog),
      m_services(services),
      m_renderSoon([this] { render(); }) {
    setFirstSize(kWidth);
    addTitle(shown("Nieuwe Shoot"));
    m_name = makeField("shootNameField", shown("Naam (bijv. Ibiza Zomer 2026)"));
    m_location = makeField("shootLocationField", shown("Locatie (optioneel)"));
    m_client = named(new ComboBox, "clientPicker", shown("Klant (optioneel)"));
    // The name that is told of a box is what is chosen in it.
    m_client->setAccessibleDescription(shown("Klant (optioneel)"));
    m_client->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    auto* const manage = named(new QPushButton(shown("Beheer klanten")), "manageClientsButton");
    manage->setAutoDefault(false);
    m_create = named(new ProminentButton(shown("Aanmaken")), "createButton");
    m_create->setAutoDefault(false);

    addField(shown("Naam"), m_name);
    addField(shown("Locatie"), m_location);
    auto* const row = new QHBoxLayout;
    row->setSpacing(theme::kStep);
    row->addLayout(labelled(shown("Klant (optioneel)"), m_client), 1);
    row->addWidget(manage, 0, Qt::AlignBottom);
    column()->addLayout(row);
    addCancelButton(m_create);

    QObject::connect(m_name, &QLineEdit::textChanged, this, [this] { render(); });
    QObject::connect(m_create, &QPushButton::clicked, this, [this] { create(); });
    QObject::connect(manage, &QPushButton::clicked, this,
                     [this] { (new ClientsSheet(this, m_catalog, clientsOf(m_manager.shoots())))->open(); });
    pressOnReturn(m_name, m_create);
    pressOnReturn(m_location, m_create);
    m_subscription = m_catalog.willChange().connect([this](auto) { m_renderSoon.request(); });
    m_name->setFocus();
    render();
}

void NewShootSheet::render() {
    m_draft.name = typed(m_name->text());
    m_create->setEnabled(m_draft.canCreate());
    renderClients();
}

void NewShootSheet::renderClients() {
    auto clients = knownClients(m_catalog, m_manager.shoots());
    if (clients == m_clients && m_client->count() > 0)
        return;
    const auto chosen = m_client->currentData().toString();
    m_clients = std::move(clients);
    m_client->clear();
    m_client->addItem(shown("Geen klant"), QString());
    for (const auto& client : m_clients)
        m_client->addItem(shownData(client), qstring(client));
    m_client->setCurrentIndex(std::max(0, m_client->findData(chosen)));
}

void NewShootSheet::create() {
    m_draft.location = typed(m_location->text());
    m_draft.client = typed(m_client->currentData().toString());
    m_draft.create(m_manager, m_services.clock());
    accept();
}

} // namespace vantor::ui
