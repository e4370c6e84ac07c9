// What stands inside a field: a symbol in front of its text, and small buttons behind it.
#pragma once

#include "ui/frame/theme.h"
#include "ui/widgets/widgets.h"

#include <QHBoxLayout>
#include <QLineEdit>

namespace vantor::ui {

// How far the text of a field with a symbol begins behind where it otherwise would.
inline constexpr int kRoomOfSymbol = theme::kSymbolSize + theme::kStep;

// Within the edge of whatever field, with room around it.
class FieldButton : public SymbolButton {
public:
    FieldButton(const QString& symbol, const QString& help) : SymbolButton(symbol, help) {
        setCursor(Qt::ArrowCursor);
    }

    [[nodiscard]] QSize sizeHint() const override { return {kSize, kSize}; }

private:
    static constexpr int kSize = 3 * theme::kStep;
};

// The symbol is only looked at: clicks on it are the field's. The result is for what is to stand behind the text, for which
// the text's right margin keeps the room.
inline QHBoxLayout* putSymbolInto(QLineEdit& field, const QString& symbol) {
    auto* const label = new SymbolLabel(symbol, theme::kSymbolSize);
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    auto* const parts = new QHBoxLayout(&field);
    parts->setContentsMargins(theme::kPadding - 2, 0, theme::kStep, 0);
    parts->setSpacing(theme::kStep);
    parts->addWidget(label);
    parts->addStretch();
    field.setTextMargins(kRoomOfSymbol, 0, 0, 0);
    return parts;
}

} // namespace vantor::ui
