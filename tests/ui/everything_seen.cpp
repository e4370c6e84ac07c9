#include "tests/ui/everything_seen.h"

#include "tests/ui/ui_fixture.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QTabBar>
#include <QTextDocument>

namespace vantor::testing {
namespace {

// What is left of a text where "&" marks a shortcut.
QString withoutMnemonics(const QString& text) {
    QString left;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == QLatin1Char('&') && i + 1 < text.size())
            ++i;
        left += text[i];
    }
    return left;
}

// What is left of a window's title, as QWidget::windowTitle tells.
QString withoutUnsavedMarks(QString title) {
    const QString two = QStringLiteral("[*][*]");
    const QString kept = QChar(0xE000);
    return title.replace(two, kept).remove(QStringLiteral("[*]")).replace(kept, QStringLiteral("[*]"));
}

} // namespace

std::string shownToolTip(const QWidget& widget) {
    const auto tip = widget.toolTip();
    if (!Qt::mightBeRichText(tip))
        return tip.toStdString();
    QTextDocument document;
    document.setHtml(tip);
    return document.toPlainText().toStdString();
}

std::vector<QMenu*> menusWithin(QMenu& menu) {
    std::vector<QMenu*> menus{&menu};
    for (std::size_t i = 0; i < menus.size(); ++i) {
        Q_EMIT menus[i]->aboutToShow();
        for (const auto* const action : menus[i]->actions()) {
            if (action->menu() != nullptr)
                menus.push_back(action->menu());
        }
    }
    return menus;
}

std::vector<Seen> everythingSeen(QWidget& window) {
    std::vector<Seen> seen;
    auto widgets = window.findChildren<QWidget*>();
    widgets.prepend(&window);
    for (auto* const widget : widgets) {
        const auto add = [&](const char* what, const QString& text, bool isMarkup = false) {
            if (!text.isEmpty()) {
                seen.push_back({QLatin1String(widget->metaObject()->className()) + QLatin1Char(' ') +
                                    widget->objectName() + QLatin1String(": ") + QLatin1String(what),
                                text, isMarkup});
            }
        };
        add("tool tip", QString::fromStdString(shownToolTip(*widget)));
        add("status tip", widget->statusTip());
        if (widget->isWindow())
            add("title", withoutUnsavedMarks(widget->windowTitle()));
        if (const auto* const label = qobject_cast<const QLabel*>(widget)) {
            add("text", label->buddy() != nullptr ? withoutMnemonics(label->text()) : label->text(),
                label->textFormat() != Qt::PlainText);
        } else if (const auto* const button = qobject_cast<const QAbstractButton*>(widget)) {
            add("text", withoutMnemonics(button->text()));
        } else if (const auto* const field = qobject_cast<const QLineEdit*>(widget)) {
            add("placeholder", field->placeholderText());
        } else if (const auto* const box = qobject_cast<const QComboBox*>(widget)) {
            for (const auto& entry : entries(*box))
                add("entry", entry);
        } else if (const auto* const group = qobject_cast<const QGroupBox*>(widget)) {
            add("title", withoutMnemonics(group->title()));
        } else if (const auto* const tabs = qobject_cast<const QTabBar*>(widget)) {
            for (int i = 0; i < tabs->count(); ++i)
                add("tab", withoutMnemonics(tabs->tabText(i)));
        } else {
            add("text", textOf(*widget));
        }
        // Elsewhere they are only shortcuts.
        const bool isMenu =
            qobject_cast<const QMenu*>(widget) != nullptr || qobject_cast<const QMenuBar*>(widget) != nullptr;
        for (const auto* const action : isMenu ? widget->actions() : QList<QAction*>())
            add("action", withoutMnemonics(action->text()));
        if (auto* const told = QAccessible::queryAccessibleInterface(widget)) {
            add("name", told->text(QAccessible::Name));
            add("description", told->text(QAccessible::Description));
            add("help", told->text(QAccessible::Help));
            for (int i = 0; told->role() == QAccessible::List && i < told->childCount(); ++i) {
                add("item", told->child(i)->text(QAccessible::Name));
                add("item's description", told->child(i)->text(QAccessible::Description));
            }
        }
    }
    return seen;
}

} // namespace vantor::testing
