#include "ui/sheets/clients_sheet.h"

#include "base/text.h"
#include "ui/frame/theme.h"
#include "ui/widgets/list_row.h"
#include "ui/widgets/recycling_list.h"
#include "ui/widgets/text.h"
#include "view/new_shoot_draft.h"

#include <QHBoxLayout>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

namespace vantor::ui {
namespace {

constexpr int kWidth = 460;
constexpr int kHeight = 500;

class ClientRow : public ListRow {
public:
    std::string name;
    ElidedLabel* label;
    SymbolButton* remove;

    ClientRow() {
        setObjectName(QStringLiteral("clientRow"));
        label = named(new ElidedLabel(theme::bodyFont(), TextColor::Primary), "clientName");
        remove =
            named(new SymbolButton(
                      QStringLiteral("trash"),
                      shown("Verwijderen uit de lijst (shoots/producten met deze klant blijven bestaan)")),
                  "deleteClientButton");
        keepRoomOf(remove);
        auto* const row = new QHBoxLayout(this);
        row->setContentsMargins(theme::kPadding, theme::kHalfStep, theme::kPadding, theme::kHalfStep);
        row->setSpacing(theme::kStep);
        row->addWidget(label, 1);
        row->addWidget(remove);
    }

    [[nodiscard]] QSize sizeHint() const override { return {200, layout()->minimumSize().height()}; }
};

} // namespace

ClientsSheet::ClientsSheet(QWidget* over, ProductCatalog& catalog, std::vector<std::string> knownClients)
    : Sheet(over, "clientsSheet", shown("Klanten")),
      m_catalog(catalog),
      m_knownClients(std::move(knownClients)),
      m_renderSoon([this] { render(); }) {
    setFirstSize(kWidth, kHeight);
    addTitle(shown("Klanten"));
    addExplanation(
        shown("Eenmaal aangemaakt kies je een klant bij een nieuwe shoot en in de productcatalogus, in "
              "plaats van steeds opnieuw te typen."));
    m_newClientName = makeField("newClientField", shown("Nieuwe klant..."));
    m_add = named(new ProminentButton(shown("+ Toevoegen")), "addClientButton");
    m_add->setAutoDefault(false);
    auto* const row = new QHBoxLayout;
    row->setSpacing(theme::kStep);
    row->addLayout(labelled(shown("Naam van de klant"), m_newClientName), 1);
    row->addWidget(m_add, 0, Qt::AlignBottom);
    column()->addLayout(row);

    m_list = makeList();
    auto* const none = new TextLabel(shown("Nog geen klanten. Voeg er hierboven een toe."), theme::bodyFont(),
                                     TextColor::Secondary, true);
    m_stack = listOrText(m_list, none);
    column()->addWidget(m_stack, 1);
    addCloseButton();

    QObject::connect(m_newClientName, &QLineEdit::textChanged, this, [this] { render(); });
    QObject::connect(m_newClientName, &QLineEdit::returnPressed, this, [this] { addClient(); });
    QObject::connect(m_add, &QPushButton::clicked, this, [this] {
        addClient();
        m_newClientName->setFocus();
    });
    m_subscription = m_catalog.willChange().connect([this](auto) { m_renderSoon.request(); });
    m_newClientName->setFocus();
    render();
}

RecyclingList* ClientsSheet::makeList() {
    RecyclingList::Rows rows;
    rows.make = [this] {
        auto* const row = new ClientRow;
        QObject::connect(row->remove, &QToolButton::clicked, this,
                         [this, row] { m_catalog.deleteClient(row->name); });
        return row;
    };
    rows.fill = [this](QWidget& widget, int place, bool isCurrent) {
        auto& row = static_cast<ClientRow&>(widget);
        row.name = m_all[static_cast<std::size_t>(place)];
        row.label->setText(shownData(row.name));
        // Deleting a name that only shoots carry would have no effect that anyone could see.
        row.remove->setVisible(isStored(row.name));
        row.setCurrent(isCurrent);
    };
    rows.key = [this](int place) { return std::string_view(m_all[static_cast<std::size_t>(place)]); };
    rows.tell = [this](int place) {
        return RecyclingList::Told{shownData(m_all[static_cast<std::size_t>(place)]), {}};
    };
    rows.remove = [this](int place) {
        m_catalog.deleteClient(m_all[static_cast<std::size_t>(place)]);
        // At once: the next key would find the deleted name still in its place.
        render();
    };
    return named(new RecyclingList(std::move(rows)), "clientList", shown("Klanten"));
}

bool ClientsSheet::isStored(const std::string& name) const {
    return std::ranges::find(m_catalog.clients(), name) != m_catalog.clients().end();
}

void ClientsSheet::render() {
    m_add->setEnabled(!trimmed(typed(m_newClientName->text())).empty());
    m_all = allClients(m_catalog, m_knownClients);
    m_stack->setCurrentIndex(m_all.empty() ? 1 : 0);
    m_list->setRowCount(static_cast<int>(m_all.size()));
}

void ClientsSheet::addClient() {
    const auto name = typed(m_newClientName->text());
    if (trimmed(name).empty())
        return;
    m_catalog.addClient(name);
    emptyTaken(*m_newClientName);
}

} // namespace vantor::ui
