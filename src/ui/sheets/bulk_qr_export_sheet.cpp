#include "ui/sheets/bulk_qr_export_sheet.h"

#include "output/bulk_qr_pdf_exporter.h"
#include "ui/frame/beside_window.h"
#include "ui/frame/file_notices.h"
#include "ui/frame/theme.h"
#include "ui/sheets/two_line_row.h"
#include "ui/widgets/recycling_list.h"
#include "ui/widgets/text.h"
#include "view/proposed_names.h"
#include "view/shown_set.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QProgressDialog>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <atomic>
#include <utility>

namespace vantor::ui {
namespace {

constexpr int kWidth = 480;
constexpr int kHeight = 560;
constexpr int kListHeight = 240;
// An export that takes longer than this shows how far it is, and how often it tells; both in milliseconds.
constexpr int kProgressDelay = 500;
constexpr int kProgressPeriod = 50;

} // namespace

// What the export and the window know of each other.
struct BulkQRExportSheet::Running {
    std::atomic<std::size_t> drawn{0};
    std::atomic<bool> cancelled{false};
};

namespace {

QString spokenName(const SetData& set) {
    const auto headline = qstring(shownHeadline(set));
    return headline.isEmpty() ? shown("Set zonder nummer en merk") : headline;
}

class CardRow : public TwoLineRow {
public:
    Uuid id;
    QCheckBox* box;

    CardRow() : TwoLineRow("cardRow", "cardHeadline", "cardItems") {
        box = named(new QCheckBox, "cardCheckBox");
        addAtLeft(box);
    }

protected:
    // The texts are the check box's label.
    void mouseReleaseEvent(QMouseEvent*) override { box->click(); }
};

} // namespace

BulkQRExportSheet::BulkQRExportSheet(QWidget* over, SetList sets, std::string shootName,
                                     const Services& services)
    : Sheet(over, "bulkExportSheet", shown("Bulk QR-export")),
      m_services(services),
      m_selection(std::move(sets)),
      m_shootName(std::move(shootName)) {
    setFirstSize(kWidth, kHeight);
    addTitle(shown("Bulk QR-export"));
    addExplanation(shown("Exporteer QR-kaarten van meerdere sets in één PDF, klaar om te printen."));
    column()->addWidget(makeDensityPicker());

    m_selectAll = named(new QPushButton, "selectAllButton");
    m_selectAll->setAutoDefault(false);
    for (const auto& text : {shown("Selecteer alles"), shown("Deselecteer alles")}) {
        m_selectAll->setText(text);
        m_selectAll->setMinimumWidth(std::max(m_selectAll->minimumWidth(), m_selectAll->sizeHint().width()));
    }
    m_count = named(new TextLabel(QString(), theme::captionFont(), TextColor::Secondary), "selectedCount");
    auto* const row = new QHBoxLayout;
    row->setSpacing(theme::kStep);
    row->addWidget(m_selectAll);
    row->addWidget(m_count);
    row->addStretch();
    m_list = makeList();
    m_list->setMinimumHeight(kListHeight);
    auto* const choice = new QVBoxLayout;
    choice->setSpacing(theme::kStep);
    choice->addLayout(row);
    choice->addWidget(m_list, 1);
    column()->addLayout(choice, 1);
    m_export = named(new ProminentButton(shown("Exporteer PDF...")), "exportButton");
    m_export->setAutoDefault(false);
    addCancelButton(m_export);

    QObject::connect(m_selectAll, &QPushButton::clicked, this, [this] {
        m_selection.toggleAll();
        render();
    });
    QObject::connect(m_export, &QPushButton::clicked, this, [this] { exportPDF(); });
    render();
    m_export->setFocus();
}

QWidget* BulkQRExportSheet::makeDensityPicker() {
    auto* const picker = named(new QWidget, "densityPicker", shown("Dichtheid"));
    auto* const row = new QHBoxLayout(picker);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(new TextLabel(shown("Dichtheid"), theme::bodyFont(), TextColor::Primary));
    row->addSpacing(theme::kStep);
    auto* const group = new QButtonGroup(picker);
    for (const auto density : kAllDensities) {
        const bool large = density == BulkQRDensity::large;
        auto* const button =
            named(large ? new SegmentButton(shown("Groot — 4 per A4"), SegmentButton::Place::First)
                        : new SegmentButton(shown("Compact — 9 per A4"), SegmentButton::Place::Last),
                  large ? "densityLarge" : "densityCompact");
        button->setChecked(density == m_selection.density);
        button->setAccessibleDescription(shown("Dichtheid"));
        group->addButton(button);
        row->addWidget(button, 1);
        QObject::connect(button, &QPushButton::clicked, this,
                         [this, density] { m_selection.density = density; });
    }
    return picker;
}

RecyclingList* BulkQRExportSheet::makeList() {
    RecyclingList::Rows rows;
    rows.make = [this] {
        auto* const row = new CardRow;
        QObject::connect(row->box, &QCheckBox::clicked, this, [this, row](bool checked) {
            m_selection.select(row->id, checked);
            render();
        });
        return row;
    };
    rows.fill = [this](QWidget& widget, int place, bool isCurrent) {
        auto& row = static_cast<CardRow&>(widget);
        const auto& set = m_selection.sets()[static_cast<std::size_t>(place)];
        row.id = set.id;
        row.box->setChecked(m_selection.isSelected(set.id));
        row.headline()->setText(qstring(shownHeadline(set)));
        QStringList names;
        for (const auto& item : set.items)
            names.append(shownData(item.name));
        row.caption()->setVisible(!names.isEmpty());
        row.caption()->setText(names.join(QStringLiteral(", ")));
        if (const auto name = spokenName(set); row.box->accessibleName() != name)
            row.box->setAccessibleName(name);
        row.setCurrent(isCurrent);
    };
    rows.key = [this](int place) { return m_selection.sets()[static_cast<std::size_t>(place)].id.bytes(); };
    rows.tell = [this](int place) {
        return RecyclingList::Told{spokenName(m_selection.sets()[static_cast<std::size_t>(place)]), {}};
    };
    rows.activate = [this](int place) {
        const auto& id = m_selection.sets()[static_cast<std::size_t>(place)].id;
        m_selection.select(id, !m_selection.isSelected(id));
        render();
    };
    rows.toggle = rows.activate;
    auto* const list = named(new RecyclingList(std::move(rows)), "cardList", shown("Sets"));
    list->showFrame();
    return list;
}

void BulkQRExportSheet::render() {
    m_selectAll->setText(m_selection.allSelected() ? shown("Deselecteer alles") : shown("Selecteer alles"));
    m_count->setText(shown("%1 geselecteerd").arg(m_selection.selectedCount()));
    m_export->setEnabled(m_selection.canExport() && !m_running);
    m_list->setRowCount(static_cast<int>(m_selection.sets().size()));
}

void BulkQRExportSheet::exportPDF() {
    m_services.dialogs.askWhereToSave(askingWindow(this), cardsName(m_shootName), pdfType(),
                                      [this](const auto& path) {
                                          if (path)
                                              runExport(*path);
                                      });
}

void BulkQRExportSheet::reject() {
    if (m_running)
        m_running->cancelled = true;
    else
        Sheet::reject();
}

void BulkQRExportSheet::runExport(const std::filesystem::path& path) {
    const auto sets = std::make_shared<const SetList>(m_selection.selectedSets());
    m_running = std::make_shared<Running>();
    render();
    auto* const progress = makeProgress(static_cast<int>(sets->size()));
    struct Exported {
        FileResult result;
        bool cancelled;
    };
    besideWindow<Exported>(
        this,
        [&services = m_services, sets, running = m_running, path,
         density = m_selection.density]() -> Exported {
            const BulkQRPDFExporter exporter(services.encoder, services.canvases, services.files);
            const auto result = exporter.exportTo(*sets, density, path, [&](std::size_t drawn) {
                running->drawn = drawn;
                return !running->cancelled;
            });
            return {result, running->cancelled.load()};
        },
        [this, progress, path](const Exported& exported) {
            progress->deleteLater();
            m_running.reset();
            render();
            // Whether a PDF was written or could not be, the sheet has done what it can.
            if (exported.cancelled)
                return;
            tellSaved(m_services, path, exported.result);
            accept();
        });
}

QProgressDialog* BulkQRExportSheet::makeProgress(int cards) {
    auto* const progress =
        named(new QProgressDialog(QString(), shown("Annuleer"), 0, cards, this), "exportProgress");
    auto* const label =
        new TextLabel(shown("QR-kaarten worden gemaakt..."), theme::bodyFont(), TextColor::Primary);
    label->setAlignment(Qt::AlignCenter);
    progress->setLabel(label);
    progress->setWindowTitle(windowTitle());
    progress->setWindowModality(Qt::WindowModal);
    progress->setMinimumDuration(kProgressDelay);
    progress->setAutoClose(false);
    progress->setAutoReset(false);
    progress->setValue(0);
    QObject::connect(progress, &QProgressDialog::canceled, this, [this] { reject(); });
    auto* const ticker = new QTimer(progress);
    QObject::connect(ticker, &QTimer::timeout, progress, [progress, running = m_running] {
        progress->setValue(static_cast<int>(running->drawn.load()));
    });
    ticker->start(kProgressPeriod);
    return progress;
}

} // namespace vantor::ui
