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
        const auto& label = find<QLabel>(row(), "taggedCount");
        EXPECT_EQ(label.text(), QString::number(count));
        EXPECT_EQ(label.palette().color(QPalette::WindowText),
                  count > 0 ? ui::theme::green(row().palette()) : ui::theme::secondaryText(row().palette()))
            << count;
        const auto widthOf = [&](char digit) {
            return label.fontMetrics().horizontalAdvance(QLatin1Char(digit));
        };
        for (char digit = '1'; digit <= '9'; ++digit)
            EXPECT_EQ(widthOf(digit), widthOf('0')) << "digits of even width";
    }
}

TEST_F(SetRowTest, MarksTheActiveSetWithoutMovingAnything) {
    openMainWithSets(2);
    std::optional<std::vector<QRect>> before;
    const auto expectFirstMarked = [&](bool isActive) {
        std::vector<QRect> places;
        for (const auto* const name :
             {"activeMarker", "headline", "taggedCount", "qrButton", "editButton", "deleteButton"})
            places.push_back(find(row(), name).geometry());
        EXPECT_EQ(places, before.value_or(places));
        before = places;
        EXPECT_EQ(places.front().size(), QSize(8, 8));
        EXPECT_EQ(row().grab().toImage().pixelColor(places.front().center()) ==
                      ui::theme::green(row().palette()),
                  isActive);
        EXPECT_EQ(isShown(row(), "activateButton"), !isActive);
        EXPECT_EQ(isShown(row(), "activeTag"), isActive);
    };
    expectFirstMarked(false);
    for (const std::size_t place : {0U, 1U}) {
        click(row(place), "activateButton");
        EXPECT_EQ(manager().activeSetId(), shoot().sets[place].id);
        expectFirstMarked(place == 0);
    }
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
