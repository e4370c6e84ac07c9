#include "ui/sheets/sheet.h"

#include "ui/frame/notice_strip.h"
#include "ui/frame/theme.h"
#include "ui/frame/window_place.h"
#include "ui/widgets/recycling_list.h"
#include "ui/widgets/scroll_pane.h"
#include "ui/widgets/text.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <algorithm>

namespace vantor::ui {

Sheet::Sheet(QWidget* over, const char* objectName, const QString& title) : QDialog(over) {
    setObjectName(QLatin1String(objectName));
    // Of one "[*]" the toolkit makes a mark for unsaved changes, of two it makes "[*]".
    setWindowTitle(QString(title).replace(QLatin1String("[*]"), QLatin1String("[*][*]")));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowModality(Qt::WindowModal);
    m_pane = new ScrollPane("sheetPane");
    m_column = new QVBoxLayout(m_pane->contents());
    m_column->setContentsMargins(theme::kSheetMargin, theme::kSheetMargin, theme::kSheetMargin, 0);
    m_column->setSpacing(theme::kMargin);
    m_heading = new QVBoxLayout;
    m_heading->setSpacing(theme::kStep);
    m_column->addLayout(m_heading);
    m_buttons = new QHBoxLayout;
    m_buttons->setContentsMargins(theme::kSheetMargin, theme::kMargin, theme::kSheetMargin,
                                  theme::kSheetMargin);
    m_buttons->setSpacing(theme::kStep);
    auto* const all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(0);
    all->addWidget(m_pane, 1);
    all->addLayout(m_buttons);
}

void Sheet::setVisible(bool visible) {
    if (visible && m_heightForAll == 0) {
        openAtFirstSize();
        showNotices();
    }
    QDialog::setVisible(visible);
}

void Sheet::done(int result) {
    if (m_users && !windowState().testAnyFlags(Qt::WindowMaximized | Qt::WindowFullScreen))
        rememberSize(*this, *m_users);
    QDialog::done(result);
}

// What happens while a sheet is open is told in it.
void Sheet::showNotices() {
    for (auto* over = parentWidget(); over != nullptr; over = over->parentWidget()) {
        const auto strips = NoticeStrip::allWithin(*over->window());
        if (!strips.empty()) {
            new NoticeStrip(m_pane, strips.front()->notices(), NoticeStrip::Edge::Top);
            return;
        }
    }
}

int Sheet::heightForAll(int width) const {
    return m_pane->heightForAll(width) + m_buttons->sizeHint().height();
}

void Sheet::allowHeight() {
    setMaximumHeight(m_pane->canGrow() ? QWIDGETSIZE_MAX : std::max(m_heightForAll, minimumHeight()));
}

void Sheet::openAtFirstSize() {
    ensurePolished();
    const QSize room = roomOnScreen(*this);
    const QSize asked = rememberedSize(*this).value_or(m_first);
    const int width = std::min(std::max(asked.width(), layout()->minimumSize().width()), room.width());
    m_heightForAll = heightForAll(width);
    layout()->activate();
    allowForScreen(*this);
    allowHeight();
    resize(width, std::min(std::max(asked.height(), m_heightForAll), room.height()));
    m_own = size();
}

void Sheet::followContents() {
    const QScopedValueRollback adjusting(m_adjusting, true);
    const int needed = heightForAll(width());
    const bool showedAll = height() >= m_heightForAll;
    m_heightForAll = needed;
    allowHeight();
    const int height = std::min(needed, roomOnScreen(*this).height());
    if (showedAll && this->height() < height) {
        resize(width(), height);
        moveOntoScreen(*this);
    }
    m_own = size();
}

void Sheet::addTitle(const QString& title, std::initializer_list<QWidget*> beside) {
    auto* const row = new QHBoxLayout;
    row->setSpacing(theme::kStep);
    row->addWidget(named(new TextLabel(title, theme::titleFont(), TextColor::Primary, true), "sheetTitle"),
                   1);
    for (auto* const each : beside)
        row->addWidget(each);
    m_heading->addLayout(row);
}

void Sheet::addExplanation(const QString& text) {
    m_heading->addWidget(new TextLabel(text, theme::captionFont(), TextColor::Secondary, true));
}

void Sheet::addField(const QString& label, QWidget* field) {
    m_column->addLayout(labelled(label, field));
}

QStackedWidget* Sheet::listOrText(RecyclingList* list, TextLabel* text) {
    list->showFrame();
    text->setFrameShape(QFrame::StyledPanel);
    text->setAlignment(Qt::AlignCenter);
    text->setMargin(theme::kPadding);
    auto* const both = new QStackedWidget;
    both->addWidget(list);
    both->addWidget(text);
    return both;
}

QPushButton* Sheet::addCancelButton(QWidget* prominent) {
    auto* const cancel = named(new QPushButton(shown("Annuleer")), "cancelButton");
    cancel->setAutoDefault(false);
    QObject::connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    m_buttons->addWidget(cancel);
    m_buttons->addStretch();
    if (prominent != nullptr)
        m_buttons->addWidget(prominent);
    return cancel;
}

void Sheet::tellProblem(const QString& problem) {
    if (m_problem == nullptr) {
        m_problem =
            named(new TextLabel(QString(), theme::captionFont(), TextColor::Red, true), "sheetProblem");
        m_column->addWidget(m_problem);
    }
    m_problem->setText(problem);
}

void Sheet::addCloseButton(QWidget* prominent) {
    auto* const close = named(new QPushButton(shown("Sluiten")), "closeButton");
    close->setAutoDefault(false);
    QObject::connect(close, &QPushButton::clicked, this, &QDialog::accept);
    if (prominent == nullptr)
        m_buttons->addStretch();
    m_buttons->addWidget(close);
    if (prominent != nullptr) {
        m_buttons->addStretch();
        m_buttons->addWidget(prominent);
    }
}

void Sheet::pressOnReturn(QLineEdit* field, QAbstractButton* button) {
    QObject::connect(field, &QLineEdit::returnPressed, button, [button] { button->click(); });
}

void Sheet::keyPressEvent(QKeyEvent* event) {
    // A dialog would press its first button on Return, wherever the focus is; here only the focused one.
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (auto* const button = qobject_cast<QPushButton*>(focusWidget()))
            button->click();
        return;
    }
    QDialog::keyPressEvent(event);
}

void Sheet::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    if (!isVisible())
        return;
    if (!m_adjusting && size() != m_own)
        m_users = size();
    followContents();
}

bool Sheet::event(QEvent* event) {
    const bool handled = QDialog::event(event);
    if (event->type() == QEvent::LayoutRequest && isVisible())
        followContents();
    return handled;
}

QWidget* windowInFrontOf(QWidget* window) {
    // The last of them is the newest, and stands before what it belongs to.
    for (auto* const dialog : window->findChildren<QDialog*>()) {
        if (dialog->isVisible() && dialog->isModal())
            window = dialog;
    }
    return window;
}

} // namespace vantor::ui
