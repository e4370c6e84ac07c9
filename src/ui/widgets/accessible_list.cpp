#include "ui/widgets/accessible_list.h"

#include "ui/widgets/recycling_list.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPointer>
#include <QScrollBar>
#include <QWindow>
#include <map>
#include <optional>
#include <string>
#include <utility>

namespace vantor::ui {
namespace {

class Item final : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    Item(RecyclingList& list, std::string key, int place)
        : m_list(&list),
          m_key(std::move(key)),
          m_place(place) {}

    // Where its row stands now; absent once it is gone.
    [[nodiscard]] std::optional<int> place() const {
        const auto found = m_list ? m_list->placeOf(m_key, m_place) : std::nullopt;
        m_place = found.value_or(m_place);
        return found;
    }

    // Whether the row has another name than when this was asked last.
    [[nodiscard]] bool takesNewName() {
        return std::exchange(m_toldName, text(QAccessible::Name)) != m_toldName;
    }

    [[nodiscard]] bool isValid() const override { return place().has_value(); }
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QWindow* window() const override {
        return m_list ? m_list->window()->windowHandle() : nullptr;
    }
    [[nodiscard]] QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(m_list);
    }
    [[nodiscard]] int childCount() const override { return rowWidget() != nullptr ? 1 : 0; }
    [[nodiscard]] QAccessibleInterface* child(int index) const override {
        return index == 0 ? QAccessible::queryAccessibleInterface(rowWidget()) : nullptr;
    }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override {
        return child != nullptr && child->object() != nullptr && child->object() == rowWidget() ? 0 : -1;
    }
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override {
        return rect().contains(x, y) ? child(0) : nullptr;
    }
    [[nodiscard]] QString text(QAccessible::Text which) const override {
        const auto at = place();
        if (!at)
            return {};
        const auto told = m_list->rows().tell(*at);
        return which == QAccessible::Name          ? told.name
               : which == QAccessible::Description ? told.more
                                                   : QString();
    }
    void setText(QAccessible::Text, const QString&) override {}
    [[nodiscard]] QRect rect() const override {
        const auto at = place();
        if (!at)
            return {};
        const int top = *at * m_list->rowHeight() - m_list->verticalScrollBar()->value();
        return {m_list->viewport()->mapToGlobal(QPoint(0, top)),
                QSize(m_list->viewport()->width(), m_list->rowHeight())};
    }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::ListItem; }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state;
        const auto at = place();
        if (!at) {
            state.invalid = true;
            return state;
        }
        const bool isCurrent = m_list->currentRow() == at;
        state.focusable = true;
        state.selectable = true;
        state.selected = isCurrent;
        state.active = isCurrent;
        state.focused = isCurrent && m_list->hasFocus();
        state.disabled = !m_list->isEnabled();
        state.invisible = !m_list->isVisible();
        state.offscreen = rowWidget() == nullptr;
        return state;
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }

    [[nodiscard]] QStringList actionNames() const override {
        QStringList names{setFocusAction()};
        if (m_list && m_list->rows().activate)
            names.prepend(pressAction());
        return names;
    }
    void doAction(const QString& name) override {
        const auto at = place();
        if (!at)
            return;
        m_list->setCurrentRow(at);
        m_list->scrollToRow(*at);
        if (name == setFocusAction())
            m_list->setFocus(Qt::OtherFocusReason);
        else if (name == pressAction() && m_list->rows().activate)
            m_list->rows().activate(*at);
    }
    [[nodiscard]] QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    [[nodiscard]] QWidget* rowWidget() const {
        const auto at = place();
        return at ? m_list->rowWidget(*at) : nullptr;
    }

    QPointer<RecyclingList> m_list;
    std::string m_key;
    mutable int m_place;
    QString m_toldName;
};

class List final : public QAccessibleWidget {
public:
    explicit List(RecyclingList* list) : QAccessibleWidget(list, QAccessible::List), m_list(*list) {}
    ~List() override { forgetItems(); }
    List(const List&) = delete;
    List& operator=(const List&) = delete;

    [[nodiscard]] int childCount() const override { return m_list.rowCount(); }
    [[nodiscard]] QAccessibleInterface* child(int place) const override {
        if (place < 0 || place >= m_list.rowCount())
            return nullptr;
        if (auto* const known = knownItem(place))
            return known;
        std::string key(m_list.rows().key(place));
        if (key.empty())
            return nullptr;
        auto* const item = new Item(m_list, key, place);
        static_cast<void>(item->takesNewName());
        m_items.emplace(std::move(key), QAccessible::registerAccessibleInterface(item));
        return item;
    }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override {
        const auto* const item = dynamic_cast<const Item*>(child);
        return item != nullptr ? item->place().value_or(-1) : -1;
    }
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override {
        const auto at = m_list.viewport()->mapFromGlobal(QPoint(x, y));
        if (!m_list.viewport()->rect().contains(at))
            return nullptr;
        return child((at.y() + m_list.verticalScrollBar()->value()) / m_list.rowHeight());
    }
    [[nodiscard]] QAccessibleInterface* focusChild() const override {
        return m_list.hasFocus() && m_list.currentRow() ? child(*m_list.currentRow())
                                                        : QAccessibleWidget::focusChild();
    }

    // The row's item if it was asked for before.
    [[nodiscard]] Item* knownItem(int place) const {
        const auto found = m_items.find(m_list.rows().key(place));
        return found != m_items.end() ? static_cast<Item*>(QAccessible::accessibleInterface(found->second))
                                      : nullptr;
    }
    void forgetItems() {
        for (const auto& [key, id] : std::exchange(m_items, {}))
            QAccessible::deleteAccessibleInterface(id);
    }

private:
    RecyclingList& m_list;
    mutable std::map<std::string, QAccessible::Id, std::less<>> m_items;
};

// The widgets of one row: no more than what holds them, inside the item of the row that they show.
class RowWidgets final : public QAccessibleWidget {
public:
    RowWidgets(QWidget* row, RecyclingList& list) : QAccessibleWidget(row), m_list(list) {}

    [[nodiscard]] QAccessibleInterface* parent() const override {
        auto* const list = QAccessible::queryAccessibleInterface(&m_list);
        const auto place = m_list.placeOf(widget());
        auto* const item = place ? list->child(*place) : nullptr;
        return item != nullptr ? item : list;
    }

private:
    RecyclingList& m_list;
};

QAccessibleInterface* makeInterface(const QString&, QObject* object) {
    if (auto* const list = dynamic_cast<RecyclingList*>(object))
        return new List(list);
    auto* const widget = qobject_cast<QWidget*>(object);
    auto* const around = widget != nullptr ? widget->parentWidget() : nullptr;
    auto* const list = around != nullptr ? dynamic_cast<RecyclingList*>(around->parentWidget()) : nullptr;
    return list != nullptr && list->viewport() == around ? new RowWidgets(widget, *list) : nullptr;
}

// Nothing while no one listens.
List* listOf(RecyclingList& list) {
    return QAccessible::isActive() ? dynamic_cast<List*>(QAccessible::queryAccessibleInterface(&list))
                                   : nullptr;
}

void announce(QAccessibleInterface* about, QAccessible::Event what) {
    QAccessibleEvent event(about, what);
    QAccessible::updateAccessibility(&event);
}

} // namespace

void makeListsAccessible() {
    // The toolkit ignores what is installed already.
    QAccessible::installFactory(makeInterface);
}

void announceCurrentRow(RecyclingList& list, std::optional<int> before) {
    const auto* const told = listOf(list);
    if (told == nullptr)
        return;
    if (auto* const item = before ? told->knownItem(*before) : nullptr)
        announce(item, QAccessible::Selection);
    auto* const item = list.currentRow() ? told->child(*list.currentRow()) : nullptr;
    if (item == nullptr)
        return;
    announce(item, QAccessible::Selection);
    if (list.hasFocus())
        announce(item, QAccessible::Focus);
}

void announceNameOfRow(RecyclingList& list, int place) {
    const auto* const told = listOf(list);
    auto* const item = told != nullptr ? told->knownItem(place) : nullptr;
    if (item != nullptr && item->takesNewName())
        announce(item, QAccessible::NameChanged);
}

void forgetRows(RecyclingList& list) {
    if (auto* const told = listOf(list))
        told->forgetItems();
}

} // namespace vantor::ui
