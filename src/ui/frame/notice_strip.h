// NoticeStrip: the one line over an edge of a window's or sheet's contents that tells what happened.
//
// - Shows what the notices say, but for what was over before its window opened and is no error, while no window over its
//   own has a strip itself. Lies over what is there, moves nothing
//   and never takes the focus; its buttons are reached with Tab, behind what it lies over.
// - To assistive technology it is a notification whose name is its text, told once when it comes.
#pragma once

#include "base/signal.h"
#include "view/notices.h"

#include <QTimer>
#include <QWidget>
#include <vector>

class QHBoxLayout;
class QLabel;
class QPushButton;

namespace vantor::ui {

class ElidedLabel;

class NoticeStrip : public QWidget {
public:
    // In a sheet the upper edge has the title, which its window has as well; the lower one what is pressed next.
    enum class Edge { Top, Bottom };

    // Lies over that edge of `over`, which belongs to the window it is made for. The notices outlive it.
    NoticeStrip(QWidget* over, Notices& notices, Edge edge);

    // Those of a window and of all windows that were opened over it.
    [[nodiscard]] static std::vector<NoticeStrip*> allWithin(const QWidget& window);

    [[nodiscard]] const QString& text() const { return m_shownText; }
    [[nodiscard]] Notices& notices() const { return m_notices; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void render();
    void renderActions(const Notice& notice);
    // In the colours of its kind.
    void dress();
    // Behind the last stop of Tab in what it lies over, whatever has come there since.
    void takeItsPlaceAmongStops();
    void place();
    void waitForItsEnd();
    [[nodiscard]] bool isCovered() const;

    QWidget& m_over;
    Edge m_edge;
    Notices& m_notices;
    // How many notices there were before it.
    std::uint64_t m_since;
    QTimer m_end;
    Notice::Kind m_kind = Notice::Kind::Plain;
    QString m_shownText;
    ElidedLabel* m_text;
    QHBoxLayout* m_row;
    std::vector<QPushButton*> m_actions;
    QWidget* m_dismiss;
    Subscription m_listening;
};

} // namespace vantor::ui
