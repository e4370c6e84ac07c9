#include "ui/frame/notice_strip.h"

#include "ui/frame/theme.h"
#include "ui/widgets/text.h"
#include "ui/widgets/widgets.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QPushButton>
#include <algorithm>

namespace vantor::ui {
namespace {

constexpr const char* kName = "noticeStrip";
// How far its shadow reaches, within the widget.
constexpr int kShadow = theme::kStep;
constexpr int kShadowBelow = 2;

// A notification whose name is what it says.
class AccessibleStrip final : public QAccessibleWidget {
public:
    explicit AccessibleStrip(NoticeStrip* strip) : QAccessibleWidget(strip, QAccessible::Notification) {}

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? static_cast<const NoticeStrip*>(widget())->text() : QString();
    }
};

QAccessibleInterface* makeAccessible(const QString& /*className*/, QObject* object) {
    auto* const strip = dynamic_cast<NoticeStrip*>(object);
    return strip != nullptr ? new AccessibleStrip(strip) : nullptr;
}

void tellToAssistiveTechnology(NoticeStrip& strip) {
    QAccessibleEvent name(&strip, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&name);
    QAccessibleEvent alert(&strip, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

} // namespace

NoticeStrip::NoticeStrip(QWidget* over, Notices& notices, Edge edge)
    : QWidget(over->window()),
      m_over(*over),
      m_edge(edge),
      m_notices(notices),
      m_since(notices.count()) {
    static const bool kInstalled = (QAccessible::installFactory(makeAccessible), true);
    static_cast<void>(kInstalled);
    setObjectName(QLatin1String(kName));
    m_text = named(new ElidedLabel(theme::bodyFont(), TextColor::Primary, this), "noticeText");
    m_dismiss = new SymbolButton(QStringLiteral("clear"), shown("Sluit melding"), this);
    m_dismiss->setObjectName(QStringLiteral("dismissNotice"));
    m_dismiss->setFocusPolicy(Qt::TabFocus);
    QObject::connect(static_cast<QToolButton*>(m_dismiss), &QToolButton::clicked, this,
                     [this] { m_notices.dismiss(); });
    m_row = new QHBoxLayout(this);
    m_row->setContentsMargins(kShadow + theme::kMargin, kShadow + theme::kStep, kShadow + theme::kStep,
                              kShadow + theme::kStep);
    m_row->setSpacing(theme::kStep);
    m_row->addWidget(m_text, 1);
    m_row->addWidget(m_dismiss);
    m_end.setSingleShot(true);
    QObject::connect(&m_end, &QTimer::timeout, this, [this] { m_notices.expire(); });
    m_over.installEventFilter(this);
    window()->installEventFilter(this);
    m_listening = notices.didChange().connect([this] { render(); });
    hide();
    render();
}

std::vector<NoticeStrip*> NoticeStrip::allWithin(const QWidget& window) {
    // By their name: the toolkit would take any widget for one.
    std::vector<NoticeStrip*> strips;
    for (auto* const strip : window.findChildren<QWidget*>(QLatin1String(kName)))
        strips.push_back(static_cast<NoticeStrip*>(strip));
    return strips;
}

bool NoticeStrip::isCovered() const {
    return std::ranges::any_of(allWithin(*window()), [this](const NoticeStrip* strip) {
        return strip != this && strip->window() != window() && strip->window()->isVisible();
    });
}

void NoticeStrip::render() {
    const auto* const notice = m_notices.current();
    waitForItsEnd();
    const bool isOver = notice != nullptr && notice->kind != Notice::Kind::Error && notice->number <= m_since;
    if (notice == nullptr || isOver || isCovered()) {
        hide();
        m_shownText.clear();
        return;
    }
    m_kind = notice->kind;
    dress();
    const auto text = shownData(notice->text);
    const bool isNew = text != m_shownText || isHidden();
    m_shownText = text;
    m_text->setText(text);
    renderActions(*notice);
    takeItsPlaceAmongStops();
    place();
    show();
    raise();
    update();
    if (isNew)
        tellToAssistiveTechnology(*this);
}

void NoticeStrip::renderActions(const Notice& notice) {
    for (auto* const button : m_actions)
        button->deleteLater();
    m_actions.clear();
    for (const auto& action : notice.actions) {
        auto* const button =
            named(new QPushButton(dataInMenu(action.text)), "noticeAction", shownData(action.text));
        button->setAutoDefault(false);
        button->setFocusPolicy(Qt::TabFocus);
        // What it does may take the notice away, and the action with it.
        QObject::connect(button, &QPushButton::clicked, this, [run = action.run] { run(); });
        m_row->insertWidget(m_row->count() - 1, button);
        m_actions.push_back(button);
    }
}

void NoticeStrip::takeItsPlaceAmongStops() {
    const auto isStop = [this](const QWidget* widget) {
        return m_over.isAncestorOf(widget) && (widget->focusPolicy() & Qt::TabFocus) != 0;
    };
    QWidget* last = nullptr;
    for (auto* widget = m_over.nextInFocusChain(); widget != &m_over; widget = widget->nextInFocusChain()) {
        if (isStop(widget))
            last = widget;
    }
    for (auto* const button : m_actions) {
        setTabOrder(last, button);
        last = button;
    }
    setTabOrder(last, m_dismiss);
}

void NoticeStrip::waitForItsEnd() {
    if (const auto left = m_notices.timeLeft())
        m_end.start(*left);
    else
        m_end.stop();
}

void NoticeStrip::place() {
    // What it lies over may not be shown now.
    const QWidget& over = m_over.isVisible() ? m_over : *window();
    const int height = sizeHint().height() - 2 * kShadow;
    const int y = m_edge == Edge::Top ? theme::kStep : over.height() - height - theme::kStep;
    const QRect strip(theme::kMargin, y, over.width() - 2 * theme::kMargin, height);
    setGeometry(
        strip.translated(over.mapTo(window(), QPoint())).adjusted(-kShadow, -kShadow, kShadow, kShadow));
}

bool NoticeStrip::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::Resize:
    case QEvent::Move:
    case QEvent::Show:
    case QEvent::Hide:
        place();
        break;
    // A sheet over this window has opened or closed.
    case QEvent::WindowBlocked:
    case QEvent::WindowUnblocked:
        QMetaObject::invokeMethod(
            this, [this] { render(); }, Qt::QueuedConnection);
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

void NoticeStrip::dress() {
    const auto& around = QApplication::palette();
    setPalette(theme::paletteOn(theme::noticeGround(m_kind, around), around));
}

void NoticeStrip::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        dress();
}

void NoticeStrip::paintEvent(QPaintEvent*) {
    constexpr qreal kRadius = theme::kCodePlateRadius;
    const QRectF strip = QRectF(rect()).adjusted(kShadow, kShadow, -kShadow, -kShadow);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 4));
    for (int spread = kShadow - kShadowBelow; spread > 0; --spread)
        painter.drawRoundedRect(strip.adjusted(-spread, kShadowBelow - spread, spread, kShadowBelow + spread),
                                kRadius + spread, kRadius + spread);
    const auto ground = theme::surface(palette());
    painter.setPen(theme::mixed(theme::text(palette()), ground, 0.15));
    painter.setBrush(ground);
    painter.drawRoundedRect(strip.adjusted(0.5, 0.5, -0.5, -0.5), kRadius, kRadius);
}

} // namespace vantor::ui
