#include "tests/ui/ui_fixture.h"

#include <QAccessible>
#include <QMenu>
#include <QWheelEvent>
#include <set>
#include <tuple>

namespace vantor::testing {
namespace {

using ::testing::IsEmpty;

struct Control {
    QAccessible::Role role;
    // As a screen reader says it: that of the label beside it, if it has one.
    std::string name;
    std::string object;
    bool focusable;
};

std::string nameOf(QAccessibleInterface& control) {
    for (const auto& [label, relation] : control.relations(QAccessible::Label)) {
        if (const auto text = label->text(QAccessible::Name); !text.isEmpty())
            return text.toStdString();
    }
    // The name of a box is what is chosen in it, which says nothing of what it is for.
    return control
        .text(control.role() == QAccessible::ComboBox ? QAccessible::Description : QAccessible::Name)
        .toStdString();
}

std::string nameOf(QWidget& widget) {
    return nameOf(*QAccessible::queryAccessibleInterface(&widget));
}

// Everything that assistive technology finds in a window, as it would: from the window downwards, passing over
// what is not shown.
void walk(QAccessibleInterface* at, std::vector<Control>& found) {
    if (at == nullptr || !at->isValid() || at->state().invisible)
        return;
    found.push_back({at->role(), nameOf(*at),
                     at->object() != nullptr ? at->object()->objectName().toStdString() : std::string(),
                     at->state().focusable != 0});
    for (int i = 0; i < at->childCount(); ++i)
        walk(at->child(i), found);
}

std::vector<Control> controlsOf(QWidget& window) {
    std::vector<Control> found;
    walk(QAccessible::queryAccessibleInterface(&window), found);
    return found;
}

// The controls that could be focused or pressed and say nothing of what they are.
std::vector<std::string> nameless(QWidget& window) {
    std::vector<std::string> found;
    for (const auto& control : controlsOf(window)) {
        const bool pressed = control.role == QAccessible::PushButton ||
                             control.role == QAccessible::ButtonMenu ||
                             control.role == QAccessible::CheckBox || control.role == QAccessible::ComboBox ||
                             control.role == QAccessible::EditableText;
        if ((control.focusable || pressed) && control.name.empty())
            found.push_back(control.object + " (role " + std::to_string(control.role) + ")");
    }
    return found;
}

std::vector<std::string> objectsIn(QWidget& window) {
    std::vector<std::string> found;
    for (const auto& control : controlsOf(window))
        found.push_back(control.object);
    return found;
}

// The widgets that Tab comes by on its way around, from the one that has the focus.
std::set<const QWidget*> tabWalk(int key) {
    std::set<const QWidget*> reached;
    for (int i = 0; i < 500; ++i) {
        auto* const at = QApplication::focusWidget();
        if (at == nullptr || !reached.insert(at).second)
            break;
        QTest::keyClick(at, static_cast<Qt::Key>(key));
    }
    return reached;
}

// What is enabled and shown and still not reached.
std::vector<std::string> missedBy(const std::set<const QWidget*>& reached, const QWidget& window) {
    std::vector<std::string> missed;
    for (const auto* const widget : window.findChildren<QWidget*>()) {
        const bool isControl = qobject_cast<const QAbstractButton*>(widget) != nullptr ||
                               qobject_cast<const QLineEdit*>(widget) != nullptr ||
                               qobject_cast<const QPlainTextEdit*>(widget) != nullptr ||
                               qobject_cast<const QComboBox*>(widget) != nullptr;
        if (isControl && widget->isVisible() && widget->isEnabled() && widget->window() == &window &&
            !reached.contains(widget))
            missed.push_back(widget->objectName().toStdString());
    }
    return missed;
}

class Accessibility : public UiTest {
protected:
    static void expectNamed(QWidget& window, const std::vector<std::string>& controls) {
        EXPECT_THAT(nameless(window), IsEmpty());
        EXPECT_THAT(objectsIn(window), ::testing::IsSupersetOf(controls)) << "the walk finds what is there";
    }

    void openFullMain() {
        openMain();
        addShoot("Oud");
        addShoot("Ibiza", "Nike");
        for (int i = 1; i <= 3; ++i)
            addSet(std::to_string(i), "Marvis");
        manager().activateSet(shoot().sets[1].id);
        announceVersion("2.0", "https://vantor.example/2.0");
        type(main(), "searchField", "marvis");
        find<QLineEdit>(main(), "scannerField").setText("SET:1");
        settle();
    }
};

TEST_F(Accessibility, EveryControlHasAName) {
    openMain();
    EXPECT_THAT(nameless(main()), IsEmpty());
    openFullMain();
    expectNamed(main(), {"updateButton", "shootPicker", "clientsButton", "deleteShootButton", "newSetButton",
                         "searchField", "clearSearchButton", "setList", "qrButton", "editButton",
                         "deleteButton", "activateButton", "scannerField", "activateScanButton"});
    expectNamed(open("deleteShootButton", "confirmation"), {"confirmDeletion", "cancelDeletion"});
    click(sheet("confirmation"), "cancelDeletion");
    click(*rows().front(), "qrButton");
    expectNamed(sheet("qrSheet"), {"codePlate", "codeText", "copyButton", "saveButton"});
    auto& view = openGenerator();
    EXPECT_THAT(nameless(view), IsEmpty());
    for (const auto* const name : {"addItemButton", "addItemButton", "generateButton"})
        click(view, name);
    expectNamed(view,
                {"setNumber", "brand", "model", "location", "itemName", "itemColor", "removeItemButton",
                 "addItemButton", "generateButton", "codePlate", "codeText", "copyButton", "saveButton"});
}

TEST_F(Accessibility, TheMenuBarAndItsCommandsHaveNames) {
    openMain();
    const auto bar = controlsOf(find(main(), "menuBar"));
    EXPECT_EQ(bar.front().role, QAccessible::MenuBar);
    EXPECT_EQ(bar.front().name, "Menubalk");
    std::vector<std::string> titles;
    for (const auto& control : bar) {
        if (control.role == QAccessible::MenuItem)
            titles.push_back(control.name);
    }
    EXPECT_THAT(titles, ::testing::ElementsAre("Bestand", "Bewerken", "Beeld", "Help"));
    for (auto* const menu : find(main(), "menuBar").findChildren<QMenu*>())
        EXPECT_THAT(nameless(*menu), IsEmpty());
}

TEST_F(Accessibility, TheNoticeStripTellsItsTextAndTabReachesItsButtons) {
    openFullMain();
    m_notices.show({Notice::Kind::Done, "Klaar", {{"Ongedaan maken", [] {}}}, ""});
    settle();
    auto* const strip = QAccessible::queryAccessibleInterface(&find(main(), "noticeStrip"));
    EXPECT_EQ(strip->role(), QAccessible::Notification);
    EXPECT_EQ(strip->text(QAccessible::Name), "Klaar");
    EXPECT_EQ(nameOf(find(main(), "noticeAction")), "Ongedaan maken");
    EXPECT_EQ(nameOf(find(main(), "dismissNotice")), "Sluit melding");
    EXPECT_EQ(QApplication::focusWidget(), &find(main(), "searchField")) << "it takes no focus";
    const auto reached = tabWalk(Qt::Key_Tab);
    EXPECT_TRUE(reached.contains(&find(main(), "noticeAction")));
    EXPECT_TRUE(reached.contains(&find(main(), "dismissNotice")));
}

TEST_F(Accessibility, NamesSayWhatAControlIsFor) {
    openFullMain();
    EXPECT_EQ(nameOf(find(main(), "searchField")), "Zoek op naam, model of item...");
    EXPECT_EQ(nameOf(find(main(), "scannerField")), "Scan QR of typ setdata...");
    EXPECT_EQ(nameOf(find(main(), "shootPicker")), "Shoot");
    EXPECT_EQ(nameOf(find(main(), "deleteShootButton")), "Shoot verwijderen (inclusief alle sets erin)");
    EXPECT_EQ(nameOf(find(main(), "updateButton")), "v2.0 beschikbaar");
    EXPECT_EQ(nameOf(find(main(), "statBadge")), "Sets: 3");
    auto& row = *rows().front();
    auto* const list = QAccessible::queryAccessibleInterface(&find(main(), "setList"));
    EXPECT_EQ(nameOf(*list->child(0)), "Set 3 — Marvis");
    EXPECT_EQ(nameOf(*list->child(1)), "Set 2 — Marvis, ACTIEF");
    EXPECT_EQ(list->child(0)->text(QAccessible::Description), "Set 1 van 3");
    EXPECT_EQ(nameOf(find(row, "qrButton")), "Toon QR-code");
    EXPECT_EQ(nameOf(find(row, "editButton")), "Bewerken");
    EXPECT_EQ(nameOf(find(row, "deleteButton")), "Verwijderen");
    // Whose it is, is told of the one that is reached.
    find(row, "deleteButton").setFocus();
    EXPECT_EQ(find(row, "deleteButton").accessibleDescription(), "Set 3 — Marvis");
}

TEST_F(Accessibility, BoxesSayWhatTheyAreFor) {
    openFullMain();
    addProduct("broek", {}, "Nike");
    for (const auto& [window, box, name] : {std::tuple("newShootSheet", "clientPicker", "Klant (optioneel)"),
                                            std::tuple("catalogSheet", "brandPicker", "Merk"),
                                            std::tuple("editProductSheet", "productBrandPicker", "Merk")}) {
        EXPECT_EQ(nameOf(find(openWindow(window), box)), name);
        closeSheets();
    }
}

TEST_F(Accessibility, TheWheelChangesNoBox) {
    openFullMain();
    addProduct("broek", {}, "Nike");
    for (const auto* const window : {"main", "newShootSheet", "catalogSheet", "editProductSheet"}) {
        returnToMain();
        auto& opened = openWindow(window);
        const auto boxes = opened.findChildren<QComboBox*>();
        EXPECT_FALSE(boxes.empty()) << window;
        for (auto* const box : boxes) {
            const int chosen = box->currentIndex();
            for (const int turned : {-120, 120}) {
                QWheelEvent wheel({5, 5}, box->mapToGlobal(QPointF(5, 5)), {}, {0, turned}, {}, {},
                                  Qt::NoScrollPhase, false);
                QApplication::sendEvent(box, &wheel);
                EXPECT_EQ(box->currentIndex(), chosen) << window;
            }
            EXPECT_EQ(box->focusPolicy() & Qt::WheelFocus, Qt::StrongFocus) << window;
        }
        if (&opened != &main())
            opened.close();
        settle();
    }
}

TEST_F(Accessibility, InvisiblePickerIsOutOfReach) {
    openMain();
    addShoot("Ibiza");
    EXPECT_THAT(objectsIn(main()), ::testing::Not(::testing::Contains("shootPicker")));
    find(main(), "scannerField").setFocus();
    EXPECT_FALSE(tabWalk(Qt::Key_Tab).contains(&find(main(), "shootPicker")));
    addShoot("Oslo");
    EXPECT_THAT(objectsIn(main()), ::testing::Contains("shootPicker"));
    find(main(), "scannerField").setFocus();
    EXPECT_TRUE(tabWalk(Qt::Key_Tab).contains(&find(main(), "shootPicker")));
}

TEST_F(Accessibility, TabReachesEverythingOnTheMainWindow) {
    openMain();
    find(main(), "clientsButton").setFocus();
    EXPECT_THAT(missedBy(tabWalk(Qt::Key_Tab), main()), IsEmpty()) << "without a shoot";
    openFullMain();
    auto& list = find<ui::RecyclingList>(main(), "setList");
    list.setCurrentRow(0);
    for (const auto key : {Qt::Key_Tab, Qt::Key_Backtab}) {
        find(main(), "searchField").setFocus();
        auto reached = tabWalk(key);
        EXPECT_TRUE(reached.contains(&list));
        // A list's other rows are reached with the arrow keys.
        for (std::size_t place = 1; place < rows().size(); ++place) {
            for (const auto* const button : rows()[place]->findChildren<QAbstractButton*>())
                reached.insert(button);
        }
        EXPECT_THAT(missedBy(reached, main()), IsEmpty());
    }
    click(*rows().front(), "qrButton");
    ASSERT_TRUE(QTest::qWaitForWindowActive(&sheet("qrSheet")));
    EXPECT_THAT(missedBy(tabWalk(Qt::Key_Tab), sheet("qrSheet")), IsEmpty());
}

TEST_F(Accessibility, TabReachesEverythingOnTheGenerator) {
    auto& view = openGenerator();
    EXPECT_THAT(missedBy(tabWalk(Qt::Key_Tab), view), IsEmpty());
    for (const auto* const name : {"addItemButton", "addItemButton", "generateButton"})
        click(view, name);
    for (const auto key : {Qt::Key_Tab, Qt::Key_Backtab}) {
        find(view, "setNumber").setFocus();
        EXPECT_THAT(missedBy(tabWalk(key), view), IsEmpty());
    }
}

TEST_F(Accessibility, TabGoesDownTheGeneratorsForm) {
    auto& view = openGenerator();
    click(view, "addItemButton");
    find(view, "setNumber").setFocus();
    std::vector<std::string> order;
    for (int i = 0; i < 9; ++i) {
        order.push_back(QApplication::focusWidget()->objectName().toStdString());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_THAT(order,
                ::testing::ElementsAre("setNumber", "brand", "model", "location", "itemName", "itemColor",
                                       "removeItemButton", "addItemButton", "generateButton"));
}

} // namespace
} // namespace vantor::testing
