#include "tests/ui/ui_fixture.h"

#include "base/json.h"
#include "model/shoot_json.h"
#include "tests/ui/everything_seen.h"
#include "ui/frame/beside_window.h"

#include <QLabel>
#include <QMouseEvent>
#include <QThreadPool>
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

std::vector<QWidget*> tabWalk(Qt::Key key) {
    std::vector<QWidget*> reached;
    while (std::ranges::count(reached, &focused()) == 0) {
        reached.push_back(&focused());
        press(key);
    }
    return reached;
}

std::vector<std::string> namesOf(const std::vector<QWidget*>& widgets) {
    std::vector<std::string> names;
    for (const auto* const widget : widgets)
        names.push_back(widget->objectName().toStdString());
    return names;
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

bool hasInk(QWidget& widget, const QColor& color) {
    const auto picture = widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixelColor(x, y) == color)
                return true;
        }
    }
    return false;
}

std::vector<std::string> textsOf(const QWidget& within, const char* name) {
    std::vector<std::string> texts;
    for (const auto* const widget : allVisible<QWidget>(within, name))
        texts.push_back(textOf(*widget).toStdString());
    return texts;
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
        return "[" + field->placeholderText().toStdString() + "]" + field->text().toStdString();
    if (const auto* const box = qobject_cast<const QComboBox*>(&widget))
        return "<" + box->currentText().toStdString() + ">";
    if (qobject_cast<const QPlainTextEdit*>(&widget) != nullptr)
        return "(text)";
    if (dynamic_cast<const ui::RecyclingList*>(&widget) != nullptr)
        return "(list)";
    auto text = textOf(widget).toStdString();
    if (const auto* const button = qobject_cast<const QAbstractButton*>(&widget)) {
        if (!button->toolTip().isEmpty())
            text += "{" + button->toolTip().toStdString() + "}";
        return (button->isEnabled() ? "" : "-") + std::string(button->isChecked() ? "+" : "") + text;
    }
    return text;
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

ui::Services UiTest::servicesOn(const FileStore& files, const QrEncoder& encoder) {
    return {files,
            m_dialogs,
            m_clipboard,
            m_urls,
            m_remembered,
            encoder,
            m_pngs,
            CairoPdfCanvas::make,
            m_updates,
            m_clock.clock(),
            m_document,
            &m_stores,
            m_notices,
            "vantor.example",
            "https://vantor.example/handleiding"};
}

namespace {

void await(QWidget& window) {
    if (!QTest::qWaitForWindowActive(&window))
        ADD_FAILURE() << window.objectName().toStdString() << " does not become active";
    settle();
}

} // namespace

UiTest::~UiTest() {
    settle();
    m_generator.reset();
    m_main.reset();
    settle();
}

ui::PrepMainView& UiTest::openMain() {
    m_main = std::make_unique<ui::PrepMainView>(m_services, [this] { ++m_generatorsAsked; });
    m_main->show();
    returnToMain();
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
    await(*m_generator);
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

QDialog& UiTest::awaitSheet(const char* name) {
    settle();
    await(sheet(name));
    return sheet(name);
}

void UiTest::returnToMain() {
    m_main->activateWindow();
    await(*m_main);
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
    // Where it is not called like its sheet.
    static const std::map<std::string, std::string> kButtons{{"editSetSheet", "editButton"},
                                                             {"catalogImportSheet", "importButton"},
                                                             {"confirmation", "deleteShootButton"}};
    if (m_main == nullptr)
        openMain();
    if (name == "main")
        return main();
    const bool isOfProducts = name == "editProductSheet" || name == "catalogImportSheet";
    if (isOfProducts && !isOpen("catalogSheet"))
        openWindow("catalogSheet");
    const auto subject = name.substr(0, name.find("Sheet"));
    const auto button = kButtons.contains(name) ? kButtons.at(name) : subject + "Button";
    const auto& from = isOfProducts ? sheet("catalogSheet") : static_cast<QWidget&>(main());
    if (name == "versionsSheet" || name == "shortcutsSheet")
        give(subject.c_str());
    else
        click(*allVisible<QAbstractButton>(from, button.c_str()).at(0));
    settleReads();
    return awaitSheet(name.c_str());
}

void UiTest::visitWindows(const QString& typed, const std::function<void(QWidget&)>& look) {
    look(main());
    for (const auto* const name : kSheets) {
        auto& opened = openWindow(name);
        look(opened);
        if (auto* const picker = opened.findChild<QPushButton*>("catalogPicker")) {
            for (auto* const menu : menusWithin(*picker->menu()))
                look(*menu);
        } else if (auto* const text = opened.findChild<QPlainTextEdit*>("csvText")) {
            text->setPlainText("1;" + typed);
            click(opened, "importButton");
            settleReads();
            look(opened);
        } else if (name == std::string("bulkExportSheet")) {
            click(opened, "selectAllButton");
            look(opened);
            click(opened, "selectAllButton");
            m_dialogs.whereToSave = "/ω/ω";
            find<QAbstractButton>(opened, "exportButton").click();
            look(find(opened, "exportProgress"));
            QThreadPool::globalInstance()->waitForDone();
            settle();
        }
        closeSheets();
    }
    rows().front()->openMenu(main().mapToGlobal(QPoint(50, 50)));
    look(*QApplication::activePopupWidget());
    QApplication::activePopupWidget()->close();
    settle();
    for (auto* const button : {&find<QAbstractButton>(*rows().front(), "deleteButton"),
                               &find<QAbstractButton>(main(), "deleteShootButton")}) {
        click(*button);
        look(sheet("confirmation"));
        closeSheets();
    }
    auto& generator = openGenerator();
    look(generator);
    click(generator, "addItemButton");
    for (auto* const field : generator.findChildren<QLineEdit*>())
        field->setText(typed);
    click(generator, "generateButton");
    look(generator);
    m_generator.reset();
    returnToMain();
}

} // namespace vantor::testing
