// PrepMainView: the main window. Shows the active shoot and its sets, takes what the scanner types, gives the commands
// and opens every sheet. Has the document loaded when it is first shown.
#pragma once

#include "base/signal.h"
#include "store/product_catalog.h"
#include "store/shoot_manager.h"
#include "ui/commands/commands.h"
#include "ui/frame/services.h"
#include "ui/main/set_row.h"
#include "ui/main/shoot_files.h"
#include "ui/widgets/render_soon.h"

#include <QWidget>
#include <functional>
#include <string>
#include <vector>

class QDialog;
class QStackedWidget;

namespace vantor::ui {

class HeaderBar;
class ScannerField;
class ScannerLine;
class SetListView;
class ShootBar;
class ShootLine;

class PrepMainView : public QWidget {
public:
    // `onOpenGenerator` shows the QR generator's window.
    PrepMainView(const Services& services, std::function<void()> onOpenGenerator);

    // Adds the shoots of files that the desktop handed over; says so when one is none. Reads them beside the window.
    void openShootFiles(HandedFiles handed) { m_files.open(std::move(handed)); }

    [[nodiscard]] ShootManager& manager() { return m_manager; }
    [[nodiscard]] ProductCatalog& catalog() { return m_catalog; }

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* makeEmptyState();
    QWidget* makeContent();
    void makeMenuBar(QLayout& layout);
    [[nodiscard]] SetRow::Actions rowActions();
    void bindShootCommands();
    void bindSetCommands();
    void bindEditing();
    void bindWindowCommands();

    void render();
    void updateCommands();
    // Where one starts: at the scanner field, or at "Nieuwe Shoot" while there is no shoot.
    void focusHome();
    // To where one types next: a sheet that is still open, or else focusHome().
    void returnFocus();

    [[nodiscard]] const SetData* setWithId(const Uuid& id) const;
    [[nodiscard]] ScannerField& scanner() const;
    void handleScan(const std::string& text);
    void confirmDeleteShoot();
    void openCatalog();
    void openInstalledManual();
    void openSheet(QDialog* sheet);

    const Services& m_services;
    std::function<void()> m_onOpenGenerator;
    ShootManager m_manager;
    ProductCatalog m_catalog;
    Commands m_commands;
    ShootFiles m_files;
    RenderSoon m_renderSoon;
    std::vector<Subscription> m_subscriptions;
    bool m_loaded = false;

    HeaderBar* m_header;
    ShootBar* m_shootBar;
    QStackedWidget* m_stack;
    ShootLine* m_shootLine = nullptr;
    SetListView* m_sets = nullptr;
    ScannerLine* m_scannerLine = nullptr;
};

} // namespace vantor::ui
