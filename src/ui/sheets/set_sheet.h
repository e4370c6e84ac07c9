// SetSheet: makes a set in the shoot that is active as it opens, or changes one; both with the same form.
//
// Where that shoot or set is gone by the time that it is confirmed, the sheet says so and keeps what was typed.
#pragma once

#include "store/product_catalog.h"
#include "store/shoot_manager.h"
#include "ui/frame/services.h"
#include "ui/sheets/sheet.h"
#include "view/set_draft.h"

#include <optional>

namespace vantor::ui {

class ItemEditor;

class SetSheet : public Sheet {
public:
    // A new set.
    SetSheet(QWidget* over, ShootManager& manager, const ProductCatalog& catalog, const Services& services);
    // A change of this set.
    SetSheet(QWidget* over, ShootManager& manager, const ProductCatalog& catalog, const Services& services,
             SetData edited);

private:
    SetSheet(QWidget* over, ShootManager& manager, const ProductCatalog& catalog, const Services& services,
             std::optional<SetData> edited, const QString& title);

    void makeForm(const ProductCatalog& catalog);
    [[nodiscard]] SetDraft draft() const;
    void render();
    void confirm();

    ShootManager& m_manager;
    const Services& m_services;
    std::optional<SetData> m_edited;
    std::optional<Uuid> m_shootId;
    QLineEdit* m_setNumber = nullptr;
    QLineEdit* m_brand = nullptr;
    QLineEdit* m_model = nullptr;
    QLineEdit* m_location = nullptr;
    QLineEdit* m_email = nullptr;
    ItemEditor* m_items = nullptr;
    QPushButton* m_confirm = nullptr;
};

} // namespace vantor::ui
