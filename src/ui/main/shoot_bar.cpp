#include "ui/main/shoot_bar.h"

#include "ui/frame/theme.h"
#include "ui/main/shoot_bar_layout.h"
#include "ui/widgets/symbol.h"
#include "ui/widgets/text.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <utility>

namespace vantor::ui {
namespace {

constexpr int kPickerWidth = 200;
// In characters.
constexpr int kLeastTitle = 20;

} // namespace

ShootBar::ShootBar(ShootManager& manager, Commands& commands) : m_manager(manager) {
    using enum CommandId;
    using enum ShootBarLayout::Part;
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Button);
    auto* const parts = new ShootBarLayout;
    setLayout(parts);
    parts->add(makeTitle(), Title);
    parts->add(makePicker(), Picker);
    for (const auto& [id, name] :
         {std::pair(Clients, "clientsButton"), std::pair(OnlineManual, "manualButton"),
          std::pair(ImportCsv, "importButton"), std::pair(ExportCsv, "exportCsvButton"),
          std::pair(ExportJson, "exportJsonButton"), std::pair(Generator, "generatorButton"),
          std::pair(BulkExport, "bulkExportButton"), std::pair(Catalog, "catalogButton")}) {
        const auto text = shown(command(id).text);
        auto* const button =
            named(new CommandButton(symbolIcon(qstring(command(id).symbol)), text), name, text);
        commands.attach(*button, id);
        parts->add(button, Command);
    }
    m_newShoot = named(new ProminentButton(shown("Nieuwe Shoot")), "newShootButton", shown("Nieuwe Shoot"));
    m_newShoot->setIcon(symbolIcon(QStringLiteral("plus")));
    commands.attach(*m_newShoot, NewShoot);
    parts->add(m_newShoot, Last);
    m_deleteShoot = named(
        new SymbolButton(QStringLiteral("trash"), shown("Shoot verwijderen (inclusief alle sets erin)")),
        "deleteShootButton");
    commands.attach(*m_deleteShoot, DeleteShoot);
    parts->add(m_deleteShoot, Last);
}

QWidget* ShootBar::makeTitle() {
    m_shootName = named(new ElidedLabel(theme::headlineFont(), TextColor::Primary), "shootName");
    m_client = named(new Tag(Tag::Kind::Client), "clientTag");
    m_shootCount = named(new CountLabel(theme::captionFont(), TextColor::Secondary), "shootCount");
    auto* const nameLine = new QHBoxLayout;
    nameLine->setSpacing(theme::kHalfStep);
    nameLine->addWidget(m_shootName);
    nameLine->addWidget(m_client);
    nameLine->addStretch();
    auto* const title = new QWidget;
    title->setMinimumWidth(kLeastTitle * m_shootName->fontMetrics().averageCharWidth());
    auto* const column = new QVBoxLayout(title);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    column->addLayout(nameLine);
    column->addWidget(m_shootCount);
    return title;
}

QWidget* ShootBar::makePicker() {
    m_picker = named(new ComboBox, "shootPicker", shown("Shoot"));
    m_picker->setMinimumWidth(kPickerWidth);
    m_picker->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    QObject::connect(m_picker, &QComboBox::activated, this, [this](int index) {
        const auto& shoots = m_manager.shoots();
        if (index >= 0 && static_cast<std::size_t>(index) < shoots.size())
            m_manager.setActiveShootId(shoots[static_cast<std::size_t>(index)].id);
    });
    auto* const label = new TextLabel(shown("Shoot"), theme::bodyFont(), TextColor::Secondary);
    label->setBuddy(m_picker);
    m_pickerBox = new QWidget;
    QSizePolicy keepsItsPlace = m_pickerBox->sizePolicy();
    keepsItsPlace.setRetainSizeWhenHidden(true);
    m_pickerBox->setSizePolicy(keepsItsPlace);
    auto* const row = new QHBoxLayout(m_pickerBox);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(label);
    row->addWidget(m_picker);
    return m_pickerBox;
}

void ShootBar::render() {
    const auto* const shoot = m_manager.activeShoot();
    m_shootName->setText(shoot != nullptr ? shownData(shoot->name) : shown("Geen shoot geselecteerd"));
    m_client->setVisible(shoot != nullptr && !shoot->client.empty());
    m_shootCount->setVisible(shoot != nullptr);
    if (shoot != nullptr) {
        m_client->setText(shownData(shoot->client));
        m_shootCount->setText(shown("%1 sets").arg(shoot->sets.size()));
    }
    m_deleteShoot->setVisible(shoot != nullptr);
    renderPicker();
}

void ShootBar::renderPicker() {
    const auto& shoots = m_manager.shoots();
    const QSignalBlocker quiet(m_picker);
    while (m_picker->count() > static_cast<int>(shoots.size()))
        m_picker->removeItem(m_picker->count() - 1);
    int current = -1;
    for (std::size_t i = 0; i < shoots.size(); ++i) {
        const auto index = static_cast<int>(i);
        const auto name = shownData(shoots[i].name);
        if (index == m_picker->count())
            m_picker->addItem(name);
        else if (m_picker->itemText(index) != name)
            m_picker->setItemText(index, name);
        if (shoots[i].id == m_manager.activeShootId())
            current = index;
    }
    m_picker->setCurrentIndex(current);
    tellInFull(m_picker, m_picker->currentText());
    m_pickerBox->setVisible(shoots.size() >= 2);
}

} // namespace vantor::ui
