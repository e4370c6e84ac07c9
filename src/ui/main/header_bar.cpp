#include "ui/main/header_bar.h"

#include "ui/frame/theme.h"
#include "ui/widgets/stat_badge.h"
#include "ui/widgets/symbol.h"
#include "ui/widgets/text.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QSvgWidget>
#include <QVBoxLayout>

namespace vantor::ui {

HeaderBar::HeaderBar(const Services& services) : m_services(services) {
    auto* const logo = named(new QSvgWidget(symbolPath(QStringLiteral("logo"))), "logo", shown("Logo"));
    logo->setFixedSize(theme::kLogoSize, theme::kLogoSize);
    auto* const title = new TextLabel(shown("Vantor Prep"), theme::titleFont(), TextColor::Primary);
    auto* const version = named(new TextLabel(shown("v%1").arg(qstring(services.updates.currentVersion())),
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
    QObject::connect(m_update, &QPushButton::clicked, this, [this] {
        if (const auto& url = m_services.updates.downloadURL())
            m_services.urls.open(*url);
    });
    m_badge = new StatBadge(shown("Sets"), TextColor::Blue);

    // On the title's baseline.
    const QFontMetrics large(theme::titleFont());
    version->setContentsMargins(0, 0, 0, large.descent() - version->fontMetrics().descent());
    auto* const titleLine = new QHBoxLayout;
    titleLine->setSpacing(theme::kStep);
    titleLine->addWidget(title, 0, Qt::AlignBottom);
    titleLine->addWidget(version, 0, Qt::AlignBottom);
    titleLine->addStretch();
    auto* const texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addLayout(titleLine);
    texts->addWidget(tagline);
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(theme::kMargin, theme::kPadding, theme::kMargin, theme::kPadding);
    row->setSpacing(theme::kPadding);
    row->addWidget(logo);
    row->addLayout(texts, 1);
    row->addWidget(m_update);
    row->addWidget(m_badge);
}

void HeaderBar::render(std::size_t sets) {
    const auto& version = m_services.updates.availableVersion();
    m_update->setVisible(version.has_value());
    if (version)
        m_update->setText(shown("v%1 beschikbaar").arg(dataInMenu(*version)));
    m_badge->setValue(QString::number(sets));
}

} // namespace vantor::ui
