#include "base/text.h"
#include "tests/support/read_file.h"
#include "tests/ui/ui_fixture.h"
#include "ui/frame/theme.h"
#include "ui/widgets/widgets.h"

#include <QScreen>
#include <QScrollBar>

namespace vantor::testing {
namespace {

class EverySheetTest : public UiTest, public ::testing::WithParamInterface<const char*> {
protected:
    void fillMain() {
        openMainWithSets(1);
        addSet("7", "Nike", {SetItem::make("jas", "rood"), SetItem::make("broek", "")});
        addProduct("sweater", {"rood", "blauw"}, "Nike");
        catalog().addBrand("Nike");
        catalog().addClient("Anna");
        // What stands in a version.
        manager().deleteShoot(addShoot("Weg"));
        settle();
    }
};

void fillIn(const QWidget& sheet) {
    for (auto* const field : sheet.findChildren<QLineEdit*>())
        field->setText("x");
    for (auto* const editor : sheet.findChildren<QPlainTextEdit*>())
        editor->setPlainText("x");
    for (auto* const box : sheet.findChildren<QComboBox*>())
        choose(*box, box->itemText(box->count() - 1));
    for (auto* const button : sheet.findChildren<QAbstractButton*>()) {
        if (button->isCheckable() && !button->isChecked())
            button->click();
    }
    settle();
}

// What can be changed in a sheet.
std::vector<QString> stateOf(const QWidget& sheet) {
    std::vector<QString> state;
    for (const auto* const field : sheet.findChildren<QLineEdit*>())
        state.push_back(field->text());
    for (const auto* const editor : sheet.findChildren<QPlainTextEdit*>())
        state.push_back(editor->toPlainText());
    for (const auto* const box : sheet.findChildren<QComboBox*>())
        state.push_back(box->currentText());
    for (const auto* const button : sheet.findChildren<QAbstractButton*>())
        state.push_back(button->isChecked() ? "checked" : "");
    return state;
}

// A sheet as data/sheets.txt has it, and how it is filled in on the way. One that can be no higher than its contents is as
// high as they are.
std::string described(const QWidget& sheet) {
    std::string text =
        std::to_string(sheet.width()) + " x " +
        (sheet.height() == sheet.maximumHeight() ? "contents" : std::to_string(sheet.height()));
    text += "\nprominent:";
    for (const auto* const button : sheet.findChildren<QPushButton*>()) {
        if (button->window() == &sheet && dynamic_cast<const ui::ProminentButton*>(button) != nullptr)
            text += " " + button->objectName().toStdString();
    }
    const auto note = [&](const char* heading) {
        text += heading + joined(linesOf(sheet), "\n");
        for (auto* const area : sheet.findChildren<QAbstractScrollArea*>()) {
            const auto* const list = dynamic_cast<ui::RecyclingList*>(area);
            if (list == nullptr || list->rowCount() == 0 || !list->isVisible())
                continue;
            for (const auto* const button : list->rowWidget(0)->findChildren<QAbstractButton*>())
                text += ("\nin a row: " + button->text() + " " + button->toolTip()).toStdString();
        }
    };
    note("\n\n");
    fillIn(sheet);
    note("\n\nFilled in:\n");
    return text + "\n\nTab: " + joined(namesOf(tabWalk()), " ") + "\n";
}

void expectAsDescribed(const QWidget& sheet, const std::string& heading) {
    const auto all = "\n" + readFile(VANTOR_TEST_DATA "/sheets.txt") + "\n# ";
    const auto begin = all.find("\n# " + heading + "\n") + heading.size() + 4;
    EXPECT_EQ(described(sheet), all.substr(begin, all.find("\n# ", begin) - begin));
}

TEST_P(EverySheetTest, IsAsDescribedAndBlocksItsWindow) {
    fillMain();
    const auto& sheet = openWindow(GetParam());
    EXPECT_EQ(sheet.windowModality(), Qt::WindowModal);
    EXPECT_NE(sheet.parentWidget(), nullptr);
    const auto& title = find(sheet, "sheetTitle");
    EXPECT_EQ(textOf(title), sheet.windowTitle());
    EXPECT_TRUE(title.font().bold());
    // That of a code names its set.
    const double larger = GetParam() == std::string("qrSheet") ? 1.05 : 1.3;
    EXPECT_GT(title.font().pointSizeF(), larger * ui::theme::bodyFont().pointSizeF());
    expectAsDescribed(sheet, GetParam());
}

class EmptySheetTest : public UiTest {};

TEST_F(EmptySheetTest, SaysThatThereIsNothingYet) {
    openMain();
    for (const auto* const name : {"clientsSheet", "catalogSheet", "versionsSheet"}) {
        expectAsDescribed(openWindow(name), std::string(name) + " of nothing");
        closeSheets();
    }
}

TEST_P(EverySheetTest, OnlyEscapeClosesItAloneAndChangesNothing) {
    fillMain();
    auto& sheet = openWindow(GetParam());
    const auto before = m_files.files;
    const auto* const below = sheet.parentWidget();
    // On a button that has the focus Return is Space.
    if (auto* const focused = sheet.focusWidget())
        focused->clearFocus();
    QTest::keyClick(&sheet, Qt::Key_Return);
    settle();
    EXPECT_TRUE(isOpen(GetParam()));
    EXPECT_TRUE(m_dialogs.proposedNames.empty());
    QTest::keyClick(&sheet, Qt::Key_Escape);
    settle();
    EXPECT_FALSE(isOpen(GetParam()));
    EXPECT_TRUE(below->isVisible());
    EXPECT_EQ(m_files.files, before);
    if (below == m_main.get()) {
        returnToMain();
        EXPECT_EQ(focused().objectName(), "scannerField");
    }
}

TEST_P(EverySheetTest, StartsAfreshAtEachOpeningAndLeavesNothingBehind) {
    fillMain();
    const auto before = stateOf(openWindow(GetParam()));
    closeSheets();
    const auto widgets = QApplication::allWidgets().size();
    for (int i = 0; i < 3; ++i) {
        const auto& sheet = openWindow(GetParam());
        EXPECT_EQ(stateOf(sheet), before);
        fillIn(sheet);
        closeSheets();
    }
    EXPECT_EQ(QApplication::allWidgets().size(), widgets);
}

class SheetSizeTest : public UiTest {
protected:
    // How large it opens where this is what was remembered of it.
    QSize sizeAfter(const char* name, std::string_view remembered) {
        m_remembered.setText(keyOf(name), remembered);
        const QSize size = openWindow(name).size();
        for (const auto* const bar : sheet(name).findChildren<QScrollBar*>("qt_scrollarea_vscrollbar"))
            EXPECT_EQ(bar->maximum(), 0) << name;
        closeSheets();
        return size;
    }

    static std::string keyOf(const char* name) { return std::string("vantorprep.windowSize.") + name; }
};

TEST_F(SheetSizeTest, IsTheUsersUnlessTheSheetNeedsMoreOrItsScreenHasLess) {
    openMainWithSets(1);
    for (const auto& [name, canGrow] : {std::pair("catalogSheet", true), std::pair("newShootSheet", false)}) {
        SCOPED_TRACE(name);
        const QSize first = openWindow(name).size();
        sheet(name).resize(first + QSize(60, 40));
        settle();
        closeSheets();
        EXPECT_EQ(openWindow(name).size(), first + QSize(60, canGrow ? 40 : 0));
        const QSize least = sheet(name).minimumSizeHint();
        const QSize screen = sheet(name).screen()->availableSize();
        closeSheets();
        for (const auto* const nonsense : {"", "x", "640", "640x", "x640"})
            EXPECT_EQ(sizeAfter(name, nonsense), first) << nonsense;
        for (const auto* const tooSmall : {"1x1", "0x0", "-5x-5"})
            EXPECT_EQ(sizeAfter(name, tooSmall).width(), least.width());
        const QSize largest = sizeAfter(name, "99999x99999");
        EXPECT_GT(largest.width(), first.width() + 60);
        EXPECT_EQ(largest.boundedTo(screen), largest);
    }
}

TEST_F(SheetSizeTest, IsNotRememberedWhereItsContentsMadeIt) {
    openMainWithSets(1);
    const int before = openWindow("newSetSheet").height();
    for (int i = 0; i < 3; ++i)
        click(sheet("newSetSheet"), "addItemButton");
    EXPECT_GT(sheet("newSetSheet").height(), before);
    closeSheets();
    EXPECT_EQ(m_remembered.text(keyOf("newSetSheet")), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Sheets, EverySheetTest, ::testing::ValuesIn(kSheets),
                         [](const auto& tested) { return std::string(tested.param); });

} // namespace
} // namespace vantor::testing
