#include "ui/main/set_list_view.h"

#include "base/text.h"
#include "ui/commands/commands.h"
#include "ui/frame/theme.h"
#include "ui/main/empty_state.h"
#include "ui/main/field_symbol.h"
#include "ui/widgets/recycling_list.h"
#include "ui/widgets/text.h"
#include "view/set_filter.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

namespace vantor::ui {
namespace {

// How long a scanned row glows, in milliseconds.
constexpr int kGlow = 900;

} // namespace

SetListView::SetListView(ShootManager& manager, Commands& commands, SetRow::Actions actions,
                         std::function<void()> onChange, std::function<void()> onCurrentChange)
    : m_manager(manager),
      m_actions(std::move(actions)),
      m_onChange(std::move(onChange)),
      m_onCurrentChange(std::move(onCurrentChange)) {
    m_litUpTimer.setSingleShot(true);
    QObject::connect(&m_litUpTimer, &QTimer::timeout, this, [this] {
        m_litUp.reset();
        m_onChange();
    });
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(makeSearchLine());
    column->addWidget(new Divider(Qt::Horizontal));
    m_list = makeList();
    makeEmptyStates(commands);
    m_pages = new QStackedWidget;
    m_pages->setAutoFillBackground(true);
    m_pages->setBackgroundRole(QPalette::Button);
    for (QWidget* const page : std::initializer_list<QWidget*>{m_list, m_noSets, m_noHits})
        m_pages->addWidget(page);
    column->addWidget(m_pages, 1);
    column->addWidget(new Divider(Qt::Horizontal));
}

QWidget* SetListView::makeSearchLine() {
    m_search = makeField("searchField", shown("Zoek op naam, model of item..."));
    Commands::tellShortcut(*m_search, m_search->placeholderText(), CommandId::Search);
    m_clearSearch =
        named(new FieldButton(QStringLiteral("clear"), shown("Zoekopdracht wissen")), "clearSearchButton");
    m_searchCount = named(new CountLabel(theme::captionFont(), TextColor::Secondary), "searchCount");
    // At once: the next keys may already be those that lead to the list and choose in it.
    QObject::connect(m_search, &QLineEdit::textChanged, this, [this] { render(); });
    QObject::connect(m_clearSearch, &QToolButton::clicked, this, [this] { clearSearch(); });
    const auto onKey = [this](Qt::Key key, auto action) {
        auto* const shortcut = new QShortcut(key, m_search);
        shortcut->setContext(Qt::WidgetShortcut);
        QObject::connect(shortcut, &QShortcut::activated, this, action);
    };
    onKey(Qt::Key_Escape, [this] { m_search->clear(); });
    onKey(Qt::Key_Down, [this] {
        if (m_list->isVisible())
            m_list->setFocus();
    });

    auto* const line = new QWidget;
    auto* const row = new QHBoxLayout(line);
    row->setContentsMargins(theme::kMargin, 0, theme::kMargin, theme::kStep);
    row->addWidget(m_search);
    // Within the field, so that it keeps its width as they come and go.
    auto* const parts = putSymbolInto(*m_search, QStringLiteral("magnifier"));
    parts->addWidget(m_clearSearch);
    parts->addWidget(m_searchCount);
    return line;
}

void SetListView::clearSearch() {
    m_search->clear();
    m_search->setFocus();
}

void SetListView::makeEmptyStates(Commands& commands) {
    m_noSets = new EmptyState("noSets", QStringLiteral("list"),
                              {commands.makeButton(CommandId::NewSet, "firstSetButton"),
                               commands.makeButton(CommandId::ImportCsv, "importFirstButton")});
    m_noSets->setText(shown("Nog geen sets"));
    auto* const clear =
        named(new QPushButton(shown("Wis zoekopdracht")), "clearFruitlessSearch", shown("Wis zoekopdracht"));
    QObject::connect(clear, &QPushButton::clicked, this, [this] { clearSearch(); });
    m_noHits = new EmptyState("noHits", QStringLiteral("magnifier"), {clear});
}

RecyclingList* SetListView::makeList() {
    RecyclingList::Rows rows;
    rows.make = [this] { return new SetRow(m_actions); };
    rows.fill = [this](QWidget& widget, int place, bool isCurrent) {
        const auto* const set = setAt(place);
        if (set == nullptr)
            return;
        auto& row = static_cast<SetRow&>(widget);
        row.show(*set, m_manager.activeSetId() == set->id);
        row.setCurrent(isCurrent);
        row.setLitUp(m_litUp == set->id);
    };
    rows.key = [this](int place) {
        const auto* const set = setAt(place);
        return set != nullptr ? set->id.bytes() : std::string_view();
    };
    rows.tell = [this](int place) {
        const auto* const set = setAt(place);
        return RecyclingList::Told{set != nullptr ? SetRow::name(*set, m_manager.activeSetId() == set->id)
                                                  : QString(),
                                   shown("Set %1 van %2").arg(place + 1).arg(m_filtered.size())};
    };
    rows.activate = [this](int place) {
        if (const auto* const set = setAt(place))
            m_actions.onActivate(set->id);
    };
    rows.remove = [this](int place) {
        if (QWidget* const row = m_list->rowWidget(place))
            static_cast<SetRow*>(row)->askToDelete();
    };
    rows.showMenu = [this](int place, const QPoint& position) {
        if (QWidget* const row = m_list->rowWidget(place))
            static_cast<SetRow*>(row)->openMenu(position);
    };
    rows.currentChanged = [this] { m_onCurrentChange(); };
    auto* const list = named(new RecyclingList(std::move(rows)), "setList", shown("Sets"));
    list->layScrollBarOverRows();
    return list;
}

void SetListView::render() {
    static const SetList kNone;
    const auto* const shoot = m_manager.activeShoot();
    const auto& sets = shoot != nullptr ? shoot->sets : kNone;
    m_filtered = vantor::filteredSets(sets, typed(m_search->text()));
    const bool searching = !m_search->text().isEmpty();
    m_clearSearch->setVisible(searching);
    m_searchCount->setVisible(searching);
    m_searchCount->setText(QStringLiteral("%1/%2").arg(m_filtered.size()).arg(sets.size()));
    const int behind =
        m_clearSearch->sizeHint().width() + m_searchCount->sizeHint().width() + 2 * theme::kStep;
    m_search->setTextMargins(kRoomOfSymbol, 0, searching ? behind : 0, 0);
    // Before the list is told where to scroll, as it has its size only while it is shown.
    renderPage(!sets.empty());
    const auto count = static_cast<int>(m_filtered.size());
    const auto shownShoot = shoot != nullptr ? std::optional(shoot->id) : std::nullopt;
    const auto search = m_search->text();
    const bool isOtherShoot = std::exchange(m_shownShoot, shownShoot) != shownShoot;
    const bool isOtherSearch = std::exchange(m_shownSearch, search) != search;
    if (isOtherShoot)
        m_list->open(count, rowOf(m_manager.activeSetId()));
    else if (isOtherSearch)
        m_list->showFound(count);
    else
        m_list->setRowCount(count);
}

void SetListView::renderPage(bool hasSets) {
    if (!m_filtered.empty()) {
        m_pages->setCurrentWidget(m_list);
        return;
    }
    m_noHits->setText(
        shown("Geen sets gevonden met \"%1\"").arg(shownData(trimmed(typed(m_search->text())))));
    m_pages->setCurrentWidget(hasSets ? m_noHits : m_noSets);
}

std::optional<int> SetListView::rowOf(const std::optional<Uuid>& id) const {
    const auto found = std::ranges::find_if(
        m_filtered, [&](std::size_t place) { return m_manager.activeShoot()->sets[place].id == id; });
    return found != m_filtered.end() ? std::optional(static_cast<int>(found - m_filtered.begin()))
                                     : std::nullopt;
}

const SetData* SetListView::setAt(int row) const {
    const auto* const shoot = m_manager.activeShoot();
    const auto place = static_cast<std::size_t>(row);
    // Between a change and the next redrawing the places may be those of a list that has become shorter.
    if (shoot == nullptr || row < 0 || place >= m_filtered.size() || m_filtered[place] >= shoot->sets.size())
        return nullptr;
    return &shoot->sets[m_filtered[place]];
}

const SetData* SetListView::currentSet() const {
    return setAt(m_list->currentRow().value_or(-1));
}

void SetListView::askToDeleteCurrent() {
    const auto current = m_list->currentRow();
    if (!current)
        return;
    m_list->scrollToRow(*current);
    if (QWidget* const row = m_list->rowWidget(*current))
        static_cast<SetRow*>(row)->askToDelete();
}

void SetListView::startSearch() {
    m_search->setFocus();
    m_search->selectAll();
}

void SetListView::showScanned(const Uuid& id) {
    m_litUp = id;
    m_litUpTimer.start(kGlow);
    render();
    if (!rowOf(id)) {
        m_search->clear();
        render();
    }
    if (const auto row = rowOf(id))
        m_list->scrollToRow(*row);
}

} // namespace vantor::ui
