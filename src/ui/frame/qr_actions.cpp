#include "ui/frame/qr_actions.h"

#include "output/qr_generator.h"
#include "ui/frame/save_file.h"
#include "ui/frame/theme.h"
#include "ui/widgets/text.h"
#include "view/proposed_names.h"

#include <QAccessible>

namespace vantor::ui {

void saveQRAsPng(const QWidget* asking, const SetData& set, const Services& services) {
    const auto picture = QRGenerator(services.encoder).generate(set.toQRText(), kSavedCodeSize);
    saveFile(asking, services, pngName(set), pngType(),
             picture ? services.pngs.encode(*picture) : std::nullopt);
}

CopiedNote::CopiedNote()
    : TextLabel(shown("Gekopieerd"), theme::captionFont(), TextColor::Green),
      m_hiding(this) {
    constexpr int kShownFor = 2000;
    setObjectName(QStringLiteral("copiedNote"));
    auto keepsItsPlace = sizePolicy();
    keepsItsPlace.setRetainSizeWhenHidden(true);
    setSizePolicy(keepsItsPlace);
    hide();
    m_hiding.setSingleShot(true);
    m_hiding.setInterval(kShownFor);
    QObject::connect(&m_hiding, &QTimer::timeout, this, &QWidget::hide);
}

void CopiedNote::tell() {
    show();
    m_hiding.start();
    QAccessibleEvent event(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

} // namespace vantor::ui
