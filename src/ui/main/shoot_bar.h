// ShootBar: the active shoot's name, client and count, the picker of shoots, and the window's commands as buttons.
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
    QWidget* makePicker();
    QWidget* makeCommands(Commands& commands);
    void renderPicker();

    ShootManager& m_manager;
    ElidedLabel* m_shootName;
    Tag* m_client;
    TextLabel* m_shootCount;
    QWidget* m_pickerBox = nullptr;
    QComboBox* m_picker = nullptr;
    QPushButton* m_newShoot = nullptr;
    QToolButton* m_deleteShoot = nullptr;
};

} // namespace vantor::ui
