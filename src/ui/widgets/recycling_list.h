// RecyclingList: a list of any length from a small pool of real row widgets.
//
// - All rows are equally high. Only those in sight exist; one that scrolls out of sight is filled anew for a row
//   that comes into it. Assistive technology finds them all (ui/widgets/accessible_list.h).
// - One row is the current one: arrows, Page Up and Down, Home and End move it, a click on a row too. Keys reach
//   the list when the focus is on it or on a button of a row; only the current row's buttons are Tab stops.
// - The current row is known by what it shows, not by its place, and so is what is in sight: both follow it when
//   rows come, go or move.
// - Clicking a row never takes the focus from elsewhere; Tab does. The second click of a double click reaches a
//   row's button only if the row still shows what the first one was for.
#pragma once

#include <QAbstractScrollArea>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantor::ui {

class RecyclingList : public QAbstractScrollArea {
public:
    // What a listener is told of a row.
    struct Told {
        QString name;
        QString more;
    };

    struct Rows {
        // Makes an empty row, of the height that all rows have.
        std::function<QWidget*()> make;
        // Shows the row at this place of the list in it.
        std::function<void(QWidget& row, int place, bool isCurrent)> fill;
        // What tells the row at this place from all others; empty where there is none any more.
        std::function<std::string_view(int place)> key;
        std::function<Told(int place)> tell;
        // The row at this place was made the current one. May be empty, like those below.
        std::function<void(int place)> choose;
        // Return was pressed on the row at this place.
        std::function<void(int place)> activate;
        // Space was pressed.
        std::function<void(int place)> toggle;
        // Delete was pressed.
        std::function<void(int place)> remove;
        // Another row is the current one, or none.
        std::function<void()> currentChanged;
        // The context menu was asked for, at this position on the screen.
        std::function<void(int place, const QPoint& position)> showMenu;
    };

    explicit RecyclingList(Rows rows, QWidget* parent = nullptr);

    // Draws a frame around it.
    void showFrame();
    // Lets the rows reach below the scroll bar: where their contents end before it, these end alike whether it is there or
    // not.
    void layScrollBarOverRows();

    // Shows so many rows, all filled anew. Where the current row is gone, the one that took its place is current.
    void setRowCount(int count);
    // The same after a search: a current row that it hides is none, and current again once it is shown again.
    void showFound(int count);
    // Shows other rows altogether, beginning at one that becomes current, or else at the top.
    void open(int count, std::optional<int> place);
    [[nodiscard]] int rowCount() const { return m_count; }

    [[nodiscard]] std::optional<int> currentRow() const { return m_current; }
    void setCurrentRow(std::optional<int> place);
    void scrollToRow(int place);

    // The widget that shows the row now; null when it is out of sight.
    [[nodiscard]] QWidget* rowWidget(int place) const;
    [[nodiscard]] int rowHeight() const { return m_rowHeight; }
    // Which row the widget is, or is a part of, now.
    [[nodiscard]] std::optional<int> placeOf(const QWidget* within) const;
    // Which row has this key; the place where it was last makes that quick.
    [[nodiscard]] std::optional<int> placeOf(std::string_view key, int last) const;
    [[nodiscard]] const Rows& rows() const { return m_rows; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    enum class Fill { NewRows, AllRows };

    void arrange(Fill fill);
    void fillRow(int place);
    void updateScrollBar();
    QWidget* takeFromPool();
    void setTabStops(QWidget& row, bool isCurrent);
    // Unless it is in the current row, from this row to before that.
    void takeFocusFromRows(int first, int end);
    void makeCurrent(std::optional<int> place);
    void findCurrentAgain();
    void moveCurrent(int by);
    bool actOnCurrent(const std::function<void(int place)>& act);
    void showMenuOfCurrentRow();

    Rows m_rows;
    int m_count = 0;
    int m_rowHeight = 1;
    std::optional<int> m_current;
    // What the current row shows; kept while a search hides it.
    std::string m_currentKey;
    // What stands first in sight.
    std::string m_firstKey;
    // What was pressed last.
    std::string m_pressedKey;
    std::map<int, QWidget*> m_inSight;
    std::vector<QWidget*> m_pool;
};

} // namespace vantor::ui
