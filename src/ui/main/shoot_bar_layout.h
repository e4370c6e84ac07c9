// ShootBarLayout: puts the parts of the shoot bar into as few rows as they fit.
//
// - In one row stand the title, which gets what is left over, the picker, the commands and, at the right end, what is
//   added last. In less room the commands take a row of their own below the others, or several where one is full: in
//   columns, spread evenly. Where the title would become too narrow, it has the first row for itself.
// - How the rows break does not depend on which parts are shown now, so that none of them jumps as another comes.
#pragma once

#include <QLayout>
#include <memory>
#include <vector>

namespace vantor::ui {

class ShootBarLayout : public QLayout {
public:
    enum class Part { Title, Picker, Command, Last };

    ShootBarLayout();
    ~ShootBarLayout() override;

    void add(QWidget* widget, Part part);

    void addItem(QLayoutItem* item) override;
    [[nodiscard]] int count() const override;
    [[nodiscard]] QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSize() const override;
    void setGeometry(const QRect& rect) override;

private:
    struct Item {
        Part part;
        std::unique_ptr<QLayoutItem> item;
    };
    using Row = std::vector<const Item*>;

    // In the order in which they were added.
    [[nodiscard]] Row itemsOf(std::initializer_list<Part> parts) const;
    [[nodiscard]] static int widthOf(const Row& row);
    // As wide as the widest command in each, as many columns as fit.
    [[nodiscard]] std::vector<int> columnsWithin(int width) const;

    // Goes through the rows within `rect`; the result is the height of them all.
    int arrange(const QRect& rect, bool place) const;
    int arrangeCommands(const QRect& rect, bool place) const;
    // Places what is shown of the row at the right end of `rect`; the result is where it begins.
    static int placeAtRight(const Row& row, const QRect& rect);

    std::vector<Item> m_items;
};

} // namespace vantor::ui
