// ImportSheet: brings sets into the active shoot from CSV.
#pragma once

#include "store/shoot_manager.h"
#include "ui/csv_import_sheet.h"

namespace vantor::ui {

class ImportSheet : public CsvImportSheet {
public:
    ImportSheet(QWidget* over, ShootManager& manager, const Services& services);

protected:
    std::optional<int> importText(std::string_view text) override;

private:
    ShootManager& m_manager;
};

} // namespace vantor::ui
