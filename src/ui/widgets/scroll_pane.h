// ScrollPane: a column of widgets that scrolls where there is less room than it needs, and only there.
//
// - Its contents are as wide as the pane, and as high as they need at that width. In a higher pane they take the whole
//   height where something in them can grow, and otherwise stand at its top.
// - What gets the focus, or moves while it has it, is scrolled into sight.
#pragma once

#include <QScrollArea>

namespace vantor::ui {

class ScrollPane : public QScrollArea {
public:
    explicit ScrollPane(const char* objectName);
    ~ScrollPane() override;
    ScrollPane(const ScrollPane&) = delete;
    ScrollPane& operator=(const ScrollPane&) = delete;

    // What the column's layout is to be set on.
    [[nodiscard]] QWidget* contents() const { return m_contents; }

    // Whether a higher pane gives its contents more than they need.
    [[nodiscard]] bool canGrow() const;
    // How high it has to be, at this width, to show everything without scrolling.
    [[nodiscard]] int heightForAll(int width) const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void arrange();
    void showFocused();

    QWidget* m_contents;
};

} // namespace vantor::ui
