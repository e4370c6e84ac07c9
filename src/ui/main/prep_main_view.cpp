#include "ui/main/prep_main_view.h"

#include "ui/commands/editing.h"
#include "ui/frame/confirmation.h"
#include "ui/frame/notice_strip.h"
#include "ui/frame/quit_question.h"
#include "ui/frame/start_report.h"
#include "ui/frame/theme.h"
#include "ui/frame/window_place.h"
#include "ui/main/dropped_files.h"
#include "ui/main/empty_state.h"
#include "ui/main/header_bar.h"
#include "ui/main/scanner_field.h"
#include "ui/main/scanner_line.h"
#include "ui/main/set_list_view.h"
#include "ui/main/shoot_bar.h"
#include "ui/main/shoot_line.h"
#include "ui/sheets/sheet.h"
#include "ui/widgets/scroll_pane.h"
#include "ui/widgets/text.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QMenuBar>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

namespace vantor::ui {
namespace {

constexpr int kLeastWidth = 700;
constexpr int kLeastHeight = 500;
constexpr QSize kDefaultSize{1280, 800};

} // namespace

PrepMainView::PrepMainView(const Services& services, std::function<void()> onOpenGenerator)
    : m_services(services),
      m_onOpenGenerator(std::move(onOpenGenerator)),
      m_manager(services.document),
      m_catalog(services.document),
      m_commands(this, qstring(services.siteHost)),
      m_files(*this, m_manager, services, [this] { returnFocus(); }),
      m_renderSoon([this] { render(); }) {
    setObjectName(QStringLiteral("main"));
    setWindowTitle(shown("Vantor Prep"));
    setMinimumSize(kLeastWidth, kLeastHeight);
    setAcceptDrops(true);

    // Made from top to bottom, which is the order in which Tab walks them.
    auto* const all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(0);
    makeMenuBar(*all);
    auto* const pane = new ScrollPane("mainPane");
    all->addWidget(pane);
    auto* const column = new QVBoxLayout(pane->contents());
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    m_header = new HeaderBar(services);
    m_shootBar = new ShootBar(m_manager, m_commands);
    m_stack = new QStackedWidget;
    column->addWidget(m_header);
    column->addWidget(new Divider(Qt::Horizontal));
    column->addWidget(m_shootBar);
    column->addWidget(new Divider(Qt::Horizontal));
    m_stack->addWidget(makeEmptyState());
    m_stack->addWidget(makeContent());
    column->addWidget(m_stack, 1);
    bindShootCommands();
    bindSetCommands();
    bindEditing();
    bindWindowCommands();
    new NoticeStrip(m_sets, services.notices, NoticeStrip::Edge::Bottom);

    const auto renderOnChange = [this](const auto&) { m_renderSoon.request(); };
    m_subscriptions.push_back(m_services.document.didChange().connect(renderOnChange));
    m_subscriptions.push_back(m_services.updates.willChange().connect(renderOnChange));
    qApp->installEventFilter(this);
    new WindowPlace(this, m_services.remembered, kDefaultSize);
    render();
}

void PrepMainView::makeMenuBar(QLayout& layout) {
    auto* const bar = named(new QMenuBar, "menuBar", shown("Menubalk"));
    m_commands.fill(*bar, [this] { updateCommands(); });
    layout.setMenuBar(bar);
    layout.addWidget(new Divider(Qt::Horizontal));
}

QWidget* PrepMainView::makeEmptyState() {
    auto* const open = m_commands.makeButton(CommandId::Open, "emptyOpenButton");
    auto* const empty = new EmptyState("emptyState", QStringLiteral("camera"), {open},
                                       shown("of sleep een .vantor-bestand hierheen"));
    empty->setText(shown("Maak een shoot aan om te beginnen"));
    return empty;
}

QWidget* PrepMainView::makeContent() {
    m_shootLine = new ShootLine(m_commands);
    m_sets = new SetListView(
        m_manager, m_commands, rowActions(), [this] { m_renderSoon.request(); },
        [this] { updateCommands(); });
    m_scannerLine = new ScannerLine([this](const std::string& text) { handleScan(text); });
    auto* const content = new QWidget;
    auto* const column = new QVBoxLayout(content);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_shootLine);
    column->addWidget(m_sets, 1);
    column->addWidget(m_scannerLine);
    return content;
}

ScannerField& PrepMainView::scanner() const {
    return m_scannerLine->field();
}

void PrepMainView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (std::exchange(m_loaded, true))
        return;
    if (m_services.document.loadOnce())
        tellHowItLoaded(this, m_services);
    render();
    focusHome();
}

void PrepMainView::focusHome() {
    if (m_manager.activeShoot() != nullptr)
        scanner().setFocus();
    else
        m_shootBar->newShootButton().setFocus();
}

void PrepMainView::returnFocus() {
    if (auto* const front = windowInFrontOf(this); front != this)
        front->activateWindow();
    else
        focusHome();
}

void PrepMainView::render() {
    const auto* const shoot = m_manager.activeShoot();
    updateCommands();
    m_header->render(shoot != nullptr ? shoot->sets.size() : 0);
    m_shootBar->render();
    const bool wasEmpty = m_stack->currentIndex() == 0;
    const bool becomesEmpty = shoot == nullptr && !wasEmpty;
    m_stack->setCurrentIndex(shoot != nullptr ? 1 : 0);
    m_shootLine->render(m_manager.activeSet());
    m_sets->render();
    if (becomesEmpty || (shoot != nullptr && wasEmpty && !takesText(QApplication::focusWidget())))
        focusHome();
}

void PrepMainView::updateCommands() {
    if (m_sets == nullptr)
        return;
    const auto& document = m_services.document;
    const auto* const shoot = m_manager.activeShoot();
    m_commands.update({shoot != nullptr, shoot != nullptr && !shoot->sets.empty(),
                       m_sets->currentSet() != nullptr, document.canUndo(), document.canRedo()});
    m_commands.nameSteps(shownData(document.undoName()), shownData(document.redoName()));
}

const SetData* PrepMainView::setWithId(const Uuid& id) const {
    const auto* const shoot = m_manager.activeShoot();
    if (shoot == nullptr)
        return nullptr;
    const auto found = std::ranges::find(shoot->sets, id, &SetData::id);
    return found != shoot->sets.end() ? &*found : nullptr;
}

void PrepMainView::handleScan(const std::string& text) {
    const auto set = m_manager.handleScanInput(text);
    if (!set || m_manager.activeSet() == nullptr || m_manager.activeSetId() != set->id)
        return;
    m_sets->showScanned(set->id);
}

void PrepMainView::confirmDeleteShoot() {
    const auto* const shoot = m_manager.activeShoot();
    if (shoot == nullptr)
        return;
    confirmDeletion(this, shown("Shoot \"%1\" verwijderen?").arg(shownData(shoot->name)),
                    shown("Dit verwijdert de shoot en alle %1 sets erin.").arg(shoot->sets.size()),
                    [this, id = shoot->id] { m_manager.deleteShoot(id); });
}

void PrepMainView::openSheet(QDialog* sheet) {
    for (const auto id : {CommandId::Undo, CommandId::Redo})
        sheet->addAction(&m_commands.action(id));
    QObject::connect(sheet, &QDialog::finished, this, [this] { returnFocus(); });
    sheet->open();
}

void PrepMainView::closeEvent(QCloseEvent* event) {
    event->accept();
    askBeforeLosing(*this, m_services, *event);
}

void PrepMainView::dragEnterEvent(QDragEnterEvent* event) {
    if (!droppedShootFiles(*event->mimeData()).empty())
        acceptAsCopy(*event);
}

void PrepMainView::dropEvent(QDropEvent* event) {
    acceptAsCopy(*event);
    if (event->isAccepted())
        openShootFiles({droppedShootFiles(*event->mimeData()), {}, {}, {}});
}

bool PrepMainView::eventFilter(QObject* watched, QEvent* event) {
    if (leavesUndoToProgram(watched, *event)) {
        event->ignore();
        return true;
    }
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType())
        return false;
    auto* const widget = static_cast<QWidget*>(watched);
    auto* const key = static_cast<QKeyEvent*>(event);
    // Whatever is typed while nothing on this window takes text is meant for the scanner field.
    if (widget->window() != this || !scanner().isVisible() || QApplication::activeModalWidget() != nullptr ||
        QApplication::activePopupWidget() != nullptr || takesText(QApplication::focusWidget()) ||
        !typesCharacter(*key))
        return false;
    scanner().setFocus();
    scanner().takeKey(key);
    return true;
}

} // namespace vantor::ui
