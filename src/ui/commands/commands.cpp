#include "ui/commands/commands.h"

#include "ui/frame/theme.h"
#include "ui/widgets/symbol.h"
#include "ui/widgets/text.h"
#include "ui/widgets/widgets.h"

#include <QAbstractButton>
#include <QAction>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QWidget>
#include <algorithm>
#include <utility>

namespace vantor::ui {
namespace {

// An ampersand would underline what follows it.
QString plainText(QString text) {
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

// The letter underlined, or the first one where a title in another language has no such letter.
QString withMnemonic(QString title, char letter) {
    const auto place = title.indexOf(QLatin1Char(letter));
    return title.insert(std::max<qsizetype>(place, 0), QLatin1Char('&'));
}

QString withName(const QString& command, const QString& name) {
    return plainText(name.isEmpty() ? command : QStringLiteral("%1: %2").arg(command, name));
}

QString keyOf(CommandId id) {
    return QKeySequence(qstring(command(id).shortcut), QKeySequence::PortableText)
        .toString(QKeySequence::NativeText);
}

// The help text with its shortcut: to be seen, and for assistive technology.
void tell(QWidget& widget, const QString& help, const QString& key) {
    widget.setToolTip(key.isEmpty() ? help : QStringLiteral("%1 (%2)").arg(help, key));
    describe(&widget,
             key.isEmpty() ? help : QStringLiteral("%1. %2").arg(help, shown("Sneltoets %1").arg(key)));
}

} // namespace

Commands::Commands(QWidget* window, const QString& siteHost) : QObject(window) {
    for (const auto& each : commandTable()) {
        auto* const action = new QAction(plainText(shown(each.text)), this);
        action->setObjectName(qstring(each.name));
        auto help = shown(each.help);
        if (help.contains(QLatin1String("%1")))
            help = help.arg(siteHost);
        action->setToolTip(help);
        if (!each.symbol.empty())
            action->setIcon(symbolIcon(qstring(each.symbol)));
        if (!each.shortcut.empty())
            action->setShortcut(QKeySequence(qstring(each.shortcut), QKeySequence::PortableText));
        window->addAction(action);
    }
    update({});
}

QAction& Commands::action(CommandId id) const {
    return *findChild<QAction*>(qstring(command(id).name), Qt::FindDirectChildrenOnly);
}

void Commands::bind(CommandId id, std::function<void()> run) {
    QObject::connect(&action(id), &QAction::triggered, this, [run = std::move(run)] { run(); });
}

void Commands::attach(QAbstractButton& button, CommandId id) {
    auto& its = action(id);
    tell(button, its.toolTip(), keyOf(id));
    const auto follow = [&button, &its] { button.setEnabled(its.isEnabled()); };
    QObject::connect(&its, &QAction::changed, &button, follow);
    QObject::connect(&button, &QAbstractButton::clicked, &its, [&its] { its.trigger(); });
    follow();
}

QPushButton* Commands::makeButton(CommandId id, const char* objectName) {
    const auto text = shown(command(id).text);
    auto* const button = named(new QPushButton(text), objectName, text);
    if (!command(id).symbol.empty()) {
        button->setIcon(symbolIcon(qstring(command(id).symbol)));
        button->setIconSize({theme::kSymbolSize, theme::kSymbolSize});
    }
    attach(*button, id);
    return button;
}

void Commands::tellShortcut(QWidget& field, const QString& help, CommandId id) {
    field.setToolTip(QStringLiteral("%1 (%2)").arg(help, keyOf(id)));
    describe(&field, shown("Sneltoets %1").arg(keyOf(id)));
}

void Commands::update(const CommandState& state) {
    for (const auto& each : commandTable())
        action(each.id).setEnabled(each.canBeGiven(state));
}

void Commands::nameSteps(const QString& undo, const QString& redo) {
    action(CommandId::Undo).setText(withName(shown(command(CommandId::Undo).text), undo));
    action(CommandId::Redo).setText(withName(shown(command(CommandId::Redo).text), redo));
}

void Commands::fill(QMenuBar& bar, const std::function<void()>& beforeOpening) const {
    for (const auto& [id, title, letter] : menuTable()) {
        auto* const menu = bar.addMenu(withMnemonic(shown(title), letter));
        for (const auto& each : commandTable()) {
            if (each.menu != id)
                continue;
            if (each.beginsGroup)
                menu->addSeparator();
            menu->addAction(&action(each.id));
        }
        QObject::connect(menu, &QMenu::aboutToShow, this, beforeOpening);
    }
}

} // namespace vantor::ui
