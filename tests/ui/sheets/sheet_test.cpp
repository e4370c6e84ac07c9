#include "tests/ui/sheets/sheet_test.h"

#include <QScrollArea>

namespace vantor::testing {
namespace {

struct Piece {
    QRect place;
    std::string text;
};

bool standsInside(const QWidget* widget, const QWidget& sheet) {
    for (const auto* above = widget->parentWidget(); above != nullptr && above != &sheet;
         above = above->parentWidget()) {
        if (dynamic_cast<const ui::RecyclingList*>(above) != nullptr ||
            qobject_cast<const QComboBox*>(above) != nullptr ||
            qobject_cast<const QPlainTextEdit*>(above) != nullptr)
            return true;
    }
    return false;
}

std::string pieceOf(const QWidget& widget) {
    if (const auto* const field = qobject_cast<const QLineEdit*>(&widget))
        return "[" + field->placeholderText().toStdString() + "]";
    if (const auto* const box = qobject_cast<const QComboBox*>(&widget))
        return "<" + box->itemText(0).toStdString() + ">";
    if (qobject_cast<const QPlainTextEdit*>(&widget) != nullptr)
        return "(text)";
    if (dynamic_cast<const ui::RecyclingList*>(&widget) != nullptr)
        return "(list)";
    if (const auto* const button = qobject_cast<const QAbstractButton*>(&widget);
        button != nullptr && button->text().isEmpty())
        return "{" + button->toolTip().toStdString() + "}";
    return textOf(widget).toStdString();
}

} // namespace

std::vector<std::string> linesOf(const QWidget& sheet) {
    std::vector<Piece> pieces;
    for (const auto* const widget : sheet.findChildren<QWidget*>()) {
        if (!widget->isVisible() || widget->window() != &sheet || standsInside(widget, sheet))
            continue;
        if (auto text = pieceOf(*widget); !text.empty())
            pieces.push_back({{widget->mapTo(&sheet, QPoint()), widget->size()}, std::move(text)});
    }
    std::ranges::sort(pieces, {}, [](const Piece& piece) { return piece.place.center().y(); });
    std::vector<std::string> lines;
    for (auto first = pieces.begin(); first != pieces.end();) {
        const auto last = std::find_if(first, pieces.end(), [&](const Piece& piece) {
            return piece.place.center().y() > first->place.center().y() + 8;
        });
        std::sort(first, last, [](const Piece& a, const Piece& b) { return a.place.x() < b.place.x(); });
        std::string line;
        for (; first != last; ++first)
            line += (line.empty() ? "" : " / ") + first->text;
        lines.push_back(std::move(line));
    }
    return lines;
}

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
