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
        for (auto* const widget : {static_cast<QWidget*>(&m_before), static_cast<QWidget*>(&m_list),
                                   static_cast<QWidget*>(&m_after)})
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
        rows.activate = [this](int place) { m_activated.push_back(place); };
        rows.toggle = [this](int place) { m_toggled.push_back(place); };
        rows.remove = [this](int place) { m_removed.push_back(place); };
        rows.showMenu = [this](int place, const QPoint&) { m_menus.push_back(place); };
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
    void press(Qt::Key key) {
        QTest::keyClick(QApplication::focusWidget(), key);
        settle();
    }
    // Each row in sight stands where its number says, without a gap.
    void expectRowsInPlace() const {
        const int offset = m_list.verticalScrollBar()->value();
        int bottom = 0;
        for (const auto* const shown : shownRows()) {
            EXPECT_EQ(shown->y(), shown->number() * kRowHeight - offset);
            EXPECT_EQ(shown->width(), m_list.viewport()->width());
            EXPECT_EQ(shown->height(), kRowHeight);
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
    std::vector<int> m_toggled;
    std::vector<int> m_activated;
    std::vector<int> m_removed;
    std::vector<int> m_menus;
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

TEST_F(List, ShowsFewerRowsThanFit) {
    m_list.setRowCount(3);
    EXPECT_EQ(shownRows().size(), 3U);
    expectRowsInPlace();
    EXPECT_EQ(m_list.verticalScrollBar()->maximum(), 0);
    m_list.setRowCount(0);
    EXPECT_THAT(shownRows(), IsEmpty());
    EXPECT_EQ(m_list.rowWidget(0), nullptr);
}

TEST_F(List, FollowsItsSize) {
    m_list.setRowCount(100);
    m_list.verticalScrollBar()->setValue(m_list.verticalScrollBar()->maximum());
    m_window.resize(700, 900);
    settle();
    expectRowsInPlace();
    EXPECT_EQ(shownRows().back()->number(), 99);
}

TEST_F(List, StaysInSightOfWhatIsLeftWhenItGetsShorter) {
    m_list.setRowCount(1000);
    m_list.verticalScrollBar()->setValue(m_list.verticalScrollBar()->maximum());
    m_list.setRowCount(20);
    settle();
    expectRowsInPlace();
    EXPECT_EQ(shownRows().back()->number(), 19);
}

TEST_F(List, ScrollsNoFurtherThanItTakesToShowARow) {
    m_list.setRowCount(1000);
    m_list.scrollToRow(500);
    ASSERT_NE(row(500), nullptr);
    EXPECT_TRUE(m_list.viewport()->rect().contains(row(500)->geometry()));
    const int value = m_list.verticalScrollBar()->value();
    m_list.scrollToRow(499);
    EXPECT_EQ(m_list.verticalScrollBar()->value(), value);
    m_list.scrollToRow(0);
    EXPECT_EQ(m_list.verticalScrollBar()->value(), 0);
}

TEST_F(List, KeysMoveTheCurrentRow) {
    m_list.setRowCount(10'000);
    m_list.setFocus();
    EXPECT_EQ(m_list.currentRow(), 0);
    const auto inSight = [&](int place) {
        return row(place) != nullptr && row(place)->current &&
               m_list.viewport()->rect().contains(row(place)->geometry());
    };
    m_filled = 0;
    press(Qt::Key_Down);
    EXPECT_EQ(m_list.currentRow(), 1);
    EXPECT_EQ(m_filled, 2) << "rows are filled, and told of, that did not change";
    press(Qt::Key_End);
    EXPECT_EQ(m_list.currentRow(), 9'999);
    EXPECT_TRUE(inSight(9'999));
    press(Qt::Key_Down);
    EXPECT_EQ(m_list.currentRow(), 9'999);
    press(Qt::Key_PageUp);
    EXPECT_LT(*m_list.currentRow(), 9'999 - 3);
    EXPECT_TRUE(inSight(*m_list.currentRow()));
    press(Qt::Key_Home);
    EXPECT_EQ(m_list.currentRow(), 0);
    EXPECT_TRUE(inSight(0));
    press(Qt::Key_Up);
    EXPECT_EQ(m_list.currentRow(), 0);
    press(Qt::Key_PageDown);
    press(Qt::Key_PageDown);
    EXPECT_GT(*m_list.currentRow(), 6);
    EXPECT_TRUE(inSight(*m_list.currentRow()));
    const auto current = *m_list.currentRow();
    press(Qt::Key_Return);
    press(Qt::Key_Space);
    press(Qt::Key_Delete);
    EXPECT_THAT(m_activated, ElementsAre(current));
    EXPECT_THAT(m_toggled, ElementsAre(current));
    EXPECT_THAT(m_removed, ElementsAre(current));
}

TEST_F(List, KeysDoNothingWithoutRows) {
    m_list.setRowCount(0);
    m_list.setFocus();
    for (const auto key : {Qt::Key_Down, Qt::Key_End, Qt::Key_Return, Qt::Key_Delete})
        press(key);
    EXPECT_EQ(m_list.currentRow(), std::nullopt);
    EXPECT_THAT(m_activated, IsEmpty());
    EXPECT_THAT(m_removed, IsEmpty());
}

TEST_F(List, TabWalksOnlyTheCurrentRowsButtons) {
    m_list.setRowCount(100);
    m_before.setFocus();
    press(Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget(), &m_list);
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), row(2)->first);
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), row(2)->second);
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &m_after);
    press(Qt::Key_Backtab);
    EXPECT_EQ(QApplication::focusWidget(), row(2)->second);
}

TEST_F(List, ArrowsOnARowsButtonGoOnToTheNextRow) {
    m_list.setRowCount(100);
    m_list.setFocus();
    press(Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget(), row(0)->first);
    press(Qt::Key_Down);
    EXPECT_EQ(m_list.currentRow(), 1);
    EXPECT_EQ(QApplication::focusWidget(), &m_list);
    EXPECT_THAT(m_activated, IsEmpty());
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
    ASSERT_NE(QApplication::focusWidget(), &m_list);
    m_list.setRowCount(1);
    EXPECT_EQ(QApplication::focusWidget(), &m_list);
    EXPECT_EQ(m_list.currentRow(), 0);
    EXPECT_THAT(shownRows(), ::testing::SizeIs(1));
    expectRowsInPlace();
}

TEST_F(List, ScrollingLeavesTheFocusElsewhereAlone) {
    m_list.setRowCount(10'000);
    m_before.setFocus();
    m_list.verticalScrollBar()->setValue(5'000);
    m_list.setRowCount(10);
    EXPECT_EQ(QApplication::focusWidget(), &m_before);
}

TEST_F(List, OnlyTheCurrentRowIsShownAsIt) {
    m_list.setRowCount(10'000);
    m_list.setCurrentRow(3);
    m_list.verticalScrollBar()->setValue(20 * kRowHeight);
    for (const auto* const shown : shownRows())
        EXPECT_FALSE(shown->current) << shown->number();
    m_list.verticalScrollBar()->setValue(0);
    std::set<int> current;
    for (const auto* const shown : shownRows()) {
        if (shown->current)
            current.insert(shown->number());
    }
    EXPECT_THAT(current, ElementsAre(3));
}

TEST_F(List, ClickMakesARowCurrentAndLeavesTheFocus) {
    m_list.setRowCount(100);
    m_before.setFocus();
    QTest::mouseClick(row(4), Qt::LeftButton, {}, QPoint(3, 3));
    EXPECT_EQ(m_list.currentRow(), 4);
    EXPECT_EQ(QApplication::focusWidget(), &m_before);
    QTest::mouseClick(row(5)->first, Qt::LeftButton);
    EXPECT_EQ(m_list.currentRow(), 5);
    EXPECT_EQ(QApplication::focusWidget(), &m_before);
}

TEST_F(List, CurrentRowMovesUpWhenTheLastOneGoes) {
    m_list.setRowCount(3);
    m_list.setCurrentRow(2);
    m_list.setRowCount(2);
    EXPECT_EQ(m_list.currentRow(), 1);
    m_list.setRowCount(0);
    EXPECT_EQ(m_list.currentRow(), std::nullopt);
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
}

TEST_F(List, ActsOnWhatIsCurrentBeforeAChangeIsShown) {
    m_list.setRowCount(100);
    m_list.setFocus();
    m_list.setCurrentRow(4);
    m_keys.push_front("a");
    QTest::keyClick(&m_list, Qt::Key_Return);
    EXPECT_THAT(m_activated, ElementsAre(5));
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
    EXPECT_THAT(m_activated, ElementsAre(1));

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
    m_list.setRowCount(100);
    QContextMenuEvent byMouse(QContextMenuEvent::Mouse, QPoint(3, 3), row(4)->mapToGlobal(QPoint(3, 3)));
    QApplication::sendEvent(row(4), &byMouse);
    EXPECT_THAT(m_menus, ElementsAre(4));
    EXPECT_EQ(m_list.currentRow(), 4);
    m_list.setFocus();
    QContextMenuEvent byKey(QContextMenuEvent::Keyboard, QPoint(3, 3), m_list.mapToGlobal(QPoint(3, 3)));
    QApplication::sendEvent(&m_list, &byKey);
    EXPECT_THAT(m_menus, ElementsAre(4, 4));
    QTest::keyClick(&m_list, Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_THAT(m_menus, ElementsAre(4, 4, 4));
    QTest::keyClick(&m_list, Qt::Key_F10);
    EXPECT_THAT(m_menus, ElementsAre(4, 4, 4));
}

TEST_F(List, ItsFrameHasFourEdgesAtEveryScaleAndPlace) {
    m_list.showFrame();
    m_list.setRowCount(3);
    settle();
    const QColor around(1, 2, 3);
    const QColor ground = m_list.palette().color(QPalette::Base);
    for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0}) {
        for (int offset = 0; offset < 4; ++offset) {
            QImage image((QSizeF(m_list.size() + QSize(8, 8)) * scale).toSize(), QImage::Format_RGB32);
            image.setDevicePixelRatio(scale);
            image.fill(around);
            m_list.render(&image, QPoint(offset, offset));
            // What is met first on the way in from outside, below the rows, where nothing but the frame is drawn.
            const auto first = [&](QPoint at, QPoint step) {
                while (image.rect().contains(at) && image.pixelColor(at) == around)
                    at += step;
                return image.pixelColor(at);
            };
            const int right = image.width() - 1;
            const int bottom = image.height() - 1;
            const int below = static_cast<int>((offset + 3.5 * kRowHeight) * scale);
            const auto where = std::to_string(scale) + " at " + std::to_string(offset);
            EXPECT_NE(first({0, below}, {1, 0}), ground) << where;
            EXPECT_NE(first({right, below}, {-1, 0}), ground) << where;
            EXPECT_NE(first({right / 2, 0}, {0, 1}), ground) << where;
            EXPECT_NE(first({right / 2, bottom}, {0, -1}), ground) << where;
            EXPECT_EQ(image.pixelColor(right / 2, below), ground) << where;
        }
    }
}

TEST_F(List, OpensNoMenuBelowItsRows) {
    m_list.setRowCount(1);
    QContextMenuEvent below(QContextMenuEvent::Mouse, QPoint(3, 200), m_list.mapToGlobal(QPoint(3, 200)));
    QApplication::sendEvent(m_list.viewport(), &below);
    EXPECT_THAT(m_menus, IsEmpty());
}

// --- the main window's sets

class ListOfSets : public UiTest {};

TEST_F(ListOfSets, ShowsTenThousandSetsWithAFewRows) {
    openMainWithSets(10'000);
    auto& list = find<ui::RecyclingList>(main(), "setList");
    EXPECT_EQ(list.rowCount(), 10'000);
    const auto made = [&] { return static_cast<int>(main().findChildren<QWidget*>("setRow").size()); };
    EXPECT_LE(made(), list.viewport()->height() / list.rowHeight() + 3);
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_End);
    settle();
    ASSERT_NE(list.rowWidget(9'999), nullptr);
    EXPECT_EQ(textOf(*list.rowWidget(9'999), "headline"), "Set 10000 — Marvis");
    QTest::keyClick(&list, Qt::Key_Return);
    settle();
    EXPECT_EQ(manager().activeSetId(), shoot().sets[9'999].id);
    EXPECT_LE(made(), list.viewport()->height() / list.rowHeight() + 3);
}

TEST_F(ListOfSets, DeleteKeyAsksFirst) {
    openMainWithSets(3);
    auto& list = find<ui::RecyclingList>(main(), "setList");
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_Down);
    QTest::keyClick(&list, Qt::Key_Delete);
    settle();
    ASSERT_TRUE(isOpen("confirmation"));
    EXPECT_EQ(shoot().sets.size(), 3U);
    click(sheet("confirmation"), "confirmDeletion");
    ASSERT_EQ(shoot().sets.size(), 2U);
    EXPECT_EQ(shoot().sets[1].setNumber, "3");
}

TEST_F(ListOfSets, ActivatingARowThatWasUsedAgainMeansTheSetItShows) {
    openMainWithSets(500);
    auto& list = find<ui::RecyclingList>(main(), "setList");
    list.scrollToRow(499);
    settle();
    click(*list.rowWidget(499), "activateButton");
    EXPECT_EQ(manager().activeSetId(), shoot().sets[499].id);
    list.scrollToRow(0);
    settle();
    for (const auto* const row : rows())
        EXPECT_FALSE(isShown(*row, "activeTag"));
}

TEST_F(ListOfSets, KeepsTheCurrentSetWhateverComesBeforeIt) {
    openMainWithSets(300);
    auto& list = find<ui::RecyclingList>(main(), "setList");
    list.setCurrentRow(298);
    const auto current = shoot().sets[298].id;
    addSet("nieuw");
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_EQ(manager().activeSetId(), current);
    type(main(), "searchField", "nieuw");
    EXPECT_EQ(list.currentRow(), std::nullopt);
    type(main(), "searchField", "");
    EXPECT_EQ(list.currentRow(), 299);
    EXPECT_NE(list.rowWidget(299), nullptr);
}

TEST_F(ListOfSets, AShootOpensAtItsActiveSetOrAtItsTop) {
    openMainWithSets(300);
    auto& list = find<ui::RecyclingList>(main(), "setList");
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
    openMainWithSets(3);
    auto& list = find<ui::RecyclingList>(main(), "setList");
    list.setFocus();
    list.setCurrentRow(1);
    auto& button = find(*list.rowWidget(1), "activateButton");
    button.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&button, Qt::Key_Space);
    settle();
    EXPECT_EQ(manager().activeSetId(), shoot().sets[1].id);
    EXPECT_EQ(QApplication::focusWidget(), &list);
    EXPECT_EQ(list.currentRow(), 1);
}

} // namespace
} // namespace vantor::testing
