// Sheet: a dialog over one window, which it blocks while it is open. Escape closes it.
//
// - A sheet is made anew at each opening, with fresh values, and deletes itself when it closes.
// - Its contents scroll where there is less room than they need; its row of buttons always stands below them.
// - It is never larger than the free part of its screen. Up to there it grows with what is added to it, unless its user has
//   made it smaller than its contents. It can be made larger as long as something in it can use the room.
// - It opens as large as its user made it last, or else at its first size, and never smaller than its contents.
#pragma once

#include "ui/widgets/widgets.h"

#include <QDialog>
#include <initializer_list>
#include <optional>

class QHBoxLayout;
class QStackedWidget;
class QVBoxLayout;

namespace vantor::ui {

class RecyclingList;
class ScrollPane;

class Sheet : public QDialog {
public:
    void setVisible(bool visible) override;
    void done(int result) override;

protected:
    // `objectName` names it for tests; `title` is its window's title too.
    Sheet(QWidget* over, const char* objectName, const QString& title);

    // How large it is at first; as high as its contents where they need more, and always where no height is given.
    void setFirstSize(int width, int height = 0) { m_first = {width, height}; }

    // The column that everything but the row of buttons stands in.
    [[nodiscard]] QVBoxLayout* column() const { return m_column; }

    // With these at its right.
    void addTitle(const QString& title, std::initializer_list<QWidget*> beside = {});
    // Under the title.
    void addExplanation(const QString& text);
    // A label above its field, both in the column.
    void addField(const QString& label, QWidget* field);
    // A list in its frame, and the text that stands there while the list is empty: the second of both.
    static QStackedWidget* listOrText(RecyclingList* list, TextLabel* text);

    // The row of buttons at the bottom, empty at first.
    [[nodiscard]] QHBoxLayout* buttons() const { return m_buttons; }
    // "Annuleer", which closes, at its left, and at its right the prominent button, if there is one.
    QPushButton* addCancelButton(QWidget* prominent);
    // "Sluiten", for a sheet that keeps what is done in it: at its right, or at its left where there is a prominent button.
    void addCloseButton(QWidget* prominent = nullptr);

    // Says, in the sheet, why it did not do what it was asked to; what was typed stays.
    void tellProblem(const QString& problem);

    // Return in this field presses the button while that is enabled: in the fields of a short form, in a long one's last.
    static void pressOnReturn(QLineEdit* field, QAbstractButton* button);

    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

private:
    [[nodiscard]] int heightForAll(int width) const;
    void allowHeight();
    void openAtFirstSize();
    void showNotices();
    void followContents();

    ScrollPane* m_pane;
    QVBoxLayout* m_column;
    QVBoxLayout* m_heading;
    QHBoxLayout* m_buttons;
    TextLabel* m_problem = nullptr;
    QSize m_first{0, 0};
    // The height that showed all of it when it was last looked at; 0 before it is shown.
    int m_heightForAll = 0;
    // While it gives itself a size, the last one that it did, and the last one that its user did.
    bool m_adjusting = false;
    QSize m_own;
    std::optional<QSize> m_users;
};

// The window that takes what is typed while `window` is open: the sheet or message in front of it, or itself.
[[nodiscard]] QWidget* windowInFrontOf(QWidget* window);

} // namespace vantor::ui
