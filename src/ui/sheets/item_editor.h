// ItemEditor: the lines in which a set's garments are typed, a name and a colour each.
//
// Shared by the set sheets and the QR generator, which differ in widths, texts, and whether the last line can go.
#pragma once

#include "view/item_pairs.h"

#include <QPointer>
#include <QWidget>
#include <functional>

class QLineEdit;
class QPushButton;
class QVBoxLayout;

namespace vantor::ui {

class ItemEditor : public QWidget {
public:
    struct Style {
        QString namePlaceholder;
        int colorWidth;
        // Whether at least one line always stays.
        bool keepsOneLine;
        // Whether Return goes on from field to field, and does what it is for in the last one only.
        bool returnWalks = false;
    };

    // Tab comes to the lines from `before`, and goes on from them to what came after it.
    ItemEditor(Style style, QWidget* before, std::function<void()> onChange);

    // Shows these pairs; the focus stays where it is.
    void setPairs(const ItemPairs& pairs);
    [[nodiscard]] ItemPairs pairs() const;
    // Picks up a garment of the catalogue.
    void addPicked(const std::string& name, const std::string& color);

    [[nodiscard]] QPushButton* addButton() const { return m_addButton; }
    // Goes to the first line, as Tab does.
    void focusFirst();
    // What Return does in a line; nothing unless it is set.
    void setOnReturn(std::function<void()> onReturn) { m_onReturn = std::move(onReturn); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Line {
        QWidget* widget;
        QLineEdit* name;
        QLineEdit* color;
        QWidget* remove;
    };

    void returnIn(const QLineEdit* field);
    void addLine(const ItemPair& pair);
    void removeLine(const QWidget* widget);
    void nameLines();

    Style m_style;
    QWidget* m_before;
    std::function<void()> m_onChange;
    std::function<void()> m_onReturn;
    std::vector<Line> m_lines;
    // The minus button that was pressed last.
    QPointer<QObject> m_pressed;
    QVBoxLayout* m_column;
    QPushButton* m_addButton;
};

} // namespace vantor::ui
