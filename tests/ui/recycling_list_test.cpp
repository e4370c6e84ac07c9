#include "tests/ui/ui_fixture.h"

#include <QAccessible>
#include <QContextMenuEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>
#include <deque>
#include <set>

namespace vantor::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

constexpr int kRowHeight = 40;

// A row with its number and two buttons.
class NumberRow : public QWidget {
public:
    NumberRow() : m_label(new QLabel), first(new QPushButton("een")), second(new QPushButton("twee")) {
        auto* const row = new QHBoxLayout(this);
        row->setContentsMargins(0, 0, 0, 0);
        row->addWidget(m_label);
        row->addWidget(first);
        row->addWidget(second);
    }
    void show(int place, bool isCurrent) {
        m_label->setText(QString::number(place));
        current = isCurrent;
    }
    using QWidget::show;
    [[nodiscard]] int number() const { return m_label->text().toInt(); }
    [[nodiscard]] QSize sizeHint() const override { return {200, kRowHeight}; }

private:
    QLabel* m_label;

public:
    QPushButton* first;
    QPushButton* second;
    bool current = false;
    bool painted = false;

protected:
    void paintEvent(QPaintEvent*) override { painted = true; }
};

class List : public ::testing::Test {
protected:
    List() : m_list(rows()) {
        for (int i = 0; i < 10'000; ++i)
            m_keys.push_back(std::to_string(i));
        auto* const column = new QVBoxLayout(&m_window);
        m_before.setText(QStringLiteral("ervoor"));
        m_after.setText(QStringLiteral("erna"));
        column->addWidget(&m_before);
        column->addWidget(&m_list);
        column->addWidget(&m_after);
        m_window.resize(400, 500);
        m_window.show();
        m_window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&m_window));
        settle();
    }
    ~List() override {
        for (auto* const widget : std::initializer_list<QWidget*>{&m_before, &m_list, &m_after})
            widget->setParent(nullptr);
    }

    ui::RecyclingList::Rows rows() {
        ui::RecyclingList::Rows rows;
        rows.make = [this] {
            ++m_made;
            auto* const made = new NumberRow;
            QObject::connect(made->first, &QPushButton::clicked,
                             [this, made] { m_pressed.push_back(key(made->number())); });
            return made;
        };
        rows.fill = [this](QWidget& row, int place, bool isCurrent) {
            ++m_filled;
            static_cast<NumberRow&>(row).show(place, isCurrent);
        };
        rows.key = [this](int place) { return std::string_view(key(place)); };
        rows.tell = [this](int place) {
            ++m_told;
            return ui::RecyclingList::Told{QString::fromStdString(key(place)), {}};
        };
        rows.activate = [this](int place) { m_asked.emplace_back("activate", place); };
        rows.toggle = [this](int place) { m_asked.emplace_back("toggle", place); };
        rows.remove = [this](int place) { m_asked.emplace_back("remove", place); };
        rows.showMenu = [this](int place, const QPoint&) { m_asked.emplace_back("menu", place); };
        return rows;
    }

    [[nodiscard]] NumberRow* row(int place) const { return static_cast<NumberRow*>(m_list.rowWidget(place)); }
    [[nodiscard]] std::vector<NumberRow*> shownRows() const {
        std::vector<NumberRow*> shown;
        for (auto* const child : m_list.viewport()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
            if (child->isVisible())
                shown.push_back(static_cast<NumberRow*>(child));
        }
        std::ranges::sort(shown, {}, [](const NumberRow* shownRow) { return shownRow->y(); });
        return shown;
    }
    // Each row in sight stands where its number says, without a gap, and only the current one is shown as it.
    void expectRowsInPlace() const {
        const int offset = m_list.verticalScrollBar()->value();
        int bottom = 0;
        for (const auto* const shown : shownRows()) {
            EXPECT_EQ(shown->y(), shown->number() * kRowHeight - offset);
            EXPECT_EQ(shown->width(), m_list.viewport()->width());
            EXPECT_EQ(shown->height(), kRowHeight);
            EXPECT_EQ(shown->current, m_list.currentRow() == shown->number()) << shown->number();
            bottom = std::max(bottom, shown->y() + kRowHeight);
        }
        EXPECT_GE(bottom, std::min(m_list.viewport()->height(), m_list.rowCount() * kRowHeight - offset));
    }

    [[nodiscard]] const std::string& key(int place) const {
        return m_keys.at(static_cast<std::size_t>(place));
    }
    [[nodiscard]] std::string currentKey() const {
        return m_list.currentRow() ? key(*m_list.currentRow()) : "";
    }

    // What each row shows: its number, unless a test says otherwise.
    std::deque<std::string> m_keys;
    int m_made = 0;
    int m_filled = 0;
    int m_told = 0;
    std::vector<std::string> m_pressed;
    std::vector<std::pair<std::string, int>> m_asked;
    QWidget m_window;
    QLineEdit m_before;
    ui::RecyclingList m_list;
    QLineEdit m_after;
};

TEST_F(List, ShowsTenThousandRowsWithAHandful) {
    m_list.setRowCount(10'000);
    const int inSight = m_list.viewport()->height() / kRowHeight + 2;
    EXPECT_LE(m_made, inSight);
    auto* const bar = m_list.verticalScrollBar();
    EXPECT_EQ(bar->maximum(), 10'000 * kRowHeight - m_list.viewport()->height());
    for (int value = 0; value <= bar->maximum(); value += 997) {
        bar->setValue(value);
        ASSERT_LE(static_cast<int>(shownRows().size()), inSight);
    }
    expectRowsInPlace();
    bar->setValue(bar->maximum());
    expectRowsInPlace();
    EXPECT_EQ(shownRows().back()->number(), 9'999);
    EXPECT_LE(m_made, inSight);
}

TEST_F(List, ShowsAsManyRowsAsThereAreAndFit) {
    m_list.setRowCount(1000);
    m_list.verticalScrollBar()->setValue(m_list.verticalScrollBar()->maximum());
    for (const auto size : {QSize(700, 900), QSize(400, 500)}) {
        m_window.resize(size);
        for (const int count : {1000, 20, 3, 0}) {
            SCOPED_TRACE(std::to_string(size.height()) + " high with " + std::to_string(count) + " rows");
            m_list.setRowCount(count);
            settle();
            expectRowsInPlace();
            EXPECT_EQ(shownRows().empty(), count == 0);
            EXPECT_EQ(m_list.rowWidget(count), nullptr);
            if (count > 0) {
                m_list.scrollToRow(count - 1);
                EXPECT_EQ(shownRows().back()->number(), count - 1);
            }
            if (count <= 3) {
                EXPECT_EQ(m_list.verticalScrollBar()->maximum(), 0);
            }
        }
    }
}

TEST_F(List, ScrollsNoFurtherThanItTakesToShowARow) {
    m_list.setRowCount(1000);
    m_list.setCurrentRow(499);
    m_list.scrollToRow(500);
    ASSERT_NE(row(500), nullptr);
    EXPECT_TRUE(m_list.viewport()->rect().contains(row(500)->geometry()));
    const int value = m_list.verticalScrollBar()->value();
    for (const int place : {499, 0}) {
        m_list.scrollToRow(place);
        EXPECT_EQ(m_list.verticalScrollBar()->value(), place == 0 ? 0 : value);
        expectRowsInPlace();
    }
}

TEST_F(List, KeysMoveTheCurrentRow) {
    m_list.setRowCount(10'000);
    m_list.setFocus();
    EXPECT_EQ(m_list.currentRow(), 0);
    const int page = m_list.viewport()->height() / kRowHeight;
    struct Step {
        Qt::Key key;
        int leads;
    };
    for (const auto& [key, leads] :
         {Step{Qt::Key_Down, 1}, Step{Qt::Key_End, 9'999}, Step{Qt::Key_Down, 9'999},
          Step{Qt::Key_PageUp, 9'999 - page}, Step{Qt::Key_Home, 0}, Step{Qt::Key_Up, 0},
          Step{Qt::Key_PageDown, page}, Step{Qt::Key_PageDown, 2 * page}}) {
        SCOPED_TRACE(QKeySequence(key).toString().toStdString() + " to " + std::to_string(leads));
        m_filled = 0;
        press(key);
        EXPECT_EQ(m_list.currentRow(), leads);
        ASSERT_NE(row(leads), nullptr);
        EXPECT_TRUE(row(leads)->current);
        EXPECT_TRUE(m_list.viewport()->rect().contains(row(leads)->geometry()));
        if (leads == 1) {
            EXPECT_EQ(m_filled, 2) << "rows are filled, and told of, that did not change";
        }
    }
    for (const auto key : {Qt::Key_Return, Qt::Key_Space, Qt::Key_Delete})
        press(key);
    m_list.setRowCount(0);
    for (const auto key : {Qt::Key_Down, Qt::Key_End, Qt::Key_Return, Qt::Key_Delete})
        press(key);
    EXPECT_EQ(m_list.currentRow(), std::nullopt);
    EXPECT_THAT(m_asked,
                ElementsAre(Pair("activate", 2 * page), Pair("toggle", 2 * page), Pair("remove", 2 * page)))
        << "nothing that is not there";
}

TEST_F(List, TabWalksOnlyTheCurrentRowsButtons) {
    m_list.setRowCount(100);
    m_before.setFocus();
    for (const auto key : {Qt::Key_Tab, Qt::Key_Down, Qt::Key_Down})
        press(key);
    for (const QWidget* const next :
         std::initializer_list<QWidget*>{&m_list, row(2)->first, row(2)->second, &m_after}) {
        EXPECT_EQ(QApplication::focusWidget(), next);
        press(Qt::Key_Tab);
    }
    m_after.setFocus();
    press(Qt::Key_Backtab);
    EXPECT_EQ(QApplication::focusWidget(), row(2)->second);
    // Arrows on a button go on to the next row.
    press(Qt::Key_Down);
    EXPECT_EQ(m_list.currentRow(), 3);
    EXPECT_EQ(QApplication::focusWidget(), &m_list);
    EXPECT_THAT(m_asked, IsEmpty());
}

TEST_F(List, FocusDoesNotTravelWithARowThatIsUsedAgain) {
    m_list.setRowCount(10'000);
    m_list.setFocus();
    press(Qt::Key_Tab);
    auto* const focused = QApplication::focusWidget();
    ASSERT_EQ(focused, row(0)->first);
    m_list.verticalScrollBar()->setValue(5'000);
    EXPECT_EQ(row(0), nullptr);
    EXPECT_EQ(QApplication::focusWidget(), &m_list);
    m_list.verticalScrollBar()->setValue(9'000);
    EXPECT_EQ(QApplication::focusWidget(), &m_list);
    expectRowsInPlace();
    const auto inSight = shownRows();
    std::set<const NumberRow*> unused(inSight.begin(), inSight.end());
    for (int place = 9'000 / kRowHeight; row(place) != nullptr; ++place)
        EXPECT_EQ(unused.erase(row(place)), 1U) << "a row is used twice";
    EXPECT_THAT(unused, IsEmpty());
    for (const auto* const shown : shownRows())
        EXPECT_FALSE(shown->isAncestorOf(QApplication::focusWidget()));
    // The keys still move the row that was current.
    press(Qt::Key_Down);
    EXPECT_EQ(m_list.currentRow(), 1);
    ASSERT_NE(row(1), nullptr);
}

TEST_F(List, FocusGoesToTheListWhenItsRowIsGone) {
    m_list.setRowCount(100);
    m_list.setFocus();
    press(Qt::Key_PageDown);
    press(Qt::Key_Tab);
    m_list.setRowCount(1);
    EXPECT_EQ(QApplication::focusWidget(), &m_list);
    EXPECT_EQ(m_list.currentRow(), 0) << "the one before it";
    m_before.setFocus();
    m_list.setRowCount(0);
    EXPECT_EQ(m_list.currentRow(), std::nullopt);
    EXPECT_EQ(QApplication::focusWidget(), &m_before) << "elsewhere it is left alone";
}

TEST_F(List, TheMarkOfTheCurrentRowGoesWithTheFocus) {
    m_list.setRowCount(3);
    m_list.setCurrentRow(1);
    m_list.setFocus();
    settle();
    // From here on nothing is left to paint.
    m_window.repaint();
    row(1)->painted = false;
    m_after.setFocus();
    EXPECT_TRUE(runUntil([&] { return row(1)->painted; }));
}

TEST_F(List, ClickMakesARowCurrentAndLeavesTheFocus) {
    m_list.setRowCount(100);
    m_before.setFocus();
    for (const int place : {4, 5}) {
        auto* const clicked = place == 4 ? static_cast<QWidget*>(row(4)) : row(5)->first;
        QTest::mouseClick(clicked, Qt::LeftButton, {}, QPoint(3, 3));
        EXPECT_EQ(m_list.currentRow(), place);
        EXPECT_EQ(QApplication::focusWidget(), &m_before);
    }
}

TEST_F(List, FollowsWhatItsRowsShow) {
    m_list.setRowCount(100);
    m_list.scrollToRow(60);
    m_list.setCurrentRow(58);
    const int top = row(58)->y();
    m_keys.insert(m_keys.begin(), {"a", "b"});
    m_list.setRowCount(102);
    EXPECT_EQ(m_list.currentRow(), 60);
    EXPECT_EQ(row(60)->y(), top);
    // Out of sight, it is what stands first in sight that stays.
    m_list.setCurrentRow(3);
    const auto first = shownRows().front()->number();
    m_keys.pop_front();
    m_list.setRowCount(101);
    EXPECT_EQ(currentKey(), "1");
    EXPECT_EQ(shownRows().front()->number(), first - 1);
    // The next one takes the place of one that is gone.
    m_keys.erase(m_keys.begin() + 2);
    m_list.setRowCount(100);
    EXPECT_EQ(currentKey(), "2");
    expectRowsInPlace();
    // Keys act on what is current before a change is shown.
    m_keys.push_front("c");
    QTest::keyClick(&m_list, Qt::Key_Return);
    EXPECT_THAT(m_asked, ElementsAre(Pair("activate", 3)));
}

TEST_F(List, ASearchHidesTheCurrentRowAndShowsItAgain) {
    m_list.setRowCount(1000);
    m_list.scrollToRow(500);
    m_list.setCurrentRow(500);
    const auto all = m_keys;
    m_keys = {"7", "8", "9"};
    m_list.showFound(3);
    EXPECT_EQ(m_list.currentRow(), std::nullopt);
    m_keys = all;
    m_list.showFound(1000);
    EXPECT_EQ(m_list.currentRow(), 500);
    EXPECT_NE(row(500), nullptr);
    m_list.open(900, std::nullopt);
    EXPECT_EQ(m_list.currentRow(), std::nullopt);
    EXPECT_EQ(m_list.verticalScrollBar()->value(), 0);
    m_list.open(900, 700);
    EXPECT_EQ(m_list.currentRow(), 700);
    EXPECT_TRUE(m_list.viewport()->rect().contains(row(700)->geometry()));
}

TEST_F(List, ADoubleClickMeansOneRowOnly) {
    m_list.setRowCount(100);
    const auto at = row(4)->first->mapTo(&m_window, row(4)->first->rect().center());
    doubleClick(m_window, at);
    EXPECT_THAT(m_pressed, ElementsAre("4", "4"));
    m_pressed.clear();
    QObject::connect(row(4)->first, &QPushButton::clicked, [this] {
        m_keys.erase(m_keys.begin() + 4);
        m_list.setRowCount(m_list.rowCount() - 1);
    });
    doubleClick(m_window, at);
    EXPECT_THAT(m_pressed, ElementsAre("4"));
    QTest::mouseClick(row(4)->first, Qt::LeftButton);
    EXPECT_THAT(m_pressed, ElementsAre("4", "5"));
}

// --- what assistive technology finds

TEST_F(List, TellsOfEveryRow) {
    m_list.setRowCount(10'000);
    m_list.setFocus();
    m_told = 0;
    auto* const list = QAccessible::queryAccessibleInterface(&m_list);
    EXPECT_EQ(list->role(), QAccessible::List);
    EXPECT_EQ(list->childCount(), 10'000);
    EXPECT_EQ(list->child(10'000), nullptr);
    auto* const last = list->child(9'999);
    ASSERT_NE(last, nullptr);
    EXPECT_EQ(last->role(), QAccessible::ListItem);
    EXPECT_EQ(last->text(QAccessible::Name), "9999");
    EXPECT_EQ(last->parent(), list);
    EXPECT_EQ(list->indexOfChild(last), 9'999);
    EXPECT_EQ(last->childCount(), 0);
    EXPECT_TRUE(last->state().offscreen && !last->state().invisible && !last->state().selected);
    EXPECT_LT(m_told, 100) << "rows are told of that no one asked for";

    auto* const second = list->child(1);
    ASSERT_EQ(second->childCount(), 1);
    EXPECT_EQ(second->child(0)->object(), row(1));
    EXPECT_EQ(second->child(0)->parent(), second);
    EXPECT_EQ(second->indexOfChild(second->child(0)), 0);
    EXPECT_EQ(list->childAt(second->rect().center().x(), second->rect().center().y()), second);
    EXPECT_EQ(second->rect(), QRect(row(1)->mapToGlobal(QPoint()), row(1)->size()));
    second->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_EQ(m_list.currentRow(), 1);
    EXPECT_EQ(list->focusChild(), second);
    EXPECT_TRUE(second->state().focused && second->state().selected && second->state().active);
    second->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_THAT(m_asked, ElementsAre(Pair("activate", 1)));

    // Whoever holds on to an item keeps what it stands for.
    m_keys.push_front("nieuw");
    m_list.setRowCount(10'001);
    EXPECT_EQ(list->indexOfChild(second), 2);
    EXPECT_EQ(list->child(2), second);
    EXPECT_EQ(second->child(0)->object(), row(2));
    m_keys.erase(m_keys.begin() + 2);
    m_list.setRowCount(10'000);
    EXPECT_FALSE(second->isValid());
}

TEST_F(List, OpensTheMenuOfARow) {
    m_list.setRowCount(5);
    const auto ask = [](QWidget& of, QContextMenuEvent::Reason reason) {
        QContextMenuEvent asked(reason, QPoint(3, 3), of.mapToGlobal(QPoint(3, 3)));
        QApplication::sendEvent(&of, &asked);
    };
    ask(*row(4), QContextMenuEvent::Mouse);
    EXPECT_EQ(m_asked.size(), 1U);
    EXPECT_EQ(m_list.currentRow(), 4);
    m_list.setFocus();
    ask(m_list, QContextMenuEvent::Keyboard);
    EXPECT_EQ(m_asked.size(), 2U);
    QTest::keyClick(&m_list, Qt::Key_F10, Qt::ShiftModifier);
    QTest::keyClick(&m_list, Qt::Key_F10);
    const QPoint below(3, 6 * kRowHeight);
    QContextMenuEvent belowTheRows(QContextMenuEvent::Mouse, below, m_list.mapToGlobal(below));
    QApplication::sendEvent(m_list.viewport(), &belowTheRows);
    EXPECT_THAT(m_asked, ElementsAre(Pair("menu", 4), Pair("menu", 4), Pair("menu", 4)));
}

TEST_F(List, ItsFrameHasFourEdgesAtEveryScaleAndPlace) {
    m_list.showFrame();
    m_list.setRowCount(3);
    settle();
    const QColor around(1, 2, 3);
    const QColor ground = m_list.palette().color(QPalette::Base);
    for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0}) {
        for (int offset = 0; offset < 4; ++offset) {
            SCOPED_TRACE(std::to_string(scale) + " at " + std::to_string(offset));
            QImage image((QSizeF(m_list.size() + QSize(8, 8)) * scale).toSize(), QImage::Format_RGB32);
            image.setDevicePixelRatio(scale);
            image.fill(around);
            m_list.render(&image, QPoint(offset, offset));
            // What is met first on the way in from outside, below the rows, where nothing but the frame is drawn.
            const auto expectEdge = [&](QPoint at, QPoint step) {
                while (image.rect().contains(at) && image.pixelColor(at) == around)
                    at += step;
                EXPECT_NE(image.pixelColor(at), ground) << step.x() << ", " << step.y();
            };
            const QPoint end(image.width() - 1, image.height() - 1);
            const int below = static_cast<int>((offset + 3.5 * kRowHeight) * scale);
            expectEdge({0, below}, {1, 0});
            expectEdge({end.x(), below}, {-1, 0});
            expectEdge({end.x() / 2, 0}, {0, 1});
            expectEdge({end.x() / 2, end.y()}, {0, -1});
            EXPECT_EQ(image.pixelColor(end.x() / 2, below), ground);
        }
    }
}

// --- the main window's sets

class ListOfSets : public UiTest {
protected:
    ui::RecyclingList& openList(unsigned sets) {
        openMainWithSets(sets);
        return find<ui::RecyclingList>(main(), "setList");
    }
};

TEST_F(ListOfSets, ShowsTenThousandSetsWithAFewRows) {
    auto& list = openList(10'000);
    EXPECT_EQ(list.rowCount(), 10'000);
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_End);
    settle();
    ASSERT_NE(list.rowWidget(9'999), nullptr);
    EXPECT_EQ(textOf(*list.rowWidget(9'999), "headline"), "Set 10000 — Marvis");
    // A row that was used again means the set that it shows.
    click(*list.rowWidget(9'999), "activateButton");
    EXPECT_EQ(manager().activeSetId(), shoot().sets[9'999].id);
    list.scrollToRow(0);
    settle();
    for (const auto* const row : rows())
        EXPECT_FALSE(isShown(*row, "activeTag"));
    EXPECT_LE(main().findChildren<QWidget*>("setRow").size(),
              list.viewport()->height() / list.rowHeight() + 3);
}

TEST_F(ListOfSets, AShootOpensAtItsActiveSetOrAtItsTop) {
    auto& list = openList(300);
    const auto first = shoot().id;
    manager().activateSet(shoot().sets[200].id);
    list.scrollToRow(250);
    list.setCurrentRow(250);
    addShoot("Oslo");
    for (int i = 0; i < 30; ++i)
        addSet(std::to_string(i));
    EXPECT_EQ(list.verticalScrollBar()->value(), 0);
    EXPECT_EQ(list.currentRow(), std::nullopt);
    list.scrollToRow(29);
    manager().setActiveShootId(first);
    settle();
    EXPECT_EQ(list.currentRow(), 200);
    EXPECT_NE(list.rowWidget(200), nullptr);
}

TEST_F(ListOfSets, ActivatingWithTheKeyboardLeavesTheFocusOnTheRow) {
    auto& list = openList(3);
    list.setFocus();
    list.setCurrentRow(1);
    find(*list.rowWidget(1), "activateButton").setFocus(Qt::TabFocusReason);
    press(Qt::Key_Space);
    EXPECT_EQ(manager().activeSetId(), shoot().sets[1].id);
    EXPECT_EQ(QApplication::focusWidget(), &list);
    EXPECT_EQ(list.currentRow(), 1);
}

} // namespace
} // namespace vantor::testing
