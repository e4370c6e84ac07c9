// ShootLine: the commands on the active shoot, and which of its sets is the active one.
#pragma once

#include "store/shoot_manager.h"
#include "ui/commands/commands.h"
#include "ui/widgets/widgets.h"

namespace vantor::ui {

class ShootLine : public QWidget {
public:
    explicit ShootLine(Commands& commands);

    // Null when no set of the shoot is the active one.
    void render(const SetData* active);

private:
    ActiveMarker* m_marker;
    ElidedLabel* m_text;
};

} // namespace vantor::ui
