#include "base/text.h"
#include "tests/ui/ui_fixture.h"
#include "ui/frame/theme.h"

#include <QContextMenuEvent>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <tuple>

namespace vantor::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

class SetRowTest : public UiTest {
protected:
    [[nodiscard]] ui::SetRow& row(std::size_t place = 0) { return *rows().at(place); }

    // Opens the context menu of a row as a click with the other button does.
    QMenu& openMenu(ui::SetRow& on) {
        const auto middle = on.rect().center();
        QContextMenuEvent asked(QContextMenuEvent::Mouse, middle, on.mapToGlobal(middle));
        QApplication::sendEvent(&on, &asked);
        QApplication::processEvents();
        for (auto* const menu : on.findChildren<QMenu*>(QStringLiteral("setMenu"))) {
            if (menu->isVisible())
                return *menu;
        }
        throw std::runtime_error("no menu");
    }

    void chooseInMenu(ui::SetRow& on, const QString& text) {
        auto& menu = openMenu(on);
        for (auto* const action : menu.actions()) {
            if (action->text() != text)
                continue;
            menu.setActiveAction(action);
            QTest::keyClick(&menu, Qt::Key_Return);
            settle();
            return;
        }
        ADD_FAILURE() << "no entry " << text.toStdString();
    }
};

TEST_F(SetRowTest, ShowsASetWithHelpTextsInOrder) {
    openMainWithSets(0);
    manager().addSet(shoot().id, noorderlicht());
    settle();
    EXPECT_EQ(textOf(row(), "description"), QString::fromStdString(noorderlicht().description()));
    EXPECT_EQ(textOf(row(), "activeTag"), "ACTIEF");
    const auto said = joined(linesOf(row()), " / ");
    for (const auto* const text : {"Set 12 — Noorderlicht", "0 / ", "foto's"})
        EXPECT_THAT(said, ::testing::HasSubstr(text));
    EXPECT_THAT(said, ::testing::HasSubstr("{Toon QR-code} / {Bewerken} / {Verwijderen} / Activeer"));
    int before = -1;
    for (const auto* const name : {"activeMarker", "headline", "taggedCount", "qrButton", "editButton",
                                   "deleteButton", "activateButton"}) {
        EXPECT_GT(find(row(), name).x(), before) << name;
        before = find(row(), name).x();
    }
}

TEST_F(SetRowTest, ShowsTheCountOfPhotosInGreenFromOneOn) {
    openMainWithSets(1);
    for (const std::int64_t count : {std::int64_t{0}, std::int64_t{1}, std::int64_t{-1}, INT64_MAX}) {
        auto set = shoot().sets[0];
        set.taggedCount = count;
        manager().updateSet(set.id, set);
        settle();
        auto& label = find(row(), "taggedCount");
        EXPECT_EQ(textOf(label), QString::number(count));
        EXPECT_TRUE(hasInk(label, count > 0 ? ui::theme::green(row().palette())
                                            : ui::theme::secondaryText(row().palette())))
            << count;
    }
}

TEST_F(SetRowTest, ShowsItsStateWithoutMovingAnything) {
    openMainWithSets(2);
    const auto& palette = main().palette();
    auto& list = find<ui::RecyclingList>(main(), "setList");
    const auto placesOf = [&] {
        std::vector<QRect> places;
        for (const auto* const part : row().findChildren<QWidget*>()) {
            if (part->isVisible() && part->objectName() != "activateButton" &&
                part->objectName() != "activeTag")
                places.push_back(part->geometry());
        }
        const auto* const control = isShown(row(), "activeTag") ? "activeTag" : "activateButton";
        const QRect& its = find(row(), control).geometry();
        places.push_back({its.x(), 0, its.width(), 0});
        return places;
    };
    const auto hover = [&](bool isOver) {
        QEnterEvent enter({5, 5}, {5, 5}, {5, 5});
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(&row(), isOver ? static_cast<QEvent*>(&enter) : &leave);
    };
    const auto mixed = ui::theme::mixed(ui::theme::hovered(palette), ui::theme::activeRow(palette), 0.5);
    struct State {
        const char* name;
        std::function<void()> enter;
        bool isActive;
        QColor ground;
        QColor symbol;
    };
    const auto before = placesOf();
    for (const auto& state : {
             State{"at rest", [] {}, false, ui::theme::surface(palette), ui::theme::secondaryText(palette)},
             State{"hovered", [&] { hover(true); }, false, ui::theme::hovered(palette),
                   ui::theme::text(palette)},
             State{"left", [&] { hover(false); }, false, ui::theme::surface(palette),
                   ui::theme::secondaryText(palette)},
             State{"current", [&] { list.setCurrentRow(0); }, false, ui::theme::hovered(palette),
                   ui::theme::text(palette)},
             State{"activated", [&] { click(row(), "activateButton"); }, true, mixed,
                   ui::theme::text(palette)},
             State{"active", [&] { list.setCurrentRow(1); }, true, ui::theme::activeRow(palette),
                   ui::theme::secondaryText(palette)},
             State{"another is", [&] { click(row(1), "activateButton"); }, false, ui::theme::surface(palette),
                   ui::theme::secondaryText(palette)},
         }) {
        SCOPED_TRACE(state.name);
        state.enter();
        settle();
        EXPECT_EQ(placesOf(), before);
        const auto picture = row().grab().toImage();
        const auto& marker = find(row(), "activeMarker");
        EXPECT_EQ(marker.size(), QSize(8, 8));
        for (const auto& place : {marker.geometry().center(), QPoint(1, row().height() / 2)})
            EXPECT_EQ(picture.pixelColor(place) == ui::theme::green(palette), state.isActive);
        EXPECT_EQ(picture.pixelColor(6, 2), state.ground);
        EXPECT_TRUE(hasInk(find(row(), "qrButton"), state.symbol));
        EXPECT_EQ(isShown(row(), "activateButton"), !state.isActive);
        EXPECT_EQ(isShown(row(), "activeTag"), state.isActive);
    }
    EXPECT_EQ(manager().activeSetId(), shoot().sets[1].id);
}

TEST_F(SetRowTest, StandsInTheMiddleWithoutItemsAndEndsAlikeWhetherTheListScrollsOrNot) {
    openMainWithSets(1);
    const auto right = [&] {
        auto& control = find(row(), "activateButton");
        return control.mapTo(&main(), control.rect().topRight()).x();
    };
    EXPECT_NEAR(find(row(), "headline").geometry().center().y(), row().height() / 2, 1);
    EXPECT_EQ(right(), main().width() - ui::theme::kMargin - 1);
    for (int i = 0; i < 40; ++i)
        addSet("x", "Marvis", {SetItem::make("jas", "rood")});
    EXPECT_LT(find(row(), "headline").geometry().bottom(), row().height() / 2);
    EXPECT_EQ(right(), main().width() - ui::theme::kMargin - 1);
}

TEST_F(SetRowTest, ButtonsAndMenuDoWhatTheySay) {
    openMainWithSets(3);
    std::vector<std::string> texts;
    auto& menu = openMenu(row());
    for (const auto* const action : menu.actions()) {
        texts.push_back(action->text().toStdString());
        EXPECT_FALSE(action->icon().isNull()) << texts.back();
    }
    EXPECT_THAT(texts, ElementsAre("Bewerken", "QR-code tonen", "Activeren", "Verwijderen"));
    QTest::keyClick(&menu, Qt::Key_Escape);
    settle();
    for (const auto& [entry, button, name] : {std::tuple("Bewerken", "editButton", "editSetSheet"),
                                              std::tuple("QR-code tonen", "qrButton", "qrSheet"),
                                              std::tuple("Verwijderen", "deleteButton", "confirmation")}) {
        for (const bool byMenu : {true, false}) {
            SCOPED_TRACE(entry);
            if (byMenu)
                chooseInMenu(row(1), entry);
            else
                click(row(1), button);
            auto& opened = sheet(name);
            if (const auto* const question = qobject_cast<QMessageBox*>(&opened)) {
                EXPECT_EQ(question->text(), "Set \"Set 2 — Marvis\" verwijderen?");
            } else if (entry == std::string("Bewerken")) {
                EXPECT_EQ(textOf(opened, "setNumberField"), "2");
            } else {
                EXPECT_EQ(textOf(opened, "sheetTitle"), "QR-code: Set 2 — Marvis");
            }
            closeSheets();
        }
    }
    // The active set once more too.
    for (const std::size_t activations : {1U, 2U}) {
        chooseInMenu(row(1), QStringLiteral("Activeren"));
        EXPECT_EQ(manager().activeSetId(), shoot().sets[1].id);
        EXPECT_THAT(shoot().activationLog, SizeIs(activations));
    }
}

TEST_F(SetRowTest, QuestionAndMenuSpeakOfTheSetThatTheyWereOpenedOnWhateverTheRowShowsByThen) {
    openMainWithSets(2);
    auto& menu = openMenu(row(0));
    addSet("0");
    menu.actions().at(2)->trigger();
    menu.close();
    settle();
    EXPECT_EQ(manager().activeSet()->setNumber, "1");
    click(row(1), "deleteButton");
    addSet("-1");
    click(sheet("confirmation"), "confirmDeletion");
    std::vector<std::string> left;
    for (const auto& set : shoot().sets)
        left.push_back(set.setNumber);
    EXPECT_THAT(left, ElementsAre("-1", "0", "2"));
}

TEST_F(SetRowTest, ElidesLongTextsAndTellsThemWhole) {
    openMainWithSets(0);
    const std::string longBrand(300, 'w');
    addSet("1", longBrand);
    auto& headline = find(row(), "headline");
    EXPECT_LT(headline.width(), headline.sizeHint().width());
    EXPECT_TRUE(headline.toolTip().contains(QString::fromStdString(longBrand)));
    addSet("2", "kort");
    EXPECT_EQ(find(row(), "headline").toolTip(), "");
}

} // namespace
} // namespace vantor::testing
