// StatBadge: a count with its label under it.
#pragma once

#include "ui/widgets/widgets.h"

#include <QWidget>

namespace vantor::ui {

class StatBadge : public QWidget {
public:
    StatBadge(const QString& label, TextColor color, QWidget* parent = nullptr);

    void setValue(const QString& value);

private:
    CountLabel* m_value;
    QString m_label;
};

} // namespace vantor::ui
