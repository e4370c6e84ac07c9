// ImportSheet: brings sets from CSV into the shoot that is active as it opens, or else into the one that is active when they
// are to be imported. Says so where that shoot is gone by then.
#pragma once

#include "store/shoot_manager.h"
#include "ui/sheets/csv_import_sheet.h"

namespace vantor::ui {

class ImportSheet : public CsvImportSheet {
public:
    ImportSheet(QWidget* over, ShootManager& manager, const Services& services);

protected:
    [[nodiscard]] Reader reader() override;

private:
    ShootManager& m_manager;
    Clock m_clock;
    std::optional<Uuid> m_shootId;
};

} // namespace vantor::ui
