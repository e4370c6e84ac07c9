#include "ui/generator/qr_generator_view.h"

#include "ui/frame/file_notices.h"
#include "ui/frame/notice_strip.h"
#include "ui/frame/qr_actions.h"
#include "ui/frame/quit_question.h"
#include "ui/frame/theme.h"
#include "ui/frame/window_place.h"
#include "ui/sheets/item_editor.h"
#include "ui/widgets/code_plate.h"
#include "ui/widgets/scroll_pane.h"
#include "ui/widgets/symbol.h"
#include "ui/widgets/text.h"
#include "ui/widgets/widgets.h"

#include <QCloseEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace vantor::ui {
namespace {

constexpr int kLeastWidth = 500;
constexpr int kLeastHeight = 600;
constexpr QSize kDefaultSize{860, 680};
constexpr int kLeastPaneWidth = 280;
constexpr int kPadding = 20;

} // namespace

QRGeneratorView::QRGeneratorView(const Services& services) : m_services(services) {
    setObjectName(QStringLiteral("qr-generator"));
    setWindowTitle(shown("QR Generator"));
    m_right = new QStackedWidget;
    m_right->addWidget(makeEmptyPane());
    m_right->addWidget(makeCodePane());
    m_right->setMinimumWidth(std::max(kLeastPaneWidth, m_right->minimumSizeHint().width()));

    auto* const panes = new QHBoxLayout(this);
    panes->setContentsMargins(0, 0, 0, 0);
    panes->setSpacing(0);
    panes->addWidget(makeForm(), 1);
    panes->addWidget(new Divider(Qt::Vertical));
    panes->addWidget(m_right, 1);
    // Both panes together are wider than the least of the window.
    static_assert(2 * kLeastPaneWidth > kLeastWidth);
    setMinimumHeight(kLeastHeight);
    m_setNumber->setFocus();
    new NoticeStrip(this, m_services.notices, NoticeStrip::Edge::Top);
    new WindowPlace(this, m_services.remembered, kDefaultSize);
    render();
}

void QRGeneratorView::closeEvent(QCloseEvent* event) {
    event->accept();
    askBeforeLosing(*this, m_services, *event);
}

QWidget* QRGeneratorView::makeForm() {
    m_setNumber = makeField("setNumber", shown("1"), shown("Set nummer"));
    fixWidth(m_setNumber, 80, 4);
    m_brand = makeField("brand", shown("bijv. Marvis"), shown("Merk"));
    m_model = makeField("model", shown("Naam model"), shown("Model"));
    m_location = makeField("location", shown("Studio"), shown("Locatie"));
    m_items = new ItemEditor({shown("Item naam"), 120, false}, m_location, [this] { render(); });
    auto* const generateButton = named(new ProminentButton(shown("Genereer QR")), "generateButton");

    auto* const group = new QGroupBox;
    auto* const column = new QVBoxLayout(group);
    column->setSpacing(theme::kMargin);
    column->addWidget(new TextLabel(shown("QR Generator"), theme::titleFont(), TextColor::Primary, true));
    column->addWidget(new TextLabel(shown("Set info"), theme::headlineFont(), TextColor::Primary));
    const auto addLabelled = [&](const QString& label, QLineEdit* field) {
        column->addLayout(labelled(label, field));
        QObject::connect(field, &QLineEdit::textChanged, this, [this] { render(); });
        QObject::connect(field, &QLineEdit::returnPressed, this, [this] { generate(); });
    };
    addLabelled(shown("Set nummer"), m_setNumber);
    addLabelled(shown("Merk"), m_brand);
    addLabelled(shown("Model"), m_model);
    addLabelled(shown("Locatie"), m_location);
    auto* const items = new QVBoxLayout;
    items->setSpacing(theme::kStep);
    items->addWidget(new TextLabel(shown("Items"), theme::headlineFont(), TextColor::Primary));
    items->addWidget(m_items);
    items->addWidget(m_items->addButton(), 0, Qt::AlignLeft);
    column->addLayout(items);
    column->addWidget(generateButton);
    m_items->setOnReturn([this] { generate(); });
    QObject::connect(generateButton, &QPushButton::clicked, this, [this] { generate(); });

    auto* const form = new ScrollPane("formScroll");
    auto* const padded = new QVBoxLayout(form->contents());
    padded->setContentsMargins(kPadding, kPadding, kPadding, kPadding);
    padded->addStrut(kLeastPaneWidth - 2 * kPadding);
    padded->addWidget(group);
    return form;
}

QWidget* QRGeneratorView::makeEmptyPane() {
    auto* const pane = new QWidget;
    auto* const column = new QVBoxLayout(pane);
    column->setContentsMargins(kPadding, kPadding, kPadding, kPadding);
    column->setSpacing(theme::kMargin);
    auto* const hint = new TextLabel(shown("Vul de gegevens in en klik 'Genereer QR'"), theme::captionFont(),
                                     TextColor::Secondary, true);
    hint->setAlignment(Qt::AlignCenter);
    column->addStretch();
    column->addWidget(new SymbolLabel(QStringLiteral("qrcode"), 60, 0.3), 0, Qt::AlignHCenter);
    column->addWidget(hint);
    column->addStretch();
    return pane;
}

QWidget* QRGeneratorView::makeCodePane() {
    m_plate = new CodePlate;
    m_text = new CodeText;
    auto* const copyButton = named(new QPushButton(shown("Kopieer QR")), "copyButton");
    auto* const saveButton = named(new QPushButton(shown("Bewaar als PNG...")), "saveButton");
    QObject::connect(copyButton, &QPushButton::clicked, this, [this] { copy(); });
    QObject::connect(saveButton, &QPushButton::clicked, this, [this] { saveQR(); });
    auto* const buttons = new QHBoxLayout;
    buttons->setSpacing(theme::kStep);
    buttons->addStretch();
    buttons->addWidget(copyButton);
    buttons->addWidget(saveButton);
    buttons->addStretch();

    auto* const pane = new ScrollPane("codePane");
    auto* const column = new QVBoxLayout(pane->contents());
    column->setContentsMargins(kPadding, kPadding, kPadding, kPadding);
    column->setSpacing(theme::kMargin);
    column->addStretch();
    column->addWidget(m_plate, 0, Qt::AlignHCenter);
    column->addWidget(m_text);
    column->addLayout(buttons);
    m_copied = new CopiedNote;
    column->addWidget(m_copied, 0, Qt::AlignHCenter);
    column->addStretch();
    return pane;
}

SetData QRGeneratorView::buildSetData() const {
    return m_draft.buildSetData(m_services.clock());
}

void QRGeneratorView::saveQR() const {
    saveQRAsPng(this, buildSetData(), m_services);
}

void QRGeneratorView::generate() {
    const auto text = buildSetData().toQRText();
    m_qrImage = QRGenerator(m_services.encoder).generate(text, kShownCodeSize);
    if (!m_qrImage && !text.empty())
        tellTooLongForCode(m_services);
    render();
}

void QRGeneratorView::copy() {
    if (!m_qrImage)
        return;
    m_services.clipboard.setPicture(*m_qrImage);
    m_copied->tell();
}

void QRGeneratorView::render() {
    m_draft = {typed(m_setNumber->text()), typed(m_brand->text()), typed(m_model->text()),
               typed(m_location->text()), m_items->pairs()};
    m_right->setCurrentIndex(m_qrImage ? 1 : 0);
    if (!m_qrImage)
        return;
    m_plate->setPicture(*m_qrImage);
    m_text->setText(buildSetData().toQRText());
}

} // namespace vantor::ui
