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
        const std::string name = GetParam().name;
        if (name == "newShootSheet")
            return openNewShoot();
        if (name == "newSetSheet")
            return openNewSet();
        if (name == "editSetSheet")
            return openEditSet();
        if (name == "importSheet")
            return openSetImport();
        if (name == "bulkExportSheet")
            return openBulkExport();
        if (name == "clientsSheet")
            return openClients();
        if (name == "versionsSheet" || name == "shortcutsSheet") {
            openWindow(name);
            return awaitSheet(name.c_str());
        }
        auto& catalogSheet = openCatalog();
        if (name == "editProductSheet")
            return openEditProduct();
        if (name == "catalogImportSheet")
            return openCatalogImport();
        return catalogSheet;
    }
};

TEST_P(EverySheetTest, BlocksItsWindowAndStartsWhereItIsFirstTyped) {
    const auto& sheet = openIt();
    EXPECT_EQ(sheet.windowModality(), Qt::WindowModal);
    EXPECT_NE(sheet.parentWidget(), nullptr);
    EXPECT_EQ(focused().objectName(), GetParam().focus);
}

TEST_P(EverySheetTest, ItsTitleStandsOut) {
    const auto& sheet = openIt();
    const auto& title = find<QLabel>(sheet, "sheetTitle");
    EXPECT_EQ(title.text(), sheet.windowTitle());
    EXPECT_TRUE(title.font().bold());
    EXPECT_GT(title.font().pointSizeF(), 1.3 * ui::theme::bodyFont().pointSizeF());
}

TEST_P(EverySheetTest, EscapeClosesItAloneAndChangesNothing) {
    const auto& sheet = openIt();
    const auto before = m_files.files;
    const auto* const below = sheet.parentWidget();
    press(Qt::Key_Escape);
    EXPECT_FALSE(isOpen(GetParam().name));
    EXPECT_TRUE(below->isVisible());
    EXPECT_EQ(m_files.files, before);
}

TEST_P(EverySheetTest, ReturnOnNothingInParticularPressesNoButton) {
    auto& sheet = openIt();
    const auto before = m_files.files;
    // On a button that has the focus Return is Space.
    if (auto* const focused = sheet.focusWidget())
        focused->clearFocus();
    QTest::keyClick(&sheet, Qt::Key_Return);
    settle();
    EXPECT_TRUE(isOpen(GetParam().name));
    EXPECT_EQ(m_files.files, before);
    EXPECT_TRUE(m_dialogs.proposedNames.empty());
}

TEST_P(EverySheetTest, OpensAtItsSizeWhereItsContentsNeedNoMore) {
    const auto& sheet = openIt();
    const QSize first = GetParam().size;
    EXPECT_EQ(sheet.width(), first.width());
    if (first.height() != 0) {
        EXPECT_EQ(sheet.height(), first.height());
    } else {
        EXPECT_EQ(sheet.height(), sheet.maximumHeight());
    }
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

TEST_P(EverySheetTest, HasOneProminentButtonAtMost) {
    const auto& sheet = openIt();
    std::size_t prominent = 0;
    for (auto* const button : sheet.findChildren<QPushButton*>()) {
        if (button->window() == &sheet && dynamic_cast<ui::ProminentButton*>(button) != nullptr)
            ++prominent;
    }
    EXPECT_EQ(prominent, GetParam().name == std::string("shortcutsSheet") ? 0U : 1U);
}

TEST_P(EverySheetTest, ManyOpeningsAndClosingsLeaveNothingBehind) {
    const auto count = [] { return QApplication::allWidgets().size(); };
    openIt();
    const auto close = [] {
        while (auto* const modal = QApplication::activeModalWidget()) {
            modal->close();
            settle();
        }
    };
    close();
    const auto before = count();
    for (int i = 0; i < 3; ++i) {
        openIt();
        close();
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
