#include "tests/ui/ui_fixture.h"

#include <QAccessible>
#include <QMenu>
#include <QWheelEvent>
#include <iterator>

namespace vantor::testing {
namespace {

using ::testing::IsEmpty;

struct Control {
    QAccessible::Role role;
    // As a screen reader says it: that of the label beside it, if it has one.
    std::string name;
    // Of a widget.
    std::optional<std::string> object;
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
    found.push_back({at->role(), nameOf(*at), {}, at->state().focusable != 0});
    if (at->object() != nullptr && at->object()->isWidgetType())
        found.back().object = at->object()->objectName().toStdString();
    for (int i = 0; i < at->childCount(); ++i)
        walk(at->child(i), found);
}

std::vector<Control> controlsOf(QWidget& window) {
    std::vector<Control> found;
    walk(QAccessible::queryAccessibleInterface(&window), found);
    return found;
}

// The controls that could be focused or pressed and say nothing of what they are, or that no test could name.
std::vector<std::string> nameless(QWidget& window) {
    std::vector<std::string> found;
    for (const auto& control : controlsOf(window)) {
        const bool pressed = control.role == QAccessible::PushButton ||
                             control.role == QAccessible::ButtonMenu ||
                             control.role == QAccessible::CheckBox || control.role == QAccessible::ComboBox ||
                             control.role == QAccessible::EditableText;
        if ((control.focusable || pressed) && (control.name.empty() || control.object == ""))
            found.push_back(control.name + " / " + control.object.value_or("") + " of role " +
                            std::to_string(control.role));
    }
    return found;
}

// What is enabled and shown and still not reached.
std::vector<std::string> missedBy(const std::vector<QWidget*>& reached, const QWidget& window) {
    std::vector<std::string> missed;
    for (const auto* const widget : window.findChildren<QWidget*>()) {
        const bool isControl = qobject_cast<const QAbstractButton*>(widget) != nullptr ||
                               qobject_cast<const QLineEdit*>(widget) != nullptr ||
                               qobject_cast<const QPlainTextEdit*>(widget) != nullptr ||
                               qobject_cast<const QComboBox*>(widget) != nullptr;
        if (isControl && widget->isVisible() && widget->isEnabled() && widget->window() == &window &&
            std::ranges::count(reached, widget) == 0)
            missed.push_back(widget->objectName().toStdString());
    }
    return missed;
}

class Accessibility : public UiTest {
protected:
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

TEST_F(Accessibility, EveryControlHasANameAndEverySheetIsADialog) {
    openMain();
    EXPECT_THAT(nameless(main()), IsEmpty());
    openFullMain();
    addProduct("broek", {"rood"}, "Nike");
    std::size_t most = 0;
    visitWindows("x", [&](QWidget& window) {
        EXPECT_THAT(nameless(window), IsEmpty()) << window.objectName().toStdString();
        if (window.objectName().endsWith("Sheet")) {
            EXPECT_EQ(controlsOf(window).front().role, QAccessible::Dialog);
            EXPECT_NE(controlsOf(window).front().name, "");
        }
        most = std::max(most, controlsOf(window).size());
    });
    EXPECT_GT(most, 50U) << "the walk finds what is there";
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
    EXPECT_THAT(namesOf(tabWalk()), ::testing::IsSupersetOf({"noticeAction", "dismissNotice"}));
}

TEST_F(Accessibility, NamesSayWhatAControlIsFor) {
    openFullMain();
    for (const auto& [object, name] :
         {std::pair("searchField", "Zoek op naam, model of item..."),
          std::pair("scannerField", "Scan QR of typ setdata..."),
          std::pair("deleteShootButton", "Shoot verwijderen (inclusief alle sets erin)"),
          std::pair("updateButton", "v2.0 beschikbaar"), std::pair("statBadge", "Sets: 3")})
        EXPECT_EQ(nameOf(find(main(), object)), name);
    auto* const list = QAccessible::queryAccessibleInterface(&find(main(), "setList"));
    EXPECT_EQ(nameOf(*list->child(0)), "Set 3 — Marvis");
    EXPECT_EQ(nameOf(*list->child(1)), "Set 2 — Marvis, ACTIEF");
    EXPECT_EQ(list->child(0)->text(QAccessible::Description), "Set 1 van 3");
    for (const auto& [object, name] :
         {std::pair("qrButton", "Toon QR-code"), std::pair("editButton", "Bewerken"),
          std::pair("deleteButton", "Verwijderen")}) {
        auto& button = find(*rows().front(), object);
        EXPECT_EQ(nameOf(button), name);
        // Whose it is, is told of the one that is reached.
        button.setFocus();
        EXPECT_EQ(button.accessibleDescription(), "Set 3 — Marvis");
    }
}

TEST_F(Accessibility, BoxesSayWhatTheyAreForAndTheWheelChangesNone) {
    openFullMain();
    addProduct("broek", {}, "Nike");
    for (const auto& [window, name] :
         {std::pair("main", "Shoot"), std::pair("newShootSheet", "Klant (optioneel)"),
          std::pair("catalogSheet", "Merk"), std::pair("editProductSheet", "Merk")}) {
        SCOPED_TRACE(window);
        auto& box = *openWindow(window).findChild<QComboBox*>();
        EXPECT_EQ(nameOf(box), name);
        const int chosen = box.currentIndex();
        for (const int turned : {-120, 120}) {
            QWheelEvent wheel({5, 5}, box.mapToGlobal(QPointF(5, 5)), {}, {0, turned}, {}, {},
                              Qt::NoScrollPhase, false);
            QApplication::sendEvent(&box, &wheel);
            EXPECT_EQ(box.currentIndex(), chosen);
        }
        EXPECT_EQ(box.focusPolicy() & Qt::WheelFocus, Qt::StrongFocus);
        closeSheets();
    }
}

TEST_F(Accessibility, InvisiblePickerIsOutOfReach) {
    openMain();
    auto& picker = find(main(), "shootPicker");
    for (const bool isThere : {false, true}) {
        addShoot("Ibiza");
        EXPECT_NE(QAccessible::queryAccessibleInterface(&picker)->state().invisible, isThere);
        find(main(), "scannerField").setFocus();
        EXPECT_EQ(std::ranges::count(tabWalk(), &picker), isThere ? 1 : 0);
    }
}

TEST_F(Accessibility, TabReachesEverythingOnTheMainWindow) {
    openMain();
    find(main(), "clientsButton").setFocus();
    EXPECT_THAT(missedBy(tabWalk(), main()), IsEmpty()) << "without a shoot";
    openFullMain();
    auto& list = find<ui::RecyclingList>(main(), "setList");
    list.setCurrentRow(0);
    for (const auto key : {Qt::Key_Tab, Qt::Key_Backtab}) {
        find(main(), "searchField").setFocus();
        auto reached = tabWalk(key);
        EXPECT_THAT(reached, ::testing::Contains(&list));
        // A list's other rows are reached with the arrow keys.
        for (std::size_t place = 1; place < rows().size(); ++place)
            std::ranges::copy(rows()[place]->findChildren<QAbstractButton*>(), std::back_inserter(reached));
        EXPECT_THAT(missedBy(reached, main()), IsEmpty());
    }
}

TEST_F(Accessibility, TabGoesDownTheGeneratorsFormAndReachesEverything) {
    auto& view = openGenerator();
    EXPECT_THAT(missedBy(tabWalk(), view), IsEmpty());
    for (const auto* const name : {"addItemButton", "addItemButton", "generateButton"})
        click(view, name);
    for (const auto key : {Qt::Key_Backtab, Qt::Key_Tab}) {
        find(view, "setNumber").setFocus();
        EXPECT_THAT(missedBy(tabWalk(key), view), IsEmpty());
    }
    find(view, "setNumber").setFocus();
    auto order = namesOf(tabWalk());
    order.resize(12);
    EXPECT_THAT(order, ::testing::ElementsAre("setNumber", "brand", "model", "location", "itemName",
                                              "itemColor", "removeItemButton", "itemName", "itemColor",
                                              "removeItemButton", "addItemButton", "generateButton"));
}

} // namespace
} // namespace vantor::testing
