// ShootBar: the active shoot's name, client and count, the picker of shoots, and the window's commands as buttons. Tab
// walks them in this order, whatever rows they stand in.
#pragma once

#include "store/shoot_manager.h"
#include "ui/commands/commands.h"
#include "ui/widgets/widgets.h"

class QComboBox;

namespace vantor::ui {

class ShootBar : public QWidget {
public:
    ShootBar(ShootManager& manager, Commands& commands);

    void render();

    // Where one starts while there is no shoot.
    [[nodiscard]] QPushButton& newShootButton() const { return *m_newShoot; }

private:
    QWidget* makeTitle();
    QWidget* makePicker();
    void renderPicker();

    ShootManager& m_manager;
    ElidedLabel* m_shootName = nullptr;
    Tag* m_client = nullptr;
    CountLabel* m_shootCount = nullptr;
    QWidget* m_pickerBox = nullptr;
    QComboBox* m_picker = nullptr;
    QPushButton* m_newShoot = nullptr;
    QToolButton* m_deleteShoot = nullptr;
};

} // namespace vantor::ui
