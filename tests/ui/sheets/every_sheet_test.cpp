#include "tests/ui/sheets/sheet_test.h"
#include "ui/theme.h"

#include <QAccessible>
#include <QScrollBar>
#include <ostream>

namespace vantor::testing {
namespace {

struct SheetCase {
    const char* name;
    // Where it starts.
    const char* focus;
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

TEST_P(EverySheetTest, FitsASmallScreen) {
    const auto& sheet = openIt();
    EXPECT_LE(sheet.width(), 1024);
    EXPECT_LE(sheet.height(), 700);
    EXPECT_LE(sheet.minimumSizeHint().height(), 700);
    EXPECT_LE(sheet.sizeHint().width(), 1024);
}

TEST_P(EverySheetTest, NothingIsCutOff) {
    const auto& sheet = openIt();
    for (const auto* const widget : sheet.findChildren<QWidget*>()) {
        if (!widget->isVisible() || widget->window() != &sheet)
            continue;
        const auto name = widget->objectName().toStdString();
        if (const auto* const label = qobject_cast<const QLabel*>(widget)) {
            const int needed =
                label->wordWrap() ? label->heightForWidth(label->width()) : label->sizeHint().height();
            EXPECT_GE(label->height(), needed) << label->text().toStdString();
            EXPECT_TRUE(label->wordWrap() || label->width() >= label->sizeHint().width())
                << label->text().toStdString();
        } else if (const auto* const button = qobject_cast<const QAbstractButton*>(widget)) {
            EXPECT_GE(button->width(), button->minimumSizeHint().width()) << name;
            EXPECT_GE(button->height(), button->minimumSizeHint().height()) << name;
        } else if (const auto* const field = qobject_cast<const QLineEdit*>(widget)) {
            EXPECT_GE(field->height(), field->minimumSizeHint().height()) << name;
        }
    }
}

TEST_P(EverySheetTest, PlaceholdersCanBeReadWhole) {
    const auto& sheet = openIt();
    for (const auto* const field : sheet.findChildren<QLineEdit*>()) {
        if (!field->isVisible())
            continue;
        EXPECT_LE(field->fontMetrics().horizontalAdvance(field->placeholderText()), field->width() - 8)
            << field->placeholderText().toStdString();
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
    EXPECT_GE(seen, 3U);
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
    EXPECT_EQ(prominent, 1U);
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
                         ::testing::Values(SheetCase{"newShootSheet", "shootNameField"},
                                           SheetCase{"newSetSheet", "setNumberField"},
                                           SheetCase{"editSetSheet", "setNumberField"},
                                           SheetCase{"importSheet", "csvText"},
                                           SheetCase{"bulkExportSheet", "exportButton"},
                                           SheetCase{"catalogSheet", "newBrandField"},
                                           SheetCase{"editProductSheet", "productNameField"},
                                           SheetCase{"catalogImportSheet", "csvText"},
                                           SheetCase{"clientsSheet", "newClientField"}),
                         [](const auto& tested) { return std::string(tested.param.name); });

} // namespace
} // namespace vantor::testing
