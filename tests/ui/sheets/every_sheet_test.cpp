#include "tests/ui/sheets/sheet_test.h"
#include "ui/frame/theme.h"

#include <QAccessible>
#include <QScrollBar>
#include <ostream>

namespace vantor::testing {
namespace {

struct SheetCase {
    const char* name;
    // Where it starts.
    const char* focus;
    // How large; without a height it is as high as its contents, and can be no higher.
    QSize size;
};

void PrintTo(const SheetCase& each, std::ostream* out) {
    *out << each.name;
}

class EverySheetTest : public SheetTest, public ::testing::WithParamInterface<SheetCase> {
protected:
    EverySheetTest() {
        openMainWithSets(1);
        addSet("7", "Nike", {SetItem::make("jas", "rood"), SetItem::make("broek", "")});
        addProduct("sweater", {"rood", "blauw"}, "Nike");
        catalog().addClient("Anna");
        // What stands in a version.
        manager().deleteShoot(addShoot("Weg"));
        settle();
    }

    QDialog& openIt() {
        openWindow(GetParam().name);
        return awaitSheet(GetParam().name);
    }
};

TEST_P(EverySheetTest, BlocksItsWindowAndStartsWhereItIsFirstTyped) {
    const auto& sheet = openIt();
    EXPECT_EQ(sheet.windowModality(), Qt::WindowModal);
    EXPECT_NE(sheet.parentWidget(), nullptr);
    EXPECT_EQ(focused().objectName(), GetParam().focus);
    const QSize first = GetParam().size;
    EXPECT_EQ(sheet.size(),
              QSize(first.width(), first.height() != 0 ? first.height() : sheet.maximumHeight()));

    const auto& title = find<QLabel>(sheet, "sheetTitle");
    EXPECT_EQ(title.text(), sheet.windowTitle());
    EXPECT_TRUE(title.font().bold());
    EXPECT_GT(title.font().pointSizeF(), 1.3 * ui::theme::bodyFont().pointSizeF());
    const auto prominent =
        std::ranges::count_if(sheet.findChildren<QPushButton*>(), [&](const QPushButton* button) {
            return button->window() == &sheet && dynamic_cast<const ui::ProminentButton*>(button) != nullptr;
        });
    EXPECT_EQ(prominent, GetParam().name == std::string("shortcutsSheet") ? 0 : 1);
}

TEST_P(EverySheetTest, OnlyEscapeClosesItAloneAndChangesNothing) {
    auto& sheet = openIt();
    const auto before = m_files.files;
    const auto* const below = sheet.parentWidget();
    // On a button that has the focus Return is Space.
    if (auto* const focused = sheet.focusWidget())
        focused->clearFocus();
    QTest::keyClick(&sheet, Qt::Key_Return);
    settle();
    EXPECT_TRUE(isOpen(GetParam().name));
    EXPECT_TRUE(m_dialogs.proposedNames.empty());
    QTest::keyClick(&sheet, Qt::Key_Escape);
    settle();
    EXPECT_FALSE(isOpen(GetParam().name));
    EXPECT_TRUE(below->isVisible());
    EXPECT_EQ(m_files.files, before);
    if (below == m_main.get()) {
        returnToMain();
        EXPECT_EQ(focused().objectName(), "scannerField");
    }
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

TEST_P(EverySheetTest, StartsAfreshAtEachOpening) {
    auto& first = openIt();
    const auto before = stateOf(first);
    for (auto* const field : first.findChildren<QLineEdit*>())
        field->setText("half");
    for (auto* const editor : first.findChildren<QPlainTextEdit*>())
        editor->setPlainText("half");
    for (auto* const box : first.findChildren<QComboBox*>())
        box->setCurrentIndex(box->count() - 1);
    for (auto* const button : first.findChildren<QAbstractButton*>()) {
        if (button->isCheckable() && !button->isChecked())
            button->click();
    }
    closeSheets();
    EXPECT_EQ(stateOf(openIt()), before);
}

TEST_P(EverySheetTest, NamesEachControlForAssistiveTechnology) {
    auto& sheet = openIt();
    std::size_t seen = 0;
    for (auto* const widget : sheet.findChildren<QWidget*>()) {
        if (widget->window() != &sheet || !widget->isVisible() ||
            (widget->focusPolicy() == Qt::NoFocus && qobject_cast<QAbstractButton*>(widget) == nullptr) ||
            qobject_cast<QScrollBar*>(widget) != nullptr)
            continue;
        auto* const told = QAccessible::queryAccessibleInterface(widget);
        ASSERT_NE(told, nullptr) << widget->objectName().toStdString();
        EXPECT_NE(told->text(QAccessible::Name).trimmed(), "")
            << widget->metaObject()->className() << " " << widget->objectName().toStdString();
        EXPECT_NE(widget->objectName(), "") << told->text(QAccessible::Name).toStdString();
        ++seen;
    }
    EXPECT_GE(seen, 1U);
    auto* const whole = QAccessible::queryAccessibleInterface(&sheet);
    ASSERT_NE(whole, nullptr);
    EXPECT_NE(whole->text(QAccessible::Name), "");
    EXPECT_EQ(whole->role(), QAccessible::Dialog);
}

TEST_P(EverySheetTest, ManyOpeningsAndClosingsLeaveNothingBehind) {
    const auto count = [] { return QApplication::allWidgets().size(); };
    openIt();
    closeSheets();
    const auto before = count();
    for (int i = 0; i < 3; ++i) {
        openIt();
        closeSheets();
    }
    EXPECT_EQ(count(), before);
}

INSTANTIATE_TEST_SUITE_P(Sheets, EverySheetTest,
                         ::testing::Values(SheetCase{"newShootSheet", "shootNameField", {400, 0}},
                                           SheetCase{"newSetSheet", "setNumberField", {450, 0}},
                                           SheetCase{"editSetSheet", "setNumberField", {450, 0}},
                                           SheetCase{"importSheet", "csvText", {550, 400}},
                                           SheetCase{"bulkExportSheet", "exportButton", {480, 560}},
                                           SheetCase{"catalogSheet", "newBrandField", {640, 640}},
                                           SheetCase{"editProductSheet", "productNameField", {400, 0}},
                                           SheetCase{"catalogImportSheet", "csvText", {550, 460}},
                                           SheetCase{"clientsSheet", "newClientField", {460, 500}},
                                           SheetCase{"versionsSheet", "versionList", {860, 470}},
                                           SheetCase{"shortcutsSheet", "closeButton", {520, 0}}),
                         [](const auto& tested) { return std::string(tested.param.name); });

} // namespace
} // namespace vantor::testing
