#include "ui/sheets/item_editor.h"

#include "ui/frame/theme.h"
#include "ui/widgets/text.h"
#include "ui/widgets/widgets.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

namespace vantor::ui {
namespace {

constexpr int kLeastNameCharacters = 12;
constexpr int kLeastColorCharacters = 8;

} // namespace

ItemEditor::ItemEditor(Style style, QWidget* before, std::function<void()> onChange)
    : m_style(std::move(style)),
      m_before(before),
      m_onChange(std::move(onChange)) {
    m_column = new QVBoxLayout(this);
    m_column->setContentsMargins(0, 0, 0, 0);
    m_column->setSpacing(theme::kStep);
    m_addButton = named(new QPushButton(shown("+ Item toevoegen")), "addItemButton");
    m_addButton->setFont(theme::captionFont());
    m_addButton->setAutoDefault(false);
    QObject::connect(m_addButton, &QPushButton::clicked, this, [this] {
        addLine({});
        m_lines.back().name->setFocus();
        m_onChange();
    });
}

void ItemEditor::setPairs(const ItemPairs& pairs) {
    // Lines that already show their pair stay, so that a focus in them stays.
    while (m_lines.size() > pairs.size())
        removeLine(m_lines.back().widget);
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        if (i == m_lines.size()) {
            addLine(pairs[i]);
            continue;
        }
        m_lines[i].name->setText(qstring(pairs[i].name));
        m_lines[i].color->setText(qstring(pairs[i].color));
    }
    nameLines();
}

ItemPairs ItemEditor::pairs() const {
    ItemPairs pairs;
    for (const auto& line : m_lines)
        pairs.push_back({typed(line.name->text()), typed(line.color->text())});
    return pairs;
}

void ItemEditor::addPicked(const std::string& name, const std::string& color) {
    auto all = pairs();
    addCatalogItem(all, name, color);
    setPairs(all);
    m_onChange();
}

void ItemEditor::focusFirst() {
    if (!m_lines.empty())
        m_lines.front().name->setFocus(Qt::TabFocusReason);
}

void ItemEditor::returnIn(const QLineEdit* field) {
    QLineEdit* next = nullptr;
    for (auto line = m_lines.begin(); m_style.returnWalks && line != m_lines.end(); ++line) {
        if (field == line->name)
            next = line->color;
        else if (field == line->color && line + 1 != m_lines.end())
            next = (line + 1)->name;
    }
    if (next != nullptr)
        next->setFocus(Qt::TabFocusReason);
    else if (m_onReturn)
        m_onReturn();
}

void ItemEditor::addLine(const ItemPair& pair) {
    auto* const widget = new QWidget;
    auto* const name = makeField("itemName", m_style.namePlaceholder);
    auto* const color = makeField("itemColor", shown("Kleur"));
    auto* const remove =
        named(new SymbolButton(QStringLiteral("minus"), shown("Item verwijderen")), "removeItemButton");
    keepRoomOf(remove);
    // An item's name is to be read while it is typed.
    name->setMinimumWidth(
        std::max(name->minimumWidth(), kLeastNameCharacters * fontMetrics().averageCharWidth()));
    fixWidth(color, m_style.colorWidth, kLeastColorCharacters);
    name->setText(qstring(pair.name));
    color->setText(qstring(pair.color));
    auto* const row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(theme::kStep);
    row->addWidget(name, 1);
    row->addWidget(color);
    row->addWidget(remove);
    m_column->addWidget(widget);
    // Made after everything below them, the lines would otherwise come last.
    QWidget::setTabOrder(m_lines.empty() ? m_before : m_lines.back().remove, name);
    QWidget::setTabOrder(name, color);
    QWidget::setTabOrder(color, remove);
    m_lines.push_back({widget, name, color, remove});
    for (auto* const field : {name, color}) {
        QObject::connect(field, &QLineEdit::textChanged, this, [this] { m_onChange(); });
        QObject::connect(field, &QLineEdit::returnPressed, this, [this, field] { returnIn(field); });
    }
    remove->installEventFilter(this);
    QObject::connect(remove, &QToolButton::clicked, this, [this, widget] {
        removeLine(widget);
        if (!m_lines.empty())
            m_lines.back().name->setFocus();
        else
            m_addButton->setFocus();
        m_onChange();
    });
    nameLines();
}

bool ItemEditor::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress)
        m_pressed = watched;
    // The second click of a double click is not meant for the line that came up to where the first one's was.
    return event->type() == QEvent::MouseButtonDblClick && watched != m_pressed;
}

void ItemEditor::removeLine(const QWidget* widget) {
    const auto found = std::ranges::find(m_lines, widget, &Line::widget);
    if (found == m_lines.end())
        return;
    found->widget->hide();
    found->widget->deleteLater();
    m_lines.erase(found);
    nameLines();
}

void ItemEditor::nameLines() {
    for (std::size_t i = 0; i < m_lines.size(); ++i) {
        const auto& line = m_lines[i];
        line.name->setAccessibleName(shown("Item %1").arg(i + 1));
        line.color->setAccessibleName(shown("Kleur van item %1").arg(i + 1));
        line.remove->setAccessibleDescription(shown("Item %1").arg(i + 1));
        line.remove->setVisible(!m_style.keepsOneLine || m_lines.size() > 1);
    }
}

} // namespace vantor::ui
