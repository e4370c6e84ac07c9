// FlowLayout: puts its items side by side and goes on below where a line is full, each line aligned to the right.
//
// Lines are as high as their highest item. Hidden items take no room, unless their size policy retains it.
#pragma once

#include <QLayout>
#include <memory>
#include <vector>

namespace vantor::ui {

class FlowLayout : public QLayout {
public:
    explicit FlowLayout(int spacing);
    ~FlowLayout() override;

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
    // Goes through the lines that fit `width`; the result is the height of them all.
    int arrange(const QRect& rect, bool place) const;

    std::vector<std::unique_ptr<QLayoutItem>> m_items;
};

} // namespace vantor::ui
