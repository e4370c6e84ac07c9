#include "tests/ui/ui_fixture.h"

#include "base/json.h"
#include "model/shoot_json.h"
#include "ui/frame/beside_window.h"

#include <QLabel>
#include <QMouseEvent>
#include <QToolButton>
#include <algorithm>
#include <utility>

namespace vantor::testing {

using ui::ElidedLabel;
using ui::Tag;

void settle() {
    for (int i = 0; i < 3; ++i) {
        QApplication::processEvents();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

void settleReads() {
    // A file that was read lets the next one be.
    constexpr int kMostInARow = 20;
    for (int i = 0; i < kMostInARow; ++i) {
        ui::readingThreads().waitForDone();
        settle();
    }
}

void click(QAbstractButton& button) {
    ASSERT_TRUE(button.isVisible()) << button.objectName().toStdString();
    ASSERT_TRUE(button.isEnabled()) << button.objectName().toStdString();
    QTest::mouseClick(&button, Qt::LeftButton);
    settle();
}

void click(const QWidget& within, const char* name) {
    click(find<QAbstractButton>(within, name));
}

void doubleClick(QWidget& window, const QPoint& at) {
    for (const auto pressed : {QEvent::MouseButtonPress, QEvent::MouseButtonDblClick}) {
        for (const auto what : {pressed, QEvent::MouseButtonRelease}) {
            auto* const target = window.childAt(at);
            ASSERT_NE(target, nullptr);
            const QPointF local = target->mapFrom(&window, at);
            const auto held = what == pressed ? Qt::LeftButton : Qt::NoButton;
            QMouseEvent event(what, local, window.mapToGlobal(QPointF(at)), Qt::LeftButton, held, {});
            QApplication::sendEvent(target, &event);
        }
        settle();
    }
}

void type(QLineEdit& field, const QString& text) {
    ASSERT_TRUE(field.isVisible()) << field.objectName().toStdString();
    field.setFocus();
    field.selectAll();
    if (text.isEmpty())
        QTest::keyClick(&field, Qt::Key_Delete);
    else
        QTest::keyClicks(&field, text);
    settle();
}

void type(const QWidget& within, const char* name, const QString& text) {
    type(find<QLineEdit>(within, name), text);
}

QStringList entries(const QComboBox& box) {
    QStringList texts;
    for (int i = 0; i < box.count(); ++i)
        texts.append(box.itemText(i));
    return texts;
}

void choose(QComboBox& box, const QString& text) {
    const int wanted = box.findText(text);
    ASSERT_GE(wanted, 0) << text.toStdString();
    box.setFocus();
    while (box.currentIndex() != wanted) {
        const int before = box.currentIndex();
        QTest::keyClick(&box, before < wanted ? Qt::Key_Down : Qt::Key_Up);
        ASSERT_NE(box.currentIndex(), before);
    }
    settle();
}

QString textOf(const QWidget& widget) {
    if (const auto* const label = qobject_cast<const QLabel*>(&widget))
        return label->text();
    if (const auto* const label = dynamic_cast<const ElidedLabel*>(&widget))
        return label->text();
    if (const auto* const tag = dynamic_cast<const Tag*>(&widget))
        return tag->text();
    if (const auto* const button = qobject_cast<const QAbstractButton*>(&widget))
        return button->text();
    if (const auto* const field = qobject_cast<const QLineEdit*>(&widget))
        return field->text();
    return {};
}

namespace {

struct Piece {
    QRect place;
    std::string text;
};

bool standsInside(const QWidget* widget, const QWidget& within) {
    for (const auto* above = widget->parentWidget(); above != nullptr && above != &within;
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

std::vector<std::string> linesOf(const QWidget& within) {
    std::vector<Piece> pieces;
    for (const auto* const widget : within.findChildren<QWidget*>()) {
        if (!widget->isVisible() || widget->window() != within.window() || standsInside(widget, within))
            continue;
        if (auto text = pieceOf(*widget); !text.empty())
            pieces.push_back({{widget->mapTo(&within, QPoint()), widget->size()}, std::move(text)});
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

std::string storeOf(const std::vector<Shoot>& shoots) {
    JsonWriter out(JsonWriter::Layout::Compact);
    writeShoots(out, shoots, DateForm::SecondsSinceReference);
    return std::string(out.written());
}

void pressAt(QWidget& on, std::uint64_t at, int key, const QString& text, Qt::KeyboardModifiers modifiers) {
    QWidget* receiver = QApplication::focusWidget() != nullptr ? QApplication::focusWidget() : &on;
    if (QWidget* const popup = QApplication::activePopupWidget())
        receiver = popup->focusWidget() != nullptr ? popup->focusWidget() : popup;
    if (qt_sendShortcutOverrideEvent(receiver, at, key, modifiers, text))
        return;
    QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
    press.setTimestamp(at);
    QApplication::sendEvent(receiver, &press);
    QKeyEvent release(QEvent::KeyRelease, key, modifiers, text);
    release.setTimestamp(at);
    QApplication::sendEvent(receiver, &release);
}

UiTest::UiTest()
    : m_updates("https://vantor.example/version", "check", "1.2.3", m_http, m_defaults, m_timer,
                m_clock.clock()),
      m_services(servicesOn(m_files)) {}

ui::Services UiTest::servicesOn(const FileStore& files, PdfCanvasFactory canvases) {
    return {
        files,      m_dialogs, m_clipboard,         m_urls,           m_remembered,
        m_encoder,  m_pngs,    std::move(canvases), m_updates,        m_clock.clock(),
        m_document, &m_stores, m_notices,           "vantor.example", "https://vantor.example/handleiding"};
}

UiTest::~UiTest() {
    settle();
    m_generator.reset();
    m_main.reset();
    settle();
}

ui::PrepMainView& UiTest::openMain() {
    m_main = std::make_unique<ui::PrepMainView>(m_services, [this] { ++m_generatorsAsked; });
    m_main->show();
    m_main->activateWindow();
    if (!QTest::qWaitForWindowActive(m_main.get()))
        ADD_FAILURE() << "the main window does not become active";
    settle();
    return *m_main;
}

ui::PrepMainView& UiTest::openMainWithSets(unsigned sets) {
    openMain();
    auto all = Shoot::make("Ibiza Zomer 2026", "Ibiza", "", m_clock.now());
    for (unsigned i = 1; i <= sets; ++i) {
        auto set = SetData::make(m_clock.now());
        set.setNumber = std::to_string(i);
        set.brand = "Marvis";
        all.sets.push_back(std::move(set));
    }
    manager().addShoot(std::move(all));
    settle();
    return *m_main;
}

ui::QRGeneratorView& UiTest::openGenerator() {
    m_generator = std::make_unique<ui::QRGeneratorView>(m_services);
    m_generator->show();
    m_generator->activateWindow();
    if (!QTest::qWaitForWindowActive(m_generator.get()))
        ADD_FAILURE() << "the generator does not become active";
    settle();
    return *m_generator;
}

QDialog& UiTest::sheet(const char* name) const {
    for (auto* const window : QApplication::topLevelWidgets()) {
        if (window->objectName() == QLatin1String(name) && window->isVisible())
            return dynamic_cast<QDialog&>(*window);
    }
    throw std::runtime_error(std::string("not open: ") + name);
}

bool UiTest::isOpen(const char* name) const {
    return std::ranges::any_of(QApplication::topLevelWidgets(), [&](const QWidget* window) {
        return window->objectName() == QLatin1String(name) && window->isVisible();
    });
}

QDialog& UiTest::open(const char* button, const char* sheetName) {
    click(*m_main, button);
    auto& opened = sheet(sheetName);
    if (!QTest::qWaitForWindowActive(&opened))
        ADD_FAILURE() << sheetName << " does not become active";
    return opened;
}

void UiTest::returnToMain() {
    m_main->activateWindow();
    if (!QTest::qWaitForWindowActive(m_main.get()))
        ADD_FAILURE() << "the main window does not become active";
}

void UiTest::closeSheets() {
    while (auto* const modal = QApplication::activeModalWidget()) {
        modal->close();
        settle();
    }
    if (m_main != nullptr && m_main->isVisible())
        returnToMain();
}

Uuid UiTest::addShoot(const std::string& name, const std::string& client) {
    auto added = Shoot::make(name, "", client, m_clock.now());
    const auto shootId = added.id;
    manager().addShoot(std::move(added));
    settle();
    return shootId;
}

Uuid UiTest::addSet(const std::string& number, const std::string& brand, std::vector<SetItem> items) {
    auto set = SetData::make(m_clock.now());
    const auto setId = set.id;
    set.setNumber = number;
    set.brand = brand;
    set.items = std::move(items);
    manager().addSet(shoot().id, std::move(set));
    settle();
    return setId;
}

void UiTest::addProduct(const std::string& name, std::vector<std::string> colors, const std::string& brand) {
    catalog().addProduct(name, std::move(colors), brand);
    settle();
}

void UiTest::give(const char* command) {
    auto& action = find<QAction>(main(), command);
    ASSERT_TRUE(action.isEnabled()) << command;
    action.trigger();
    settle();
}

std::vector<ui::SetRow*> UiTest::rows() {
    std::vector<ui::SetRow*> found;
    for (auto* const row : allVisible<QWidget>(*m_main, "setRow"))
        found.push_back(static_cast<ui::SetRow*>(row));
    return found;
}

void UiTest::announceVersion(const std::string& version, const std::string& url) {
    m_updates.checkForUpdate();
    m_http.answer(R"({"version":")" + version + R"(","download_url":")" + url + R"("})");
    settle();
}

QWidget& UiTest::openWindow(const std::string& name) {
    static const std::map<std::string, const char*> kCommands = {
        {"newShootSheet", "newShoot"},   {"newSetSheet", "newSet"},         {"importSheet", "importCsv"},
        {"versionsSheet", "versions"},   {"bulkExportSheet", "bulkExport"}, {"clientsSheet", "clients"},
        {"catalogSheet", "catalog"},     {"editProductSheet", "catalog"},   {"catalogImportSheet", "catalog"},
        {"shortcutsSheet", "shortcuts"},
    };
    if (name == "main")
        return main();
    if (name == "editSetSheet" || name == "qrSheet")
        click(*rows().front(), name == "qrSheet" ? "qrButton" : "editButton");
    else
        give(kCommands.at(name));
    settleReads();
    if (name == "editProductSheet")
        click(*allVisible<QAbstractButton>(sheet("catalogSheet"), "editProductButton").at(0));
    if (name == "catalogImportSheet")
        click(sheet("catalogSheet"), "importButton");
    return sheet(name.c_str());
}

} // namespace vantor::testing
