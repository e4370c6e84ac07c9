// RecyclingList: a list of any length from a small pool of real row widgets.
//
// - All rows are equally high. Only those in sight exist; one that scrolls out of sight is filled anew for a row
//   that comes into it. Rows are children of the list, so that assistive technology can walk them.
// - One row is the current one: arrows, Page Up and Down, Home and End move it, a click on a row too. Keys reach
//   the list when the focus is on it or on a button of a row; only the current row's buttons are Tab stops.
// - Clicking a row never takes the focus from elsewhere; Tab does.
#pragma once

#include <QAbstractScrollArea>
#include <functional>
#include <map>
#include <optional>
#include <vector>

namespace vantor::ui {

class RecyclingList : public QAbstractScrollArea {
public:
    struct Rows {
        // Makes an empty row, of the height that all rows have.
        std::function<QWidget*()> make;
        // Shows the row at this place of the list in it.
        std::function<void(QWidget& row, int place, bool isCurrent)> fill;
        // Return was pressed on the row at this place. May be empty, like those below.
        std::function<void(int place)> activate;
        // Delete was pressed.
        std::function<void(int place)> remove;
        // The context menu was asked for, at this position on the screen.
        std::function<void(int place, const QPoint& position)> showMenu;
    };

    explicit RecyclingList(Rows rows, QWidget* parent = nullptr);

    // Shows so many rows, all filled anew. The current row and the place stay as far as they still exist.
    void setRowCount(int count);
    [[nodiscard]] int rowCount() const { return m_count; }
    void refresh() { setRowCount(m_count); }

    [[nodiscard]] std::optional<int> currentRow() const { return m_current; }
    void setCurrentRow(std::optional<int> place);
    void scrollToRow(int place);

    // The widget that shows the row now; null when it is out of sight.
    [[nodiscard]] QWidget* rowWidget(int place) const;
    [[nodiscard]] int rowHeight() const { return m_rowHeight; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void arrange(bool fillAll);
    void updateScrollBar();
    QWidget* takeFromPool();
    void setTabStops(QWidget& row, bool isCurrent);
    [[nodiscard]] std::optional<int> placeOf(const QWidget* within) const;
    void moveCurrent(int by);
    void showMenuOfCurrentRow();

    Rows m_rows;
    int m_count = 0;
    int m_rowHeight = 1;
    std::optional<int> m_current;
    std::map<int, QWidget*> m_inSight;
    std::vector<QWidget*> m_pool;
};

} // namespace vantor::ui
