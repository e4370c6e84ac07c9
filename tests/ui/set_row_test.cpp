#include "tests/ui/ui_fixture.h"
#include "ui/frame/theme.h"

#include <QContextMenuEvent>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>

namespace vantor::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
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

    [[nodiscard]] QMessageBox& question() { return dynamic_cast<QMessageBox&>(sheet("confirmation")); }

    void showTaggedCount(std::int64_t count) {
        auto set = shoot().sets[0];
        set.taggedCount = count;
        manager().updateSet(set.id, set);
        settle();
    }
};

TEST_F(SetRowTest, ShowsASet) {
    openMain();
    addShoot("Ibiza");
    manager().addSet(shoot().id, noorderlicht());
    settle();
    EXPECT_EQ(textOf(row(), "headline"), "Set 12 — Noorderlicht");
    EXPECT_EQ(textOf(row(), "description"), QString::fromStdString(noorderlicht().description()));
    EXPECT_EQ(textOf(row(), "taggedCount"), "0");
    std::vector<std::string> texts;
    for (const auto* const label : row().findChildren<QLabel*>())
        texts.push_back(label->text().toStdString());
    EXPECT_THAT(texts, ::testing::UnorderedElementsAre("0", "foto's"));
    EXPECT_EQ(textOf(row(), "activateButton"), "Activeer");
    EXPECT_EQ(textOf(row(), "activeTag"), "ACTIEF");
}

TEST_F(SetRowTest, TellsTheHelpTextsOfItsButtonsInOrder) {
    openMainWithSets(1);
    std::vector<std::pair<int, std::string>> helps;
    for (const auto* const button : row().findChildren<QToolButton*>())
        helps.emplace_back(button->x(), button->toolTip().toStdString());
    std::ranges::sort(helps);
    ASSERT_THAT(helps, SizeIs(3));
    EXPECT_EQ(helps[0].second, "Toon QR-code");
    EXPECT_EQ(helps[1].second, "Bewerken");
    EXPECT_EQ(helps[2].second, "Verwijderen");
    EXPECT_GT(find(row(), "activateButton").x(), helps[2].first);
    EXPECT_LT(find(row(), "activeMarker").x(), find(row(), "headline").x());
    EXPECT_LT(find(row(), "headline").x(), find(row(), "taggedCount").x());
    EXPECT_LT(find(row(), "taggedCount").x(), helps[0].first);
}

TEST_F(SetRowTest, ShowsTheCountOfPhotosInGreenFromOneOn) {
    openMainWithSets(1);
    const auto colorOfCount = [&] {
        return find<QLabel>(row(), "taggedCount").palette().color(QPalette::WindowText);
    };
    const auto palette = row().palette();
    EXPECT_EQ(textOf(row(), "taggedCount"), "0");
    EXPECT_EQ(colorOfCount(), ui::theme::secondaryText(palette));
    showTaggedCount(1);
    EXPECT_EQ(textOf(row(), "taggedCount"), "1");
    EXPECT_EQ(colorOfCount(), ui::theme::green(palette));
    showTaggedCount(-1);
    EXPECT_EQ(textOf(row(), "taggedCount"), "-1");
    EXPECT_EQ(colorOfCount(), ui::theme::secondaryText(palette));
    showTaggedCount(9'223'372'036'854'775'807);
    EXPECT_EQ(textOf(row(), "taggedCount"), "9223372036854775807");
}

TEST_F(SetRowTest, MarksTheActiveSetWithoutMovingAnything) {
    openMainWithSets(2);
    const auto places = [&] {
        std::vector<QRect> all;
        for (const auto* const name :
             {"activeMarker", "headline", "taggedCount", "qrButton", "editButton", "deleteButton"})
            all.push_back(find(row(), name).geometry());
        return all;
    };
    const auto marker = [&] {
        auto& widget = find(row(), "activeMarker");
        EXPECT_EQ(widget.size(), QSize(8, 8));
        return row().grab().toImage().pixelColor(widget.geometry().center());
    };
    const auto before = places();
    EXPECT_NE(marker(), ui::theme::green(row().palette()));
    EXPECT_TRUE(isShown(row(), "activateButton"));
    EXPECT_FALSE(isShown(row(), "activeTag"));

    click(row(), "activateButton");
    EXPECT_EQ(manager().activeSetId(), shoot().sets[0].id);
    EXPECT_FALSE(isShown(row(), "activateButton"));
    EXPECT_TRUE(isShown(row(), "activeTag"));
    EXPECT_EQ(marker(), ui::theme::green(row().palette()));
    EXPECT_EQ(places(), before);

    click(row(1), "activateButton");
    EXPECT_TRUE(isShown(row(), "activateButton"));
    EXPECT_FALSE(isShown(row(), "activeTag"));
    EXPECT_NE(marker(), ui::theme::green(row().palette()));
}

TEST_F(SetRowTest, OpensTheSetsQrSheet) {
    openMainWithSets(2);
    click(row(1), "qrButton");
    EXPECT_EQ(textOf(sheet("qrSheet"), "sheetTitle"), "QR-code: Set 2 — Marvis");
}

TEST_F(SetRowTest, OpensTheSetsEditSheet) {
    openMainWithSets(2);
    click(row(1), "editButton");
    EXPECT_EQ(find<QLineEdit>(sheet("editSetSheet"), "setNumberField").text(), "2");
}

TEST_F(SetRowTest, AsksBeforeItDeletes) {
    openMainWithSets(2);
    click(row(1), "deleteButton");
    EXPECT_EQ(question().text(), "Set \"Set 2 — Marvis\" verwijderen?");
    EXPECT_EQ(question().informativeText(), "");
    ASSERT_THAT(question().buttons(), SizeIs(2));
    EXPECT_EQ(find<QAbstractButton>(question(), "confirmDeletion").text(), "Verwijderen");
    EXPECT_EQ(find<QAbstractButton>(question(), "cancelDeletion").text(), "Annuleer");
    EXPECT_TRUE(find<QPushButton>(question(), "cancelDeletion").isDefault());
    click(question(), "confirmDeletion");
    EXPECT_FALSE(isOpen("confirmation"));
    ASSERT_THAT(shoot().sets, SizeIs(1));
    EXPECT_EQ(shoot().sets[0].setNumber, "1");
}

TEST_F(SetRowTest, DeletesNothingOnReturnEscapeOrAnnuleer) {
    openMainWithSets(2);
    click(row(), "deleteButton");
    ASSERT_TRUE(QTest::qWaitForWindowActive(&question()));
    QTest::keyClick(&question(), Qt::Key_Return);
    settle();
    EXPECT_FALSE(isOpen("confirmation"));
    click(row(), "deleteButton");
    QTest::keyClick(&question(), Qt::Key_Escape);
    settle();
    EXPECT_FALSE(isOpen("confirmation"));
    click(row(), "deleteButton");
    click(question(), "cancelDeletion");
    EXPECT_FALSE(isOpen("confirmation"));
    EXPECT_THAT(shoot().sets, SizeIs(2));
}

TEST_F(SetRowTest, DeletesTheSetThatWasAskedAboutWhateverTheRowShowsByThen) {
    openMainWithSets(2);
    click(row(0), "deleteButton");
    addSet("0");
    click(question(), "confirmDeletion");
    ASSERT_THAT(shoot().sets, SizeIs(2));
    EXPECT_EQ(shoot().sets[0].setNumber, "0");
    EXPECT_EQ(shoot().sets[1].setNumber, "2");
}

TEST_F(SetRowTest, HasAMenuOfFourEntries) {
    openMainWithSets(1);
    std::vector<std::string> texts;
    auto& menu = openMenu(row());
    for (const auto* const action : menu.actions()) {
        texts.push_back(action->text().toStdString());
        EXPECT_FALSE(action->icon().isNull()) << texts.back();
    }
    EXPECT_THAT(texts, ElementsAre("Bewerken", "QR-code tonen", "Activeren", "Verwijderen"));
    QTest::keyClick(&menu, Qt::Key_Escape);
    settle();
}

TEST_F(SetRowTest, MenuDoesWhatItSays) {
    openMainWithSets(3);
    chooseInMenu(row(1), QStringLiteral("Bewerken"));
    EXPECT_EQ(find<QLineEdit>(sheet("editSetSheet"), "setNumberField").text(), "2");
    sheet("editSetSheet").close();
    settle();
    chooseInMenu(row(2), QStringLiteral("QR-code tonen"));
    EXPECT_EQ(textOf(sheet("qrSheet"), "sheetTitle"), "QR-code: Set 3 — Marvis");
    sheet("qrSheet").close();
    settle();
    chooseInMenu(row(1), QStringLiteral("Activeren"));
    EXPECT_EQ(manager().activeSetId(), shoot().sets[1].id);
    chooseInMenu(row(2), QStringLiteral("Verwijderen"));
    EXPECT_EQ(question().text(), "Set \"Set 3 — Marvis\" verwijderen?");
    EXPECT_TRUE(find<QPushButton>(question(), "cancelDeletion").isDefault());
    click(question(), "cancelDeletion");
    EXPECT_THAT(shoot().sets, SizeIs(3));
    chooseInMenu(row(2), QStringLiteral("Verwijderen"));
    click(question(), "confirmDeletion");
    EXPECT_THAT(shoot().sets, SizeIs(2));
}

TEST_F(SetRowTest, ActivatesTheActiveSetOnceMoreFromItsMenu) {
    openMainWithSets(1);
    click(row(), "activateButton");
    EXPECT_THAT(shoot().activationLog, SizeIs(1));
    chooseInMenu(row(), QStringLiteral("Activeren"));
    EXPECT_THAT(shoot().activationLog, SizeIs(2));
}

TEST_F(SetRowTest, MenuSpeaksOfTheSetThatItWasOpenedOn) {
    openMainWithSets(2);
    auto& menu = openMenu(row(0));
    const auto meant = shoot().sets[0].id;
    addSet("0");
    for (auto* const action : menu.actions()) {
        if (action->text() == QLatin1String("Activeren"))
            action->trigger();
    }
    menu.close();
    settle();
    EXPECT_EQ(manager().activeSetId(), meant);
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
