// SetRow: one set of the active shoot in the main window's list, with the actions on it.
//
// Holds nothing but what it shows; every action is handed back through the callbacks it was made with, with the
// set's id.
#pragma once

#include "model/shoot.h"
#include "ui/widgets/list_row.h"
#include "ui/widgets/widgets.h"

#include <QMenu>
#include <functional>
#include <optional>

namespace vantor::ui {

class SetRow : public ListRow {
public:
    struct Actions {
        std::function<void(const Uuid&)> onActivate;
        std::function<void(const Uuid&)> onEdit;
        std::function<void(const Uuid&)> onQR;
        // Deletes, once the user has confirmed it.
        std::function<void(const Uuid&)> onDelete;
    };

    explicit SetRow(const Actions& actions);

    void show(const SetData& set, bool isActive);
    using QWidget::show;

    // What a listener is told of the row.
    [[nodiscard]] static QString name(const SetData& set, bool isActive);

    // Asks whether to delete the set, and does.
    void askToDelete();
    void openMenu(const QPoint& position);

private:
    void buildMenu(QMenu& menu);

    const Actions& m_actions;
    // What it shows.
    std::optional<SetData> m_shown;
    bool m_showsActive = false;
    Uuid m_id;
    QString m_headline;
    ActiveMarker* m_marker;
    ElidedLabel* m_headlineLabel;
    ElidedLabel* m_description;
    CountLabel* m_count;
    QToolButton* m_qr;
    QToolButton* m_edit;
    QToolButton* m_delete;
    QPushButton* m_activate;
    Tag* m_active;
};

} // namespace vantor::ui
