#include "ui/main/set_row.h"

#include "ui/frame/confirmation.h"
#include "ui/frame/theme.h"
#include "ui/widgets/symbol.h"
#include "ui/widgets/text.h"
#include "view/shown_set.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace vantor::ui {
namespace {

constexpr int kActivationWidth = 84;
// As wide as counts are, so that those of all rows stand in one column.
constexpr QLatin1String kUsualCount("0000");

} // namespace

SetRow::SetRow(const Actions& actions) : m_actions(actions) {
    setObjectName(QStringLiteral("setRow"));
    m_marker = named(new ActiveMarker, "activeMarker");
    m_headlineLabel = named(new ElidedLabel(theme::headlineFont(), TextColor::Primary), "headline");
    m_description = named(new ElidedLabel(theme::captionFont(), TextColor::Secondary), "description");
    m_count = named(new CountLabel(theme::countFont(), TextColor::Secondary), "taggedCount");
    auto* const photos = new TextLabel(shown("foto's"), theme::labelFont(), TextColor::Secondary);
    m_qr = named(new SymbolButton(QStringLiteral("qrcode"), shown("Toon QR-code")), "qrButton");
    m_edit = named(new SymbolButton(QStringLiteral("pencil"), shown("Bewerken")), "editButton");
    m_delete = named(new SymbolButton(QStringLiteral("trash"), shown("Verwijderen")), "deleteButton");
    m_activate = named(new QPushButton(shown("Activeer")), "activateButton");
    m_active = named(new Tag(Tag::Kind::Active), "activeTag");
    m_active->setText(shown("ACTIEF"));

    auto* const texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addStretch();
    texts->addWidget(m_headlineLabel);
    texts->addWidget(m_description);
    texts->addStretch();
    auto* const counts = new QVBoxLayout;
    counts->setSpacing(0);
    counts->addStretch();
    counts->addWidget(m_count, 0, Qt::AlignHCenter);
    counts->addWidget(photos, 0, Qt::AlignHCenter);
    counts->addStretch();
    counts->addStrut(QFontMetrics(theme::countFont()).horizontalAdvance(kUsualCount));

    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(theme::kPadding, theme::kHalfStep, theme::kMargin, theme::kHalfStep);
    row->setSpacing(theme::kStep);
    row->addWidget(m_marker);
    row->addSpacing(theme::kStep);
    row->addLayout(texts, 1);
    row->addLayout(counts);
    row->addSpacing(theme::kStep);
    row->addWidget(m_qr);
    row->addWidget(m_edit);
    row->addWidget(m_delete);
    row->addWidget(m_activate);
    row->addWidget(m_active);
    // Both equally wide, so that nothing moves when a set becomes active.
    const int width =
        std::max({kActivationWidth, m_activate->sizeHint().width(), m_active->sizeHint().width()});
    m_activate->setFixedWidth(width);
    m_active->setFixedWidth(width);

    QObject::connect(m_qr, &QToolButton::clicked, this, [this] { m_actions.onQR(m_id); });
    QObject::connect(m_edit, &QToolButton::clicked, this, [this] { m_actions.onEdit(m_id); });
    QObject::connect(m_delete, &QToolButton::clicked, this, [this] { askToDelete(); });
    QObject::connect(m_activate, &QPushButton::clicked, this, [this] { m_actions.onActivate(m_id); });
}

void SetRow::show(const SetData& set, bool isActive) {
    if (m_shown == set && m_showsActive == isActive)
        return;
    m_shown = set;
    m_showsActive = isActive;
    m_id = set.id;
    m_headline = qstring(shownHeadline(set));
    setActive(isActive);
    m_marker->setActive(isActive);
    m_headlineLabel->setText(m_headline);
    m_description->setText(qstring(shownDescription(set)));
    m_description->setVisible(!m_description->text().isEmpty());
    m_count->setText(QString::number(set.taggedCount));
    m_count->setColor(set.taggedCount >= 1 ? TextColor::Green : TextColor::Secondary);
    // The focus stays on the row when its button goes.
    if (isActive && m_activate->hasFocus())
        list()->setFocus(Qt::OtherFocusReason);
    m_activate->setVisible(!isActive);
    m_active->setVisible(isActive);
}

QString SetRow::name(const SetData& set, bool isActive) {
    const auto headline = qstring(shownHeadline(set));
    return isActive ? headline + QStringLiteral(", ") + shown("ACTIEF") : headline;
}

void SetRow::askToDelete() {
    const Uuid id = m_id;
    const auto& onDelete = m_actions.onDelete;
    confirmDeletion(window(), shown("Set \"%1\" verwijderen?").arg(m_headline), QString(),
                    [id, onDelete] { onDelete(id); });
}

void SetRow::openMenu(const QPoint& position) {
    auto* const menu = named(new QMenu(this), "setMenu");
    menu->setAttribute(Qt::WA_DeleteOnClose);
    buildMenu(*menu);
    menu->popup(position);
}

void SetRow::buildMenu(QMenu& menu) {
    // The row may show another set by the time that something is chosen.
    const Uuid id = m_id;
    QObject::connect(menu.addAction(symbolIcon(QStringLiteral("pencil")), shown("Bewerken")),
                     &QAction::triggered, this, [this, id] { m_actions.onEdit(id); });
    QObject::connect(menu.addAction(symbolIcon(QStringLiteral("qrcode")), shown("QR-code tonen")),
                     &QAction::triggered, this, [this, id] { m_actions.onQR(id); });
    QObject::connect(menu.addAction(symbolIcon(QStringLiteral("activate")), shown("Activeren")),
                     &QAction::triggered, this, [this, id] { m_actions.onActivate(id); });
    const QString title = shown("Set \"%1\" verwijderen?").arg(m_headline);
    QObject::connect(menu.addAction(symbolIcon(QStringLiteral("trash")), shown("Verwijderen")),
                     &QAction::triggered, this, [this, id, title] {
                         confirmDeletion(window(), title, QString(),
                                         [id, onDelete = m_actions.onDelete] { onDelete(id); });
                     });
}

} // namespace vantor::ui
