#include "tests/ui/sheets/sheet_test.h"

namespace vantor::testing {

std::vector<std::string> tabWalk() {
    std::vector<std::string> names;
    const QWidget* const start = QApplication::focusWidget();
    do {
        names.push_back(focused().objectName().toStdString());
        press(Qt::Key_Tab);
    } while (QApplication::focusWidget() != start && names.size() < 50);
    return names;
}

QWidget& focused() {
    auto* const widget = QApplication::focusWidget();
    if (widget == nullptr)
        throw std::runtime_error("nothing has the focus");
    return *widget;
}

void press(int key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(&focused(), static_cast<Qt::Key>(key), modifiers);
    settle();
}

QDialog& SheetTest::openWith(const char* button, const char* name) {
    if (m_main == nullptr)
        openMain();
    return open(button, name);
}

QDialog& SheetTest::awaitSheet(const char* name) {
    settle();
    auto& opened = sheet(name);
    if (!QTest::qWaitForWindowActive(&opened))
        ADD_FAILURE() << name << " does not become active";
    return opened;
}

QDialog& SheetTest::openFrom(const QWidget& below, const char* button, const char* name) {
    click(*allVisible<QAbstractButton>(below, button).at(0));
    return awaitSheet(name);
}

QDialog& SheetTest::openEditSet() {
    return openFrom(*rows().at(0), "editButton", "editSetSheet");
}

QDialog& SheetTest::openEditProduct(const char* button) {
    return openFrom(sheet("catalogSheet"), button, "editProductSheet");
}

QDialog& SheetTest::openCatalogImport() {
    return openFrom(sheet("catalogSheet"), "importButton", "catalogImportSheet");
}

std::vector<std::string> SheetTest::rowTexts(const QWidget& sheet, const char* name) {
    std::vector<std::string> texts;
    for (const auto* const widget : allVisible<QWidget>(sheet, name))
        texts.push_back(textOf(*widget).toStdString());
    return texts;
}

} // namespace vantor::testing
