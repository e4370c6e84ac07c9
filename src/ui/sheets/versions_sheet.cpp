#include "ui/sheets/versions_sheet.h"

#include "ui/frame/beside_window.h"
#include "ui/frame/theme.h"
#include "ui/sheets/two_line_row.h"
#include "ui/widgets/recycling_list.h"
#include "ui/widgets/text.h"

#include <QHBoxLayout>
#include <QScrollBar>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <utility>

namespace vantor::ui {
namespace {

constexpr int kWidth = 860;
constexpr int kHeight = 470;

class VersionRow : public TwoLineRow {
public:
    TextLabel* counts;

    VersionRow() : TwoLineRow("versionRow", "versionTime", "versionReason") {
        counts = named(new TextLabel(QString(), theme::captionFont(), TextColor::Secondary), "versionCounts");
        addAtRight(counts);
    }
};

class VersionShootRow : public TwoLineRow {
public:
    QPushButton* restore;
    int place = 0;

    VersionShootRow() : TwoLineRow("versionShootRow", "versionShootName", "versionShootAbout") {
        restore = named(new QPushButton(shown("Haal terug")), "restoreShootButton");
        restore->setAutoDefault(false);
        addAtRight(restore);
    }
};

// Gives the list room for all of such a row, of which only its headline and caption may be cut off.
void makeRoomFor(TwoLineRow& row, RecyclingList& list) {
    row.ensurePolished();
    for (auto* const cutOff : {row.headline(), row.caption()})
        cutOff->setText(QString(20, QLatin1Char('m')));
    list.setMinimumWidth(row.layout()->minimumSize().width() + 2 * list.frameWidth() +
                         list.verticalScrollBar()->sizeHint().width());
}

RecyclingList::Told toldOf(const QString& name, const QStringList& more) {
    return {name, more.join(QStringLiteral(", "))};
}

} // namespace

VersionsSheet::VersionsSheet(QWidget* over, const Services& services)
    : Sheet(over, "versionsSheet", shown("Eerdere versies")),
      m_services(services) {
    setFirstSize(kWidth, kHeight);
    addTitle(shown("Eerdere versies"));
    addExplanation(
        shown("Terugzetten kun je ongedaan maken; wat er nu is, blijft zelf ook als versie bewaard."));
    m_versionList = makeVersionList();
    m_versionStack = listOrText(m_versionList, new TextLabel(shown("Nog geen eerdere versies."),
                                                             theme::bodyFont(), TextColor::Secondary, true));
    auto* const both = new QHBoxLayout;
    both->setSpacing(theme::kMargin);
    both->addWidget(m_versionStack, 11);
    both->addWidget(makeContentPanel(), 10);
    column()->addLayout(both, 1);
    m_restoreAll = named(new ProminentButton(shown("Alles terugzetten")), "restoreAllButton");
    m_restoreAll->setAutoDefault(false);
    QObject::connect(m_restoreAll, &QPushButton::clicked, this, [this] { restoreVersion(); });
    addCloseButton(m_restoreAll);
    renderContent();
    m_versionList->setFocus();
    readVersions();
}

RecyclingList* VersionsSheet::makeVersionList() {
    const auto lineAt = [this](int place) {
        return lineOf(m_versions.versions()[static_cast<std::size_t>(place)], m_services.clock());
    };
    RecyclingList::Rows rows;
    rows.make = [] { return new VersionRow; };
    rows.fill = [lineAt](QWidget& widget, int place, bool isCurrent) {
        auto& row = static_cast<VersionRow&>(widget);
        const auto line = lineAt(place);
        row.headline()->setText(qstring(line.when));
        row.caption()->setText(qstring(line.what));
        row.counts->setText(qstring(line.counts));
        row.setCurrent(isCurrent);
    };
    rows.key = [this](int place) -> std::string_view {
        return m_versions.keyAt(static_cast<std::size_t>(place));
    };
    rows.tell = [lineAt](int place) {
        const auto line = lineAt(place);
        return toldOf(qstring(line.when), {qstring(line.what), qstring(line.counts)});
    };
    rows.choose = [this](int place) { choose(place); };
    auto* const list = named(new RecyclingList(std::move(rows)), "versionList", shown("Eerdere versies"));
    VersionRow widest;
    widest.counts->setText(qstring(countsInWords({999, 9999})));
    makeRoomFor(widest, *list);
    return list;
}

RecyclingList* VersionsSheet::makeShootList() {
    const auto shootAt = [this](int place) -> const Shoot& {
        return m_versions.shoots()[static_cast<std::size_t>(place)];
    };
    RecyclingList::Rows rows;
    rows.make = [this] {
        auto* const row = new VersionShootRow;
        QObject::connect(row->restore, &QPushButton::clicked, this,
                         [this, row] { restoreShootAt(row->place); });
        return row;
    };
    rows.fill = [this, shootAt](QWidget& widget, int place, bool isCurrent) {
        auto& row = static_cast<VersionShootRow&>(widget);
        const auto line = lineOf(shootAt(place), m_services.clock());
        row.place = place;
        row.headline()->setText(qstring(line.name));
        row.caption()->setText(qstring(line.about));
        row.setCurrent(isCurrent);
    };
    rows.key = [this, shootAt](int place) {
        return static_cast<std::size_t>(place) < m_versions.shoots().size() ? shootAt(place).id.bytes()
                                                                            : std::string_view();
    };
    rows.tell = [this, shootAt](int place) {
        const auto line = lineOf(shootAt(place), m_services.clock());
        return toldOf(qstring(line.name), {qstring(line.about)});
    };
    rows.activate = [this](int place) { restoreShootAt(place); };
    auto* const list = named(new RecyclingList(std::move(rows)), "versionShootList", shown("In deze versie"));
    VersionShootRow any;
    makeRoomFor(any, *list);
    return list;
}

QWidget* VersionsSheet::makeContentPanel() {
    auto* const panel = new QFrame;
    panel->setFrameShape(QFrame::StyledPanel);
    panel->setAutoFillBackground(true);
    panel->setBackgroundRole(QPalette::Base);
    auto* const heading = new TextLabel(shown("In deze versie"), theme::captionFont(), TextColor::Secondary);
    heading->setContentsMargins(theme::kPadding, theme::kStep, theme::kPadding, theme::kStep);
    m_shootList = makeShootList();
    m_noShoots =
        named(new TextLabel(QString(), theme::bodyFont(), TextColor::Secondary, true), "noVersionShoots");
    m_shootStack = listOrText(m_shootList, m_noShoots);
    // The panel has one.
    m_shootList->setFrameShape(QFrame::NoFrame);
    m_noShoots->setFrameShape(QFrame::NoFrame);
    auto* const all = new QVBoxLayout(panel);
    all->setContentsMargins(1, 1, 1, 1);
    all->setSpacing(0);
    all->addWidget(heading);
    all->addWidget(new Divider(Qt::Horizontal));
    all->addWidget(m_shootStack, 1);
    return panel;
}

void VersionsSheet::readVersions() {
    if (m_services.stores == nullptr) {
        showVersions({});
        return;
    }
    using Versions = std::vector<Version>;
    readBesideWindow<Versions>(
        this,
        [&files = m_services.files, folder = m_services.stores->path(),
         kept = m_services.stores->points().allKept()] {
            kept.wait();
            return versionsIn(files, folder);
        },
        [this](Versions& versions) { showVersions(std::move(versions)); });
}

void VersionsSheet::showVersions(std::vector<Version> versions) {
    const auto count = static_cast<int>(versions.size());
    m_versions.show(std::move(versions));
    m_versionStack->setCurrentIndex(count == 0 ? 1 : 0);
    m_versionList->setRowCount(count);
    if (count == 0)
        findChild<QPushButton*>(QStringLiteral("closeButton"))->setFocus();
    if (!m_versionList->currentRow() && count > 0)
        m_versionList->setCurrentRow(0);
    else
        choose(m_versionList->currentRow().value_or(-1));
}

void VersionsSheet::choose(int place) {
    m_versions.choose(place < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(place)));
    renderContent();
    readContent();
}

void VersionsSheet::readContent() {
    const auto version = m_versions.beginReading();
    if (!version)
        return;
    using Content = std::optional<LibraryVersion>;
    readBesideWindow<Content>(
        this, [&files = m_services.files, version = *version] { return contentOf(files, version); },
        [this](Content& content) {
            m_versions.finishReading(std::move(content));
            renderContent();
            // Another one may have been chosen meanwhile.
            readContent();
        });
}

void VersionsSheet::renderContent() {
    const auto count = static_cast<int>(m_versions.shoots().size());
    m_noShoots->setText(qstring(m_versions.reasonForNoShoots()));
    m_shootStack->setCurrentIndex(count == 0 ? 1 : 0);
    m_shootList->setRowCount(count);
    m_restoreAll->setEnabled(m_versions.content() != nullptr);
}

void VersionsSheet::restoreVersion() {
    const auto* const content = m_versions.content();
    if (content != nullptr)
        perform(restoreAll(m_services.document.library(), *content,
                           whenInWords(*m_versions.chosen(), m_services.clock(), Beginning::Small)));
}

void VersionsSheet::restoreShootAt(int place) {
    const auto at = static_cast<std::size_t>(place);
    if (at < m_versions.shoots().size())
        perform(restoreShoot(m_services.document.library(), m_versions.shoots()[at]));
}

void VersionsSheet::perform(Change change) {
    const bool isStep = change.isStep();
    m_services.document.perform(std::move(change));
    if (isStep)
        readVersions();
    else
        m_services.notices.show(
            {Notice::Kind::Plain, lookUp("Zo is het al; er is niets veranderd"), {}, "restoring"});
}

} // namespace vantor::ui
