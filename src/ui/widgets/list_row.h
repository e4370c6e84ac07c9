// ListRow: the ground of every row of a RecyclingList: a hairline below, a soft light under the mouse, a frame
// around the current row while the list has the focus, a tint and an edge of the active one, and a moment's glow.
// None of them moves anything.
#pragma once

#include <QTimer>
#include <QWidget>

namespace vantor::ui {

class ListRow : public QWidget {
public:
    explicit ListRow(QWidget* parent = nullptr);

    void setCurrent(bool current);
    void setActive(bool active);
    // Glows for a moment; a row that is filled anew for something else is to be told false.
    void setLitUp(bool litUp);

    // Whether it is hovered or the current one: what can be done with it then stands out.
    [[nodiscard]] bool isLit() const { return m_hovered || m_current; }

    [[nodiscard]] QSize sizeHint() const override;

protected:
    // The list that it is a row of, if it is of one yet.
    [[nodiscard]] QWidget* list() const;

    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    [[nodiscard]] QColor ground() const;

    bool m_current = false;
    bool m_active = false;
    bool m_hovered = false;
    bool m_litUp = false;
};

} // namespace vantor::ui
