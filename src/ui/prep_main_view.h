// PrepMainView: the main window. Owns the stores for as long as it lives, shows the active shoot and its sets,
// takes what the scanner types, and opens every sheet.
#pragma once

#include "base/signal.h"
#include "store/product_catalog.h"
#include "store/shoot_manager.h"
#include "ui/render_soon.h"
#include "ui/services.h"
#include "ui/set_row.h"
#include "ui/shoot_file_opener.h"

#include <QTimer>
#include <QWidget>
#include <functional>
#include <optional>
#include <string>
#include <vector>

class QComboBox;
class QDialog;
class QLabel;
class QStackedWidget;

namespace vantor::ui {

class RecyclingList;
class ScannerField;
class StatBadge;

class PrepMainView : public QWidget {
public:
    // `onOpenGenerator` shows the QR generator's window.
    PrepMainView(const Services& services, std::function<void()> onOpenGenerator);

    // Adds the shoots of files that the desktop handed over; says so when one is none. Reads them beside the window.
    void openShootFiles(HandedFiles handed);

    [[nodiscard]] ShootManager& manager() { return m_manager; }
    [[nodiscard]] ProductCatalog& catalog() { return m_catalog; }

protected:
    void showEvent(QShowEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* makeHeader();
    QWidget* makeShootBar();
    QWidget* makePicker();
    QWidget* makeCommands();
    QWidget* makeEmptyState();
    QWidget* makeContent();
    QWidget* makeShootLine();
    QWidget* makeSearchLine();
    QWidget* makeScannerLine();
    RecyclingList* makeSetList();
    void makeShortcuts();

    void render();
    void renderHeader(const Shoot* shoot);
    void renderShootBar(const Shoot* shoot);
    void renderPicker();
    void renderShootLine(const Shoot& shoot);
    void renderSets(const Shoot* shoot);
    // Where one starts: at the scanner field, or at "Nieuwe Shoot" while there is no shoot.
    void focusHome();

    [[nodiscard]] const SetData* setAt(int row) const;
    [[nodiscard]] std::optional<int> rowOf(const std::optional<Uuid>& id) const;
    [[nodiscard]] const SetData* setWithId(const Uuid& id) const;

    void handleScan();
    void showScanned(const Uuid& id);
    void exportCSV();
    void exportJSON();
    void exportVantorFile();
    void importVantorFile();
    void showImportError();
    void openManual();
    void openInstalledManual();
    void openDownload();
    void confirmDeleteShoot();
    void openSheet(QDialog* sheet);
    // To where one types next: a sheet that is still open, or else focusHome().
    void returnFocus();

    const Services& m_services;
    std::function<void()> m_onOpenGenerator;
    ShootManager m_manager;
    ProductCatalog m_catalog;
    ShootFileOpener m_opener;
    bool m_importErrorShown = false;
    RenderSoon m_renderSoon;
    std::vector<Subscription> m_subscriptions;
    bool m_loaded = false;
    std::vector<std::size_t> m_filtered;
    // What the list shows now.
    std::optional<Uuid> m_shownShoot;
    QString m_shownSearch;
    std::optional<Uuid> m_litUp;
    QTimer m_litUpTimer;
    SetRow::Actions m_rowActions;

    QPushButton* m_update = nullptr;
    StatBadge* m_badge = nullptr;
    ElidedLabel* m_shootName = nullptr;
    Tag* m_client = nullptr;
    TextLabel* m_shootCount = nullptr;
    QWidget* m_pickerBox = nullptr;
    QComboBox* m_picker = nullptr;
    QPushButton* m_exportCSV = nullptr;
    QPushButton* m_exportJSON = nullptr;
    QPushButton* m_bulkExport = nullptr;
    QPushButton* m_newShoot = nullptr;
    QToolButton* m_deleteShoot = nullptr;
    QStackedWidget* m_stack = nullptr;
    QPushButton* m_newSet = nullptr;
    QPushButton* m_save = nullptr;
    ActiveMarker* m_activeMarker = nullptr;
    ElidedLabel* m_activeText = nullptr;
    QLineEdit* m_search = nullptr;
    QToolButton* m_clearSearch = nullptr;
    TextLabel* m_searchCount = nullptr;
    RecyclingList* m_list = nullptr;
    ScannerField* m_scanner = nullptr;
    QPushButton* m_activate = nullptr;
};

} // namespace vantor::ui
