// HeaderBar: the main window's header: the logo, the program's name and version, the update notice and the count of sets.
#pragma once

#include "ui/frame/services.h"
#include "ui/widgets/widgets.h"

#include <cstddef>

namespace vantor::ui {

class StatBadge;

class HeaderBar : public QWidget {
public:
    explicit HeaderBar(const Services& services);

    // Shows what is known of a newer version, and how many sets the active shoot has.
    void render(std::size_t sets);

private:
    const Services& m_services;
    QPushButton* m_update;
    StatBadge* m_badge;
};

} // namespace vantor::ui
