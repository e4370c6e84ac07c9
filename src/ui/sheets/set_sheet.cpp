#include "ui/sheets/set_sheet.h"

#include "ui/frame/theme.h"
#include "ui/sheets/catalog_picker_menu.h"
#include "ui/sheets/item_editor.h"
#include "ui/widgets/text.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <utility>
#include <vector>

namespace vantor::ui {
namespace {

constexpr int kWidth = 450;

} // namespace

SetSheet::SetSheet(QWidget* over, ShootManager& manager, const ProductCatalog& catalog,
                   const Services& services)
    : SetSheet(over, manager, catalog, services, std::nullopt, shown("Nieuwe Set")) {}

SetSheet::SetSheet(QWidget* over, ShootManager& manager, const ProductCatalog& catalog,
                   const Services& services, SetData edited)
    : SetSheet(over, manager, catalog, services, std::optional(std::move(edited)), shown("Set bewerken")) {}

SetSheet::SetSheet(QWidget* over, ShootManager& manager, const ProductCatalog& catalog,
                   const Services& services, std::optional<SetData> edited, const QString& title)
    : Sheet(over, edited ? "editSetSheet" : "newSetSheet", title),
      m_manager(manager),
      m_services(services),
      m_edited(std::move(edited)) {
    setFirstSize(kWidth);
    addTitle(title);
    makeForm(catalog);

    const auto start = m_edited ? SetDraft::of(*m_edited) : SetDraft();
    m_setNumber->setText(qstring(start.setNumber));
    m_brand->setText(qstring(start.brand));
    m_model->setText(qstring(start.model));
    m_location->setText(qstring(start.location));
    m_email->setText(qstring(start.email));
    m_items->setPairs(start.items);
    m_setNumber->setFocus();
    render();
}

void SetSheet::makeForm(const ProductCatalog& catalog) {
    m_setNumber = makeField("setNumberField", QString(), shown("Set nummer"));
    fixWidth(m_setNumber, 60, 4);
    m_brand = makeField("brandField", m_edited ? QString() : shown("bijv. Marvis"), shown("Merk"));
    m_model = makeField("modelField", shown("Naam"), shown("Model"));
    m_location = makeField("locationField", shown("Studio"), shown("Locatie"));
    m_email =
        makeField("emailField", shown("bijv. voor portretsessies per persoon"), shown("E-mail (optioneel)"));
    m_confirm = named(new ProminentButton(m_edited ? shown("Opslaan") : shown("Toevoegen")), "confirmButton");
    m_confirm->setAutoDefault(false);
    m_items = named(new ItemEditor({shown("Item"), 100, true, true}, m_email, [this] { render(); }), "items",
                    shown("Items"));

    addField(shown("Set nummer"), m_setNumber);
    addField(shown("Merk"), m_brand);
    addField(shown("Model"), m_model);
    addField(shown("Locatie"), m_location);
    addField(shown("E-mail (optioneel)"), m_email);

    const auto* const shoot = m_manager.activeShoot();
    if (shoot != nullptr)
        m_shootId = shoot->id;
    auto* const picker = new CatalogPickerMenu(
        catalog, shoot != nullptr ? shoot->client : std::string(),
        [this](const std::string& name, const std::string& color) { m_items->addPicked(name, color); });
    auto* const row = new QHBoxLayout;
    row->setSpacing(theme::kStep);
    row->addWidget(m_items->addButton());
    row->addWidget(picker);
    row->addStretch();
    auto* const items = labelled(shown("Items"), m_items);
    items->addSpacing(theme::kHalfStep);
    items->addLayout(row);
    column()->addLayout(items);
    addCancelButton(m_confirm);

    // Return walks on, so that no set is added that is half typed.
    const std::vector<QLineEdit*> fields{m_setNumber, m_brand, m_model, m_location, m_email};
    for (std::size_t i = 0; i < fields.size(); ++i) {
        QObject::connect(fields[i], &QLineEdit::textChanged, this, [this] { render(); });
        QObject::connect(fields[i], &QLineEdit::returnPressed, this,
                         [this, next = i + 1 < fields.size() ? fields[i + 1] : nullptr] {
                             if (next != nullptr)
                                 next->setFocus(Qt::TabFocusReason);
                             else
                                 m_items->focusFirst();
                         });
    }
    m_items->setOnReturn([this] { m_confirm->click(); });
    QObject::connect(m_confirm, &QPushButton::clicked, this, [this] { confirm(); });
}

SetDraft SetSheet::draft() const {
    return {typed(m_setNumber->text()), typed(m_brand->text()), typed(m_model->text()),
            typed(m_location->text()),  typed(m_email->text()), m_items->pairs()};
}

void SetSheet::render() {
    m_confirm->setEnabled(m_edited || draft().canAdd());
}

void SetSheet::confirm() {
    if (m_edited ? draft().save(m_manager, *m_edited)
                 : m_shootId && draft().add(m_manager, *m_shootId, m_services.clock()))
        accept();
    else
        tellProblem(m_edited ? shown("Deze set bestaat niet meer.") : shown("Deze shoot bestaat niet meer."));
}

} // namespace vantor::ui
