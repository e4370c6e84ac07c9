#include "ui/prep_main_view.h"

#include "base/text.h"
#include "ui/bulk_qr_export_sheet.h"
#include "ui/catalog_sheet.h"
#include "ui/clients_sheet.h"
#include "ui/confirmation.h"
#include "ui/dropped_files.h"
#include "ui/flow_layout.h"
#include "ui/import_sheet.h"
#include "ui/new_shoot_sheet.h"
#include "ui/qr_sheet.h"
#include "ui/recycling_list.h"
#include "ui/save_file.h"
#include "ui/scanner_field.h"
#include "ui/scroll_pane.h"
#include "ui/set_sheet.h"
#include "ui/stat_badge.h"
#include "ui/symbol.h"
#include "ui/text.h"
#include "ui/theme.h"
#include "ui/window_place.h"
#include "view/brand_choice.h"
#include "view/new_shoot_draft.h"
#include "view/proposed_names.h"
#include "view/set_filter.h"
#include "view/shown_set.h"

#include <QApplication>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QShortcut>
#include <QStackedWidget>
#include <QSvgWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

namespace vantor::ui {
namespace {

namespace fs = std::filesystem;

constexpr int kLeastWidth = 700;
constexpr int kLeastHeight = 500;
constexpr QSize kDefaultSize{1180, 760};
constexpr int kPickerWidth = 200;
// How long a scanned row glows, in milliseconds.
constexpr int kGlow = 900;

// Tells assistive technology a control's help text and shortcut.
void tellShortcut(QWidget* widget, const QString& key) {
    const auto shortcut = shown("Sneltoets %1").arg(key);
    const auto help = widget->toolTip();
    describe(widget, help.isEmpty() ? shortcut : QStringLiteral("%1. %2").arg(help, shortcut));
}

// Gives a control its help text, and the shortcut with it.
void tellHelp(QWidget* widget, const QString& help, const QString& key = {}) {
    widget->setToolTip(help);
    if (key.isEmpty()) {
        describe(widget, help);
        return;
    }
    tellShortcut(widget, key);
    widget->setToolTip(QStringLiteral("%1 (%2)").arg(help, key));
}

QPushButton* makeCommand(const char* objectName, const QString& text, const QString& symbol) {
    auto* const button = named(new QPushButton(symbolIcon(symbol), text), objectName, text);
    button->setIconSize({theme::kSymbolSize, theme::kSymbolSize});
    return button;
}

// The shoot files among what is dragged or dropped.
std::vector<fs::path> shootFilesOf(const QMimeData& data) {
    auto files = droppedFiles(data);
    std::erase_if(files, [](const fs::path& file) {
        return !qstring(file.filename().string()).endsWith(QLatin1String(".vantor"), Qt::CaseInsensitive);
    });
    return files;
}

// The header's ground, a shade apart from the window.
class HeaderGround : public QWidget {
protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), theme::header(palette())); }
};

} // namespace

PrepMainView::PrepMainView(const Services& services, std::function<void()> onOpenGenerator)
    : m_services(services),
      m_onOpenGenerator(std::move(onOpenGenerator)),
      m_manager(services.stores ? &services.stores->shoots() : nullptr, services.clock),
      m_catalog(services.stores ? &services.stores->catalog() : nullptr),
      m_opener(services.files, m_manager, [this] { showImportError(); }),
      m_renderSoon([this] { render(); }) {
    setObjectName(QStringLiteral("main"));
    setWindowTitle(shown("Vantor Prep"));
    setMinimumSize(kLeastWidth, kLeastHeight);
    setAcceptDrops(true);
    m_rowActions = {
        [this](const Uuid& id) { m_manager.activateSet(id); },
        [this](const Uuid& id) {
            if (const auto* const set = setWithId(id))
                openSheet(new SetSheet(this, m_manager, m_catalog, m_services, *set));
        },
        [this](const Uuid& id) {
            if (const auto* const set = setWithId(id))
                openSheet(new QRSheet(this, *set, m_services));
        },
        [this](const Uuid& id) { m_manager.deleteSet(id); },
    };
    m_litUpTimer.setSingleShot(true);
    QObject::connect(&m_litUpTimer, &QTimer::timeout, this, [this] {
        m_litUp.reset();
        m_renderSoon.request();
    });

    // Made from top to bottom, which is the order in which Tab walks them.
    auto* const all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    auto* const pane = new ScrollPane("mainPane");
    all->addWidget(pane);
    auto* const column = new QVBoxLayout(pane->contents());
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(makeHeader());
    column->addWidget(new Divider(Qt::Horizontal));
    column->addWidget(makeShootBar());
    column->addWidget(new Divider(Qt::Horizontal));
    m_stack = new QStackedWidget;
    m_stack->addWidget(makeEmptyState());
    m_stack->addWidget(makeContent());
    column->addWidget(m_stack, 1);
    makeShortcuts();

    const auto renderOnChange = [this](auto) { m_renderSoon.request(); };
    m_subscriptions.push_back(m_manager.willChange().connect(renderOnChange));
    m_subscriptions.push_back(m_services.updates.willChange().connect(renderOnChange));
    qApp->installEventFilter(this);
    new WindowPlace(this, m_services.remembered, kDefaultSize);
    render();
}

QWidget* PrepMainView::makeHeader() {
    auto* const logo = named(new QSvgWidget(symbolPath(QStringLiteral("logo"))), "logo", shown("Logo"));
    logo->setFixedSize(theme::kLogoSize, theme::kLogoSize);
    auto* const title = new TextLabel(shown("Vantor Prep"), theme::titleFont(), TextColor::Primary);
    auto* const version = named(new TextLabel(shown("v%1").arg(qstring(m_services.updates.currentVersion())),
                                              theme::captionFont(), TextColor::Secondary),
                                "version");
    auto* const tagline = new TextLabel(
        shown("Gratis. Bereid shoots, sets en QR-kaarten voor — Vantor zelf tagt tijdens de shoot."),
        theme::captionFont(), TextColor::Secondary, true);
    m_update = named(new QPushButton(symbolIcon(QStringLiteral("download")), QString()), "updateButton");
    m_update->setFlat(true);
    m_update->setFont(theme::captionBoldFont());
    m_update->setToolTip(
        shown("Nieuwe versie van Vantor Prep beschikbaar — klik om de downloadpagina te openen. "
              "Update gebeurt niet automatisch."));
    QObject::connect(m_update, &QPushButton::clicked, this, [this] { openDownload(); });
    m_badge = new StatBadge(shown("Sets"), TextColor::Blue);

    auto* const titleLine = new QHBoxLayout;
    titleLine->setSpacing(theme::kStep);
    titleLine->addWidget(title);
    titleLine->addWidget(version, 0, Qt::AlignBottom);
    titleLine->addStretch();
    auto* const texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addLayout(titleLine);
    texts->addWidget(tagline);
    auto* const header = new HeaderGround;
    auto* const row = new QHBoxLayout(header);
    row->setContentsMargins(theme::kMargin, theme::kStep + theme::kHalfStep, theme::kMargin,
                            theme::kStep + theme::kHalfStep);
    row->setSpacing(theme::kStep + theme::kHalfStep);
    row->addWidget(logo);
    row->addLayout(texts, 1);
    row->addWidget(m_update);
    row->addWidget(m_badge);
    return header;
}

QWidget* PrepMainView::makeShootBar() {
    m_shootName = named(new ElidedLabel(theme::headlineFont(), TextColor::Primary), "shootName");
    m_client = named(new Tag(Tag::Kind::Client), "clientTag");
    m_shootCount = named(new TextLabel(QString(), theme::captionFont(), TextColor::Secondary), "shootCount");
    auto* const nameLine = new QHBoxLayout;
    nameLine->setSpacing(theme::kStep);
    nameLine->addWidget(m_shootName);
    nameLine->addWidget(m_client);
    nameLine->addStretch();
    auto* const left = new QVBoxLayout;
    left->setSpacing(2);
    left->addStretch();
    left->addLayout(nameLine);
    left->addWidget(m_shootCount);
    left->addStretch();

    auto* const bar = new QWidget;
    auto* const row = new QHBoxLayout(bar);
    row->setContentsMargins(theme::kMargin, theme::kStep, theme::kMargin, theme::kStep);
    row->setSpacing(theme::kMargin);
    row->addLayout(left, 2);
    row->addWidget(makeCommands(), 5);
    return bar;
}

QWidget* PrepMainView::makePicker() {
    m_picker = named(new ComboBox, "shootPicker", shown("Shoot"));
    m_picker->setMinimumWidth(kPickerWidth);
    m_picker->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    QObject::connect(m_picker, &QComboBox::activated, this, [this](int index) {
        const auto& shoots = m_manager.shoots();
        if (index >= 0 && static_cast<std::size_t>(index) < shoots.size())
            m_manager.setActiveShootId(shoots[static_cast<std::size_t>(index)].id);
    });
    auto* const pickerLabel = new TextLabel(shown("Shoot"), theme::bodyFont(), TextColor::Primary);
    pickerLabel->setBuddy(m_picker);
    m_pickerBox = new QWidget;
    QSizePolicy keepsItsPlace = m_pickerBox->sizePolicy();
    keepsItsPlace.setRetainSizeWhenHidden(true);
    m_pickerBox->setSizePolicy(keepsItsPlace);
    auto* const pickerRow = new QHBoxLayout(m_pickerBox);
    pickerRow->setContentsMargins(0, 0, 0, 0);
    pickerRow->addWidget(pickerLabel);
    pickerRow->addWidget(m_picker);
    return m_pickerBox;
}

QWidget* PrepMainView::makeCommands() {
    auto* const picker = makePicker();
    auto* const clients = makeCommand("clientsButton", shown("Klanten"), QStringLiteral("clients"));
    tellHelp(clients, shown("Klanten beheren, kiesbaar bij een nieuwe shoot en in de productcatalogus"));
    auto* const manual = makeCommand("manualButton", shown("Handleiding"), QStringLiteral("manual"));
    manual->setToolTip(shown("Opent de handleiding op %1 in je browser").arg(qstring(m_services.siteHost)));
    tellShortcut(manual, QStringLiteral("F1"));
    auto* const import = makeCommand("importButton", shown("Import CSV"), QStringLiteral("import"));
    tellHelp(import, shown("Voegt de sets uit een CSV-bestand toe aan een shoot"));
    m_exportCSV = makeCommand("exportCsvButton", shown("Export CSV"), QStringLiteral("export"));
    tellHelp(m_exportCSV, shown("Bewaart de sets van deze shoot als CSV-bestand, te openen als spreadsheet"));
    m_exportJSON = makeCommand("exportJsonButton", shown("Export JSON"), QStringLiteral("export"));
    tellHelp(m_exportJSON, shown("Bewaart deze shoot met al haar sets als JSON-bestand"));
    auto* const generator = makeCommand("generatorButton", shown("QR Generator"), QStringLiteral("qrcode"));
    tellHelp(generator, shown("Opent een venster voor losse QR-codes, buiten een shoot om"),
             QStringLiteral("Ctrl+G"));
    m_bulkExport = makeCommand("bulkExportButton", shown("Bulk QR-export"), QStringLiteral("cards"));
    tellHelp(m_bulkExport, shown("Maakt een PDF met de QR-kaarten van de sets die je kiest, om te printen"));
    auto* const catalog = makeCommand("catalogButton", shown("Productcatalogus"), QStringLiteral("catalog"));
    tellHelp(catalog, shown("Producten en merken beheren, kiesbaar bij het aanmaken van een set"));
    m_newShoot = named(new ProminentButton(shown("Nieuwe Shoot")), "newShootButton", shown("Nieuwe Shoot"));
    m_newShoot->setIcon(symbolIcon(QStringLiteral("plus")));
    tellHelp(m_newShoot, shown("Maakt een shoot aan, die meteen de actieve is"), QStringLiteral("Ctrl+N"));
    m_deleteShoot = named(
        new SymbolButton(QStringLiteral("trash"), shown("Shoot verwijderen (inclusief alle sets erin)")),
        "deleteShootButton");

    const auto onClick = [this](QAbstractButton* button, auto action) {
        QObject::connect(button, &QAbstractButton::clicked, this, action);
    };
    onClick(clients, [this] { openSheet(new ClientsSheet(this, m_catalog, clientsOf(m_manager.shoots()))); });
    onClick(manual, [this] { openManual(); });
    onClick(import, [this] { openSheet(new ImportSheet(this, m_manager, m_services)); });
    onClick(m_exportCSV, [this] { exportCSV(); });
    onClick(m_exportJSON, [this] { exportJSON(); });
    onClick(generator, [this] { m_onOpenGenerator(); });
    onClick(m_bulkExport, [this] {
        if (const auto* const shoot = m_manager.activeShoot())
            openSheet(new BulkQRExportSheet(this, shoot->sets, shoot->name, m_services));
    });
    onClick(catalog, [this] {
        const auto* const shoot = m_manager.activeShoot();
        const auto brand = shoot != nullptr ? brandOfClient(m_catalog, shoot->client) : std::string();
        openSheet(new CatalogSheet(this, m_catalog, brand, m_services));
    });
    onClick(m_newShoot, [this] { openSheet(new NewShootSheet(this, m_manager, m_catalog, m_services)); });
    onClick(m_deleteShoot, [this] { confirmDeleteShoot(); });

    auto* const commands = new QWidget;
    auto* const flow = new FlowLayout(theme::kStep);
    commands->setLayout(flow);
    for (auto* const widget : {picker, static_cast<QWidget*>(clients), static_cast<QWidget*>(manual),
                               static_cast<QWidget*>(import), static_cast<QWidget*>(m_exportCSV),
                               static_cast<QWidget*>(m_exportJSON), static_cast<QWidget*>(generator),
                               static_cast<QWidget*>(m_bulkExport), static_cast<QWidget*>(catalog),
                               static_cast<QWidget*>(m_newShoot), static_cast<QWidget*>(m_deleteShoot)})
        flow->addWidget(widget);
    return commands;
}

QWidget* PrepMainView::makeEmptyState() {
    auto* const empty = named(new QWidget, "emptyState");
    auto* const hint =
        new TextLabel(shown("Maak een shoot aan om te beginnen"), theme::bodyFont(), TextColor::Secondary);
    auto* const column = new QVBoxLayout(empty);
    column->setSpacing(theme::kStep);
    column->addStretch();
    column->addWidget(new SymbolLabel(QStringLiteral("camera"), 40, 0.3), 0, Qt::AlignHCenter);
    column->addWidget(hint, 0, Qt::AlignHCenter);
    column->addStretch();
    return empty;
}

QWidget* PrepMainView::makeContent() {
    auto* const content = new QWidget;
    auto* const column = new QVBoxLayout(content);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(makeShootLine());
    column->addWidget(makeSearchLine());
    m_list = makeSetList();
    column->addWidget(m_list, 1);
    column->addWidget(makeScannerLine());
    return content;
}

QWidget* PrepMainView::makeShootLine() {
    m_newSet = named(new QPushButton(shown("+ Set")), "newSetButton", shown("+ Set"));
    tellHelp(m_newSet, shown("Maakt een set aan in deze shoot"), QStringLiteral("Ctrl+T"));
    auto* const divider = new Divider(Qt::Vertical);
    divider->setFixedHeight(16);
    auto* const open = makeCommand("openButton", shown("Open..."), QStringLiteral("folder"));
    open->setToolTip(shown("Open een .vantor-bestand, bijv. een shoot geëxporteerd uit Vantor"));
    tellShortcut(open, QStringLiteral("Ctrl+O"));
    m_save = makeCommand("saveButton", shown("Bewaar..."), QStringLiteral("save"));
    m_save->setToolTip(
        shown("Bewaar de volledige shoot als .vantor-bestand, te openen in Vantor of Vantor Prep"));
    tellShortcut(m_save, QStringLiteral("Ctrl+S"));
    m_activeMarker = new ActiveMarker;
    m_activeText = named(new ElidedLabel(theme::captionFont(), TextColor::Secondary), "activeText");
    QObject::connect(m_newSet, &QPushButton::clicked, this,
                     [this] { openSheet(new SetSheet(this, m_manager, m_catalog, m_services)); });
    QObject::connect(open, &QPushButton::clicked, this, [this] { importVantorFile(); });
    QObject::connect(m_save, &QPushButton::clicked, this, [this] { exportVantorFile(); });

    auto* const line = new QWidget;
    auto* const row = new QHBoxLayout(line);
    row->setContentsMargins(theme::kMargin, theme::kStep, theme::kMargin, theme::kHalfStep);
    row->setSpacing(theme::kStep);
    row->addWidget(m_newSet);
    row->addWidget(divider);
    row->addWidget(open);
    row->addWidget(m_save);
    row->addStretch();
    row->addWidget(m_activeMarker);
    row->addWidget(m_activeText);
    return line;
}

QWidget* PrepMainView::makeSearchLine() {
    m_search = makeField("searchField", shown("Zoek op naam, model of item..."));
    tellShortcut(m_search, QStringLiteral("Ctrl+F"));
    m_search->setToolTip(
        QStringLiteral("%1 (%2)").arg(m_search->placeholderText(), QStringLiteral("Ctrl+F")));
    m_clearSearch =
        named(new SymbolButton(QStringLiteral("clear"), shown("Zoekopdracht wissen")), "clearSearchButton");
    m_searchCount =
        named(new TextLabel(QString(), theme::captionFont(), TextColor::Secondary), "searchCount");
    // At once: the next keys may already be those that lead to the list and choose in it.
    QObject::connect(m_search, &QLineEdit::textChanged, this,
                     [this] { renderSets(m_manager.activeShoot()); });
    QObject::connect(m_clearSearch, &QToolButton::clicked, this, [this] {
        m_search->clear();
        m_search->setFocus();
    });
    const auto onKey = [this](Qt::Key key, auto action) {
        auto* const shortcut = new QShortcut(key, m_search);
        shortcut->setContext(Qt::WidgetShortcut);
        QObject::connect(shortcut, &QShortcut::activated, this, action);
    };
    onKey(Qt::Key_Escape, [this] { m_search->clear(); });
    onKey(Qt::Key_Down, [this] { m_list->setFocus(); });

    auto* const line = new QWidget;
    auto* const row = new QHBoxLayout(line);
    row->setContentsMargins(theme::kMargin, theme::kHalfStep, theme::kMargin, theme::kStep);
    row->setSpacing(theme::kStep);
    row->addWidget(new SymbolLabel(QStringLiteral("magnifier"), theme::kSymbolSize));
    row->addWidget(m_search, 1);
    row->addWidget(m_clearSearch);
    row->addWidget(m_searchCount);
    return line;
}

QWidget* PrepMainView::makeScannerLine() {
    m_scanner =
        named(new ScannerField([this] { handleScan(); }), "scannerField", shown("Scan QR of typ setdata..."));
    m_scanner->setPlaceholderText(shown("Scan QR of typ setdata..."));
    tellShortcut(m_scanner, QStringLiteral("Ctrl+L"));
    m_scanner->setToolTip(
        QStringLiteral("%1 (%2)").arg(m_scanner->placeholderText(), QStringLiteral("Ctrl+L")));
    m_activate = named(new QPushButton(shown("Activeer")), "activateScanButton", shown("Activeer"));
    m_activate->setEnabled(false);
    QObject::connect(m_scanner, &QLineEdit::textChanged, m_activate,
                     [this](const QString& text) { m_activate->setEnabled(!text.isEmpty()); });
    QObject::connect(m_activate, &QPushButton::clicked, this, [this] {
        handleScan();
        m_scanner->setFocus();
    });

    auto* const line = new QWidget;
    auto* const row = new QHBoxLayout(line);
    row->setContentsMargins(theme::kMargin, theme::kStep, theme::kMargin, theme::kStep + theme::kHalfStep);
    row->setSpacing(theme::kStep);
    row->addWidget(new SymbolLabel(QStringLiteral("barcode"), theme::kSymbolSize));
    row->addWidget(m_scanner, 1);
    row->addWidget(m_activate);
    return line;
}

RecyclingList* PrepMainView::makeSetList() {
    RecyclingList::Rows rows;
    rows.make = [this] { return new SetRow(m_rowActions); };
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
            m_manager.activateSet(set->id);
    };
    rows.remove = [this](int place) {
        if (QWidget* const row = m_list->rowWidget(place))
            static_cast<SetRow*>(row)->askToDelete();
    };
    rows.showMenu = [this](int place, const QPoint& position) {
        if (QWidget* const row = m_list->rowWidget(place))
            static_cast<SetRow*>(row)->openMenu(position);
    };
    auto* const list = named(new RecyclingList(std::move(rows)), "setList", shown("Sets"));
    return list;
}

void PrepMainView::makeShortcuts() {
    const auto on = [this](const QKeySequence& keys, auto action) {
        QObject::connect(new QShortcut(keys, this), &QShortcut::activated, this, action);
    };
    on(Qt::CTRL | Qt::Key_N, [this] { m_newShoot->click(); });
    on(Qt::CTRL | Qt::Key_T, [this] {
        if (m_manager.activeShoot() != nullptr)
            m_newSet->click();
    });
    on(Qt::CTRL | Qt::Key_O, [this] { importVantorFile(); });
    on(Qt::CTRL | Qt::Key_S, [this] { m_save->click(); });
    on(Qt::CTRL | Qt::Key_F, [this] {
        m_search->setFocus();
        m_search->selectAll();
    });
    on(Qt::CTRL | Qt::Key_L, [this] { m_scanner->setFocus(); });
    on(Qt::CTRL | Qt::Key_G, [this] { m_onOpenGenerator(); });
    on(Qt::Key_F1, [this] { openInstalledManual(); });
    on(Qt::CTRL | Qt::Key_W, [this] { close(); });
    on(Qt::CTRL | Qt::Key_Q, [] { QApplication::closeAllWindows(); });
}

void PrepMainView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (m_loaded)
        return;
    m_loaded = true;
    m_manager.load();
    m_catalog.load();
    render();
    focusHome();
}

void PrepMainView::focusHome() {
    QWidget* const home = m_manager.activeShoot() != nullptr ? static_cast<QWidget*>(m_scanner) : m_newShoot;
    home->setFocus();
}

void PrepMainView::render() {
    const auto* const shoot = m_manager.activeShoot();
    renderHeader(shoot);
    renderShootBar(shoot);
    renderPicker();
    const bool wasEmpty = m_stack->currentIndex() == 0;
    const bool becomesEmpty = shoot == nullptr && !wasEmpty;
    m_stack->setCurrentIndex(shoot != nullptr ? 1 : 0);
    if (shoot != nullptr)
        renderShootLine(*shoot);
    renderSets(shoot);
    if (becomesEmpty || (shoot != nullptr && wasEmpty && !takesText(QApplication::focusWidget())))
        focusHome();
}

void PrepMainView::renderHeader(const Shoot* shoot) {
    const auto& version = m_services.updates.availableVersion();
    m_update->setVisible(version.has_value());
    if (version)
        m_update->setText(shown("v%1 beschikbaar").arg(dataInMenu(*version)));
    m_badge->setValue(QString::number(shoot != nullptr ? shoot->sets.size() : 0));
}

void PrepMainView::renderShootBar(const Shoot* shoot) {
    const bool hasSets = shoot != nullptr && !shoot->sets.empty();
    m_shootName->setText(shoot != nullptr ? shownData(shoot->name) : shown("Geen shoot geselecteerd"));
    m_client->setVisible(shoot != nullptr && !shoot->client.empty());
    m_shootCount->setVisible(shoot != nullptr);
    if (shoot != nullptr) {
        m_client->setText(shownData(shoot->client));
        m_shootCount->setText(shown("%1 sets").arg(shoot->sets.size()));
    }
    m_exportCSV->setEnabled(hasSets);
    m_exportJSON->setEnabled(hasSets);
    m_bulkExport->setEnabled(hasSets);
    m_deleteShoot->setVisible(shoot != nullptr);
}

void PrepMainView::renderPicker() {
    const auto& shoots = m_manager.shoots();
    const QSignalBlocker quiet(m_picker);
    while (m_picker->count() > static_cast<int>(shoots.size()))
        m_picker->removeItem(m_picker->count() - 1);
    int current = -1;
    for (std::size_t i = 0; i < shoots.size(); ++i) {
        const auto index = static_cast<int>(i);
        const auto name = shownData(shoots[i].name);
        if (index == m_picker->count())
            m_picker->addItem(name);
        else if (m_picker->itemText(index) != name)
            m_picker->setItemText(index, name);
        if (shoots[i].id == m_manager.activeShootId())
            current = index;
    }
    m_picker->setCurrentIndex(current);
    tellInFull(m_picker, m_picker->currentText());
    m_pickerBox->setVisible(shoots.size() >= 2);
}

void PrepMainView::renderShootLine(const Shoot& shoot) {
    m_save->setEnabled(!shoot.sets.empty());
    const auto* const active = m_manager.activeSet();
    m_activeMarker->setVisible(active != nullptr);
    m_activeMarker->setActive(active != nullptr);
    m_activeText->setVisible(active != nullptr);
    if (active != nullptr)
        m_activeText->setText(shown("Actief: %1").arg(qstring(shownHeadline(*active))));
}

void PrepMainView::renderSets(const Shoot* shoot) {
    static const SetList kNone;
    const auto& sets = shoot != nullptr ? shoot->sets : kNone;
    m_filtered = vantor::filteredSets(sets, typed(m_search->text()));
    const bool searching = !m_search->text().isEmpty();
    m_clearSearch->setVisible(searching);
    m_searchCount->setVisible(searching);
    m_searchCount->setText(QStringLiteral("%1/%2").arg(m_filtered.size()).arg(sets.size()));
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

std::optional<int> PrepMainView::rowOf(const std::optional<Uuid>& id) const {
    const auto found = std::ranges::find_if(
        m_filtered, [&](std::size_t place) { return m_manager.activeShoot()->sets[place].id == id; });
    return found != m_filtered.end() ? std::optional(static_cast<int>(found - m_filtered.begin()))
                                     : std::nullopt;
}

const SetData* PrepMainView::setAt(int row) const {
    const auto* const shoot = m_manager.activeShoot();
    const auto place = static_cast<std::size_t>(row);
    // Between a change and the next redrawing the places may be those of a list that has become shorter.
    if (shoot == nullptr || row < 0 || place >= m_filtered.size() || m_filtered[place] >= shoot->sets.size())
        return nullptr;
    return &shoot->sets[m_filtered[place]];
}

const SetData* PrepMainView::setWithId(const Uuid& id) const {
    const auto* const shoot = m_manager.activeShoot();
    if (shoot == nullptr)
        return nullptr;
    const auto found = std::ranges::find(shoot->sets, id, &SetData::id);
    return found != shoot->sets.end() ? &*found : nullptr;
}

void PrepMainView::handleScan() {
    const auto input = typed(m_scanner->text());
    const auto text = trimmedOfLineBreaks(input);
    if (text.empty())
        return;
    const auto set = m_manager.handleScanInput(text);
    m_scanner->clear();
    if (set && m_manager.activeSet() != nullptr && m_manager.activeSetId() == set->id)
        showScanned(set->id);
}

void PrepMainView::showScanned(const Uuid& id) {
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

void PrepMainView::exportCSV() {
    if (const auto* const shoot = m_manager.activeShoot())
        saveFile(this, m_services, shootFileName(shoot, lookUp("sets"), ".csv"), csvType(),
                 m_manager.exportCSV(shoot->id));
}

void PrepMainView::exportJSON() {
    const auto* const shoot = m_manager.activeShoot();
    if (auto bytes = shoot != nullptr ? m_manager.exportJSON(shoot->id) : std::nullopt)
        saveFile(this, m_services, shootFileName(shoot, lookUp("sets"), ".json"), jsonType(),
                 *std::move(bytes));
}

void PrepMainView::exportVantorFile() {
    const auto* const shoot = m_manager.activeShoot();
    if (auto bytes = shoot != nullptr ? m_manager.exportJSON(shoot->id) : std::nullopt)
        saveFile(this, m_services, shootFileName(shoot, lookUp("shoot"), ".vantor"), shootFileType(),
                 *std::move(bytes));
}

void PrepMainView::importVantorFile() {
    m_services.dialogs.askWhatToOpen(askingWindow(this), {shootFileType()}, [this](const auto& path) {
        if (path)
            m_opener.openChosen(*path);
    });
}

void PrepMainView::openShootFiles(HandedFiles handed) {
    m_opener.open(std::move(handed));
}

void PrepMainView::showImportError() {
    // One message for however many files.
    if (std::exchange(m_importErrorShown, true))
        return;
    showAlert(
        this, shown("Kon .vantor-bestand niet openen"),
        shown("Het bestand kon niet gelezen worden, mogelijk beschadigd of geen geldig .vantor-bestand."),
        [this] {
            m_importErrorShown = false;
            returnFocus();
        });
}

void PrepMainView::openManual() {
    m_services.urls.open(m_services.manualPage);
}

// Needs no network.
void PrepMainView::openInstalledManual() {
    if (m_services.installedManual.empty())
        openManual();
    else
        m_services.urls.openPage(m_services.installedManual);
}

void PrepMainView::openDownload() {
    if (const auto& url = m_services.updates.downloadURL())
        m_services.urls.open(*url);
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
    QObject::connect(sheet, &QDialog::finished, this, [this] { returnFocus(); });
    sheet->open();
}

void PrepMainView::returnFocus() {
    if (auto* const front = windowInFrontOf(this); front != this)
        front->activateWindow();
    else
        focusHome();
}

void PrepMainView::dragEnterEvent(QDragEnterEvent* event) {
    if (!shootFilesOf(*event->mimeData()).empty())
        acceptAsCopy(*event);
}

void PrepMainView::dropEvent(QDropEvent* event) {
    acceptAsCopy(*event);
    if (event->isAccepted())
        openShootFiles({shootFilesOf(*event->mimeData()), {}, {}, {}});
}

bool PrepMainView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType())
        return false;
    auto* const widget = static_cast<QWidget*>(watched);
    auto* const key = static_cast<QKeyEvent*>(event);
    // Whatever is typed while nothing on this window takes text is meant for the scanner field.
    if (widget->window() != this || !m_scanner->isVisible() || QApplication::activeModalWidget() != nullptr ||
        QApplication::activePopupWidget() != nullptr || takesText(QApplication::focusWidget()) ||
        !typesCharacter(*key))
        return false;
    m_scanner->setFocus();
    m_scanner->takeKey(key);
    return true;
}

} // namespace vantor::ui
