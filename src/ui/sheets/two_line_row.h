// TwoLineRow: a row of a sheet's list: a headline above a caption, and controls beside them.
//
// Its texts are cut off where there is less room than they need; its controls are not.
#pragma once

#include "ui/widgets/list_row.h"
#include "ui/widgets/widgets.h"

class QHBoxLayout;

namespace vantor::ui {

class TwoLineRow : public ListRow {
public:
    TwoLineRow(const char* name, const char* headlineName, const char* captionName);

    [[nodiscard]] ElidedLabel* headline() const { return m_headline; }
    // May be hidden: the row keeps its height.
    [[nodiscard]] ElidedLabel* caption() const { return m_caption; }

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void addAtLeft(QWidget* control);
    void addAtRight(QWidget* control);

private:
    ElidedLabel* m_headline;
    ElidedLabel* m_caption;
    QHBoxLayout* m_row;
};

} // namespace vantor::ui
