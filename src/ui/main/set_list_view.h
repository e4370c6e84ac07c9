// SetListView: the search line and the list of the active shoot's sets, or why there is nothing in it.
//
// The list follows sets, not places; a shoot opens at its active set, or at its top.
#pragma once

#include "store/shoot_manager.h"
#include "ui/commands/commands.h"
#include "ui/main/set_row.h"
#include "ui/widgets/widgets.h"

#include <QTimer>
#include <functional>
#include <optional>
#include <vector>

class QStackedWidget;

namespace vantor::ui {

class EmptyState;
class RecyclingList;

class SetListView : public QWidget {
public:
    // `onChange` hears when what is shown is to be rendered anew, `onCurrentChange` when another row is current.
    SetListView(ShootManager& manager, Commands& commands, SetRow::Actions actions,
                std::function<void()> onChange, std::function<void()> onCurrentChange);

    // Shows the active shoot's sets that the search finds.
    void render();

    // Scrolls to the set, out of the search where that hides it, and lights it up for a moment.
    void showScanned(const Uuid& id);

    // The set of the current row; null when there is none. Good until the next change.
    [[nodiscard]] const SetData* currentSet() const;
    void askToDeleteCurrent();

    void startSearch();
    [[nodiscard]] RecyclingList& list() const { return *m_list; }

private:
    QWidget* makeSearchLine();
    RecyclingList* makeList();
    void makeEmptyStates(Commands& commands);
    void clearSearch();
    // The list, or what stands in its place.
    void renderPage(bool hasSets);
    [[nodiscard]] const SetData* setAt(int row) const;
    [[nodiscard]] std::optional<int> rowOf(const std::optional<Uuid>& id) const;

    ShootManager& m_manager;
    SetRow::Actions m_actions;
    std::function<void()> m_onChange;
    std::function<void()> m_onCurrentChange;
    std::vector<std::size_t> m_filtered;
    // What the list shows now.
    std::optional<Uuid> m_shownShoot;
    QString m_shownSearch;
    std::optional<Uuid> m_litUp;
    QTimer m_litUpTimer;
    QLineEdit* m_search = nullptr;
    QToolButton* m_clearSearch = nullptr;
    CountLabel* m_searchCount = nullptr;
    QStackedWidget* m_pages = nullptr;
    RecyclingList* m_list = nullptr;
    EmptyState* m_noSets = nullptr;
    EmptyState* m_noHits = nullptr;
};

} // namespace vantor::ui
