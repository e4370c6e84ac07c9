// SheetTest: the sheets as they open from the main window, looked at and typed into as a user would.
#pragma once

#include "tests/ui/ui_fixture.h"
#include "ui/widgets/widgets.h"

namespace vantor::testing {

// The names of what Tab comes to, from where the focus is until it is there again.
[[nodiscard]] std::vector<std::string> tabWalk();

class SheetTest : public UiTest {
protected:
    // From the main window, which is opened first unless it is.
    QDialog& openNewShoot() { return openWith("newShootButton", "newShootSheet"); }
    QDialog& openNewSet() { return openWith("newSetButton", "newSetSheet"); }
    QDialog& openSetImport() { return openWith("importButton", "importSheet"); }
    QDialog& openBulkExport() { return openWith("bulkExportButton", "bulkExportSheet"); }
    QDialog& openCatalog() { return openWith("catalogButton", "catalogSheet"); }
    QDialog& openClients() { return openWith("clientsButton", "clientsSheet"); }
    // The first set in sight.
    QDialog& openEditSet();
    QDialog& openEditProduct(const char* button = "editProductButton");
    QDialog& openCatalogImport();

    // A sheet that stands over another one.
    QDialog& openFrom(const QWidget& below, const char* button, const char* name);

    // Waits until the sheet of that name, or the message, has the window system's attention.
    QDialog& awaitSheet(const char* name);

    // What the rows of a list say, from the top.
    [[nodiscard]] static std::vector<std::string> rowTexts(const QWidget& sheet, const char* name);

private:
    QDialog& openWith(const char* button, const char* name);
};

// What the focus is on; the test fails when it is on nothing.
[[nodiscard]] QWidget& focused();
void press(int key, Qt::KeyboardModifiers modifiers = {});

} // namespace vantor::testing
