#include "ui/sheets/qr_sheet.h"

#include "output/qr_generator.h"
#include "ui/frame/file_notices.h"
#include "ui/frame/qr_actions.h"
#include "ui/frame/theme.h"
#include "ui/widgets/code_plate.h"
#include "ui/widgets/text.h"
#include "view/shown_set.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <utility>

namespace vantor::ui {
namespace {

constexpr int kWidth = 400;
constexpr int kSpacing = 20;

QString titleOf(const SetData& set) {
    return shown("QR-code: %1").arg(qstring(shownHeadline(set)));
}

} // namespace

QRSheet::QRSheet(QWidget* over, SetData set, const Services& services)
    : Sheet(over, "qrSheet", titleOf(set)),
      m_set(std::move(set)),
      m_services(services) {
    setFirstSize(kWidth);
    column()->setSpacing(kSpacing);

    auto* const title = named(new ElidedLabel(theme::headlineFont(), TextColor::Primary), "sheetTitle");
    title->setText(titleOf(m_set));
    title->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    column()->addWidget(title, 0, Qt::AlignHCenter);
    const auto text = m_set.toQRText();
    if (const auto picture = QRGenerator(m_services.encoder).generate(text, kShownCodeSize)) {
        auto* const plate = new CodePlate;
        plate->setPicture(*picture);
        column()->addWidget(plate, 0, Qt::AlignHCenter);
    }
    auto* const textBox = new CodeText;
    textBox->setText(text);
    column()->addWidget(textBox);

    auto* const copyButton = named(new QPushButton(shown("Kopieer QR")), "copyButton");
    auto* const saveButton = named(new QPushButton(shown("Bewaar als PNG...")), "saveButton");
    copyButton->setAutoDefault(false);
    saveButton->setAutoDefault(false);
    QObject::connect(copyButton, &QPushButton::clicked, this, [this] { copy(); });
    QObject::connect(saveButton, &QPushButton::clicked, this,
                     [this] { saveQRAsPng(this, m_set, m_services); });
    m_copied = new CopiedNote;
    column()->addWidget(m_copied, 0, Qt::AlignHCenter);
    buttons()->addStretch();
    buttons()->addWidget(copyButton);
    buttons()->addWidget(saveButton);
    buttons()->addStretch();
    copyButton->setFocus();
}

void QRSheet::copy() {
    if (const auto picture = QRGenerator(m_services.encoder).generate(m_set.toQRText(), kSavedCodeSize)) {
        m_services.clipboard.setPicture(*picture);
        m_copied->tell();
    } else {
        tellTooLongForCode(m_services);
    }
}

} // namespace vantor::ui
