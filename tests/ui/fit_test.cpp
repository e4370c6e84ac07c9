#include "tests/ui/screens.h"
#include "tests/ui/ui_fixture.h"
#include "ui/widgets/widgets.h"

#include <QFocusFrame>
#include <QLabel>
#include <QLayout>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <ostream>

namespace vantor::testing {
namespace {

struct Place {
    QSize screen;
    // The desktop's font.
    double points;
};

void PrintTo(const Place& place, std::ostream* out) {
    *out << place.screen.width() << " x " << place.screen.height() << " at " << place.points << " points";
}

std::string told(const QWidget& widget) {
    return widget.objectName().toStdString() + " \"" + textOf(widget).toStdString() + "\" (" +
           widget.metaObject()->className() + ") of " + std::to_string(widget.width()) + " x " +
           std::to_string(widget.height());
}

// The least room in which all of its own text can be read. Elided lines end in "…" where they have less width.
QSize leastOf(const QWidget& widget) {
    if (const auto* const label = qobject_cast<const QLabel*>(&widget))
        return label->wordWrap() ? QSize(1, label->heightForWidth(label->width())) : label->sizeHint();
    if (const auto* const field = qobject_cast<const QLineEdit*>(&widget))
        return {std::max(field->fontMetrics().horizontalAdvance(field->placeholderText()),
                         field->fontMetrics().horizontalAdvance(QStringLiteral("1234"))) +
                    20,
                field->minimumSizeHint().height()};
    if (qobject_cast<const QAbstractButton*>(&widget) != nullptr ||
        qobject_cast<const QComboBox*>(&widget) != nullptr ||
        dynamic_cast<const ui::ElidedLabel*>(&widget) != nullptr ||
        dynamic_cast<const ui::Tag*>(&widget) != nullptr)
        return widget.minimumSizeHint();
    return {0, 0};
}

void expectChildrenApart(const QWidget& parent) {
    std::vector<const QWidget*> children;
    for (const auto* const child : parent.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        // The mark of the focus lies around another.
        if (child->isVisible() && !child->isWindow() && qobject_cast<const QFocusFrame*>(child) == nullptr)
            children.push_back(child);
    }
    for (const auto* const child : children) {
        EXPECT_TRUE(parent.rect().contains(child->geometry()))
            << told(*child) << " reaches beyond " << told(parent);
        const auto least = leastOf(*child);
        EXPECT_GE(child->width(), least.width()) << told(*child);
        EXPECT_GE(child->height(), least.height()) << told(*child);
        for (const auto* const other : children) {
            EXPECT_FALSE(other != child && child->geometry().intersects(other->geometry()))
                << told(*child) << " lies over " << told(*other);
        }
    }
}

// What scrolls may reach beyond what is in sight, as far as its bar comes, and never sideways.
void expectScrollsToTheEnd(const QAbstractScrollArea& area) {
    EXPECT_GT(area.viewport()->height(), 0) << told(area);
    if (const auto* const list = dynamic_cast<const ui::RecyclingList*>(&area)) {
        EXPECT_GE(list->viewport()->height(), list->rowHeight()) << told(area) << " has no room for a row";
    } else if (const auto* const pane = qobject_cast<const QScrollArea*>(&area)) {
        EXPECT_EQ(pane->horizontalScrollBar()->maximum(), 0) << told(area);
        EXPECT_GE(pane->viewport()->height() + pane->verticalScrollBar()->maximum(), pane->widget()->height())
            << told(area);
    }
}

// Everything that can be seen lies within what holds it, as large as its text needs, and nothing lies over anything else.
void expectFits(const QWidget& window, const std::string& when) {
    SCOPED_TRACE(window.objectName().toStdString() + " " + when);
    EXPECT_TRUE(window.screen()->availableGeometry().contains(window.frameGeometry())) << told(window);
    if (window.layout() != nullptr)
        expectChildrenApart(window);
    for (const auto* const widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible() || widget->window() != &window)
            continue;
        if (const auto* const area = qobject_cast<const QAbstractScrollArea*>(widget))
            expectScrollsToTheEnd(*area);
        else if (widget->layout() != nullptr)
            expectChildrenApart(*widget);
    }
}

// The lists and editors of a sheet that are in sight, whose height is what can be seen of their content.
int heightOfContent(const QWidget& window) {
    int height = 0;
    for (const auto* const area : window.findChildren<QAbstractScrollArea*>()) {
        if (area->isVisible() && qobject_cast<const QScrollArea*>(area) == nullptr)
            height += area->height();
    }
    return height;
}

class FitTest : public UiTest, public ::testing::WithParamInterface<Place> {
protected:
    FitTest() {
        QFont font = m_before;
        font.setPointSizeF(GetParam().points);
        QApplication::setFont(font);
        m_main = std::make_unique<ui::PrepMainView>(m_services, [] {});
        show(*m_main);
    }

    ~FitTest() override {
        m_generator.reset();
        m_main.reset();
        QApplication::setFont(m_before);
    }

    static void show(QWidget& window) {
        for (auto* const screen : QGuiApplication::screens()) {
            if (screen->size() == GetParam().screen) {
                window.setScreen(screen);
                window.move(screen->geometry().topLeft());
            }
        }
        window.show();
        settle();
        ASSERT_EQ(window.screen()->size(), GetParam().screen);
    }

    void fill() {
        const std::string longText =
            "Een tamelijk lange naam die in geen enkel smal venster helemaal past, echt";
        addShoot("Eerste");
        addShoot(longText + " als shoot", longText + " als klant");
        for (int i = 1; i < 30; ++i)
            addSet(std::to_string(i), longText,
                   {SetItem::make(longText, longText), SetItem::make("jas", "rood")});
        manager().activateSet(shoot().sets[0].id);
        announceVersion("2.0.1", "https://vantor.example/downloads/2.0.1");
        for (int i = 0; i < 12; ++i) {
            addProduct(longText + std::to_string(i), {"rood", "blauw"}, "Nike");
            catalog().addClient(longText + std::to_string(i));
        }
        settle();
    }

    // Of which versions have two beside each other.
    static void expectStretchGoesToContent(QWidget& opened) {
        const QSize before = opened.size();
        opened.resize(opened.minimumSize().expandedTo({before.width(), before.height() + 400}));
        settle();
        const int height = opened.height();
        const int content = heightOfContent(opened);
        opened.resize(opened.width(), height + 100);
        settle();
        const int lists = opened.objectName() == "versionsSheet" ? 2 : 1;
        EXPECT_EQ(heightOfContent(opened) - content, lists * (opened.height() - height));
        opened.resize(before);
        settle();
    }

    // As it opens, as small as it goes, and as large as its screen.
    static void expectFitsAtEverySize(QWidget& window) {
        expectFits(window, "as it is");
        window.resize(1, 1);
        settle();
        expectFits(window, "at its least size");
        window.move(window.screen()->geometry().topLeft());
        window.resize(window.screen()->availableSize() - (window.frameSize() - window.size()));
        settle();
        expectFits(window, "as large as its screen");
    }

private:
    QFont m_before = QApplication::font();
};

TEST_P(FitTest, TheMainWindow) {
    expectFitsAtEverySize(main());
    fill();
    type(main(), "searchField", "geen enkel");
    expectFitsAtEverySize(main());
}

TEST_P(FitTest, TheGenerator) {
    m_generator = std::make_unique<ui::QRGeneratorView>(m_services);
    show(*m_generator);
    expectFitsAtEverySize(*m_generator);
    for (std::size_t i = 0; i < 12; ++i) {
        click(*m_generator, "addItemButton");
        allVisible<QLineEdit>(*m_generator, "itemName").at(i)->setText("broek");
    }
    click(*m_generator, "generateButton");
    expectFitsAtEverySize(*m_generator);
}

TEST_P(FitTest, EverySheet) {
    fill();
    for (const auto* const name : kSheets) {
        auto& opened = openWindow(name);
        expectFits(opened, "as it opens");
        expectStretchGoesToContent(opened);
        for (int i = 0; std::string(name) == "newSetSheet" && i < 12; ++i)
            click(opened, "addItemButton");
        if (auto* const text = opened.findChild<QPlainTextEdit*>("csvText")) {
            text->setPlainText("kop");
            click(opened, "importButton");
            settleReads();
        }
        expectFitsAtEverySize(opened);
        closeSheets();
    }
}

TEST_P(FitTest, ASheetGrowsWithItsLinesUntilItsScreenIsFull) {
    fill();
    auto& opened = openWindow("newSetSheet");
    int before = opened.height();
    for (int i = 0; i < 25; ++i) {
        click(opened, "addItemButton");
        const auto& button = find(opened, "confirmButton");
        EXPECT_TRUE(opened.rect().contains(QRect(button.mapTo(&opened, QPoint()), button.size())));
        const auto& line = *QApplication::focusWidget();
        ASSERT_EQ(line.objectName(), "itemName");
        EXPECT_FALSE(line.visibleRegion().isEmpty()) << "line " << i << " is out of sight";
        const int room =
            opened.screen()->availableSize().height() - (opened.frameSize() - opened.size()).height();
        EXPECT_TRUE(opened.height() > before || opened.height() > room - 60) << opened.height();
        before = opened.height();
    }
    expectFits(opened, "full");
}

INSTANTIATE_TEST_SUITE_P(Places, FitTest,
                         ::testing::Values(Place{{1024, 600}, 9}, Place{{1024, 600}, 11},
                                           Place{{1024, 600}, 13.5}, Place{{1280, 720}, 9},
                                           Place{{1280, 720}, 11}, Place{{1280, 720}, 13.5},
                                           Place{{1366, 768}, 11}, Place{{1097, 617}, 9},
                                           Place{{960, 540}, 9}));

} // namespace
} // namespace vantor::testing
