// What the main window's commands do.

#include "ui/commands/editing.h"
#include "ui/frame/confirmation.h"
#include "ui/main/prep_main_view.h"
#include "ui/main/scanner_field.h"
#include "ui/main/set_list_view.h"
#include "ui/sheets/bulk_qr_export_sheet.h"
#include "ui/sheets/catalog_sheet.h"
#include "ui/sheets/clients_sheet.h"
#include "ui/sheets/import_sheet.h"
#include "ui/sheets/new_shoot_sheet.h"
#include "ui/sheets/qr_sheet.h"
#include "ui/sheets/set_sheet.h"
#include "ui/sheets/shortcuts_sheet.h"
#include "ui/sheets/versions_sheet.h"
#include "ui/widgets/text.h"
#include "view/brand_choice.h"
#include "view/new_shoot_draft.h"

#include <QApplication>

namespace vantor::ui {

using enum CommandId;

SetRow::Actions PrepMainView::rowActions() {
    return {
        [this](const Uuid& id) { m_manager.activateSet(id); },
        [this](const Uuid& id) {
            if (const auto* const set = setWithId(id))
                openSheet(new SetSheet(this, m_manager, m_catalog, m_services, *set));
        },
        [this](const Uuid& id) {
            if (const auto* const set = setWithId(id))
                openSheet(new QRSheet(this, *set, m_services));
        },
        [this](const Uuid& id) { m_manager.deleteSet(id); },
    };
}

void PrepMainView::bindShootCommands() {
    m_commands.bind(NewShoot,
                    [this] { openSheet(new NewShootSheet(this, m_manager, m_catalog, m_services)); });
    m_commands.bind(NewSet, [this] { openSheet(new SetSheet(this, m_manager, m_catalog, m_services)); });
    m_commands.bind(Open, [this] { m_files.importVantorFile(); });
    m_commands.bind(Save, [this] { m_files.exportVantorFile(); });
    m_commands.bind(ImportCsv, [this] { openSheet(new ImportSheet(this, m_manager, m_services)); });
    m_commands.bind(ExportCsv, [this] { m_files.exportCSV(); });
    m_commands.bind(ExportJson, [this] { m_files.exportJSON(); });
    m_commands.bind(BulkExport, [this] {
        if (const auto* const shoot = m_manager.activeShoot())
            openSheet(new BulkQRExportSheet(this, shoot->sets, shoot->name, m_services));
    });
    m_commands.bind(Versions, [this] { openSheet(new VersionsSheet(this, m_services)); });
    m_commands.bind(DeleteShoot, [this] { confirmDeleteShoot(); });
    m_commands.bind(Clients,
                    [this] { openSheet(new ClientsSheet(this, m_catalog, clientsOf(m_manager.shoots()))); });
    m_commands.bind(Catalog, [this] { openCatalog(); });
}

void PrepMainView::openCatalog() {
    const auto* const shoot = m_manager.activeShoot();
    const auto brand = shoot != nullptr ? brandOfClient(m_catalog, shoot->client) : std::string();
    openSheet(new CatalogSheet(this, m_catalog, brand, m_services));
}

void PrepMainView::bindSetCommands() {
    const auto onCurrent = [this](CommandId id, auto act) {
        m_commands.bind(id, [this, act] {
            if (const auto* const set = m_sets->currentSet())
                act(*set);
        });
    };
    onCurrent(EditSet, [actions = rowActions()](const SetData& set) { actions.onEdit(set.id); });
    onCurrent(ShowCode, [actions = rowActions()](const SetData& set) { actions.onQR(set.id); });
    onCurrent(ActivateSet,
              [actions = rowActions()](const SetData& set) { actions.onActivate(Uuid(set.id)); });
    onCurrent(DeleteSet, [this](const SetData&) { m_sets->askToDeleteCurrent(); });
    m_commands.bind(Search, [this] { m_sets->startSearch(); });
    m_commands.bind(CommandId::ScannerField, [this] { scanner().setFocus(); });
}

void PrepMainView::bindEditing() {
    m_commands.bind(Undo, [this] {
        if (!undoTyping())
            m_services.document.undo();
    });
    m_commands.bind(Redo, [this] {
        if (!redoTyping())
            m_services.document.redo();
    });
    m_commands.bind(Cut, [] { giveToField(TextCommand::Cut); });
    m_commands.bind(Copy, [] { giveToField(TextCommand::Copy); });
    m_commands.bind(Paste, [] { giveToField(TextCommand::Paste); });
    m_commands.bind(SelectAll, [] { giveToField(TextCommand::SelectAll); });
}

void PrepMainView::bindWindowCommands() {
    m_commands.bind(Generator, [this] { m_onOpenGenerator(); });
    m_commands.bind(FullScreen, [this] { setWindowState(windowState() ^ Qt::WindowFullScreen); });
    m_commands.bind(Manual, [this] { openInstalledManual(); });
    m_commands.bind(OnlineManual, [this] { m_services.urls.open(m_services.manualPage); });
    m_commands.bind(Shortcuts, [this] { openSheet(new ShortcutsSheet(this)); });
    m_commands.bind(About, [this] {
        showAlert(this, shown("Vantor Prep v%1").arg(qstring(m_services.updates.currentVersion())),
                  shown("Bereidt shoots, sets en QR-kaarten voor. MIT-licentie."), [this] { returnFocus(); });
    });
    m_commands.bind(CloseWindow, [this] { close(); });
    m_commands.bind(Quit, [] { QApplication::closeAllWindows(); });
}

// Needs no network.
void PrepMainView::openInstalledManual() {
    if (m_services.installedManual.empty())
        m_services.urls.open(m_services.manualPage);
    else
        m_services.urls.openPage(m_services.installedManual);
}

} // namespace vantor::ui
