// BulkQRExportSheet: chooses which sets of the shoot get a printed card, and where the PDF goes.
#pragma once

#include "ui/frame/services.h"
#include "ui/sheets/sheet.h"
#include "view/bulk_export_selection.h"

#include <filesystem>
#include <memory>
#include <string>

class QProgressDialog;

namespace vantor::ui {

class RecyclingList;

class BulkQRExportSheet : public Sheet {
public:
    // Works on copies: what happens to the shoot meanwhile does not matter.
    BulkQRExportSheet(QWidget* over, SetList sets, std::string shootName, const Services& services);

    // While an export runs, closing gives it up and leaves the sheet open.
    void reject() override;

private:
    struct Running;

    QWidget* makeDensityPicker();
    RecyclingList* makeList();
    void render();
    void exportPDF();
    void runExport(const std::filesystem::path& path);
    QProgressDialog* makeProgress(int cards);

    const Services& m_services;
    BulkExportSelection m_selection;
    std::string m_shootName;
    std::shared_ptr<Running> m_running;
    QPushButton* m_selectAll;
    TextLabel* m_count;
    RecyclingList* m_list;
    QPushButton* m_export;
};

} // namespace vantor::ui
