#include "ui/widgets/large_text_edit.h"

#include <QMimeData>
#include <algorithm>

namespace vantor::ui {
namespace {

// How much of the text, from its start, is quick to lay out.
qsizetype shownLength(const QString& text) {
    const auto most = std::min(text.size(), LargeTextEdit::kMostShown);
    qsizetype lineStart = 0;
    qsizetype end = 0;
    while (lineStart < most) {
        const auto lineEnd = text.indexOf(QLatin1Char('\n'), lineStart);
        const auto next = lineEnd < 0 ? text.size() : lineEnd + 1;
        if (next - lineStart > LargeTextEdit::kLongestLine) {
            end = std::min(most, lineStart + LargeTextEdit::kLongestLine);
            break;
        }
        if (next > most)
            return lineStart;
        end = lineStart = next;
    }
    return end > 0 && end < text.size() && text[end].isLowSurrogate() ? end - 1 : end;
}

} // namespace

LargeTextEdit::LargeTextEdit(QWidget* parent) : QPlainTextEdit(parent) {
    QObject::connect(this, &QPlainTextEdit::textChanged, this, [this] {
        if (isEmpty())
            m_rest.clear();
    });
}

void LargeTextEdit::setText(const QString& text) {
    const auto length = shownLength(text);
    m_rest = text.sliced(length);
    setPlainText(length == text.size() ? text : text.first(length));
}

QString LargeTextEdit::text() const {
    return shownText() + m_rest;
}

QString LargeTextEdit::shownText() const {
    // Unlike the plain text, the raw one keeps spaces that must not break.
    return document()->toRawText().replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
}

void LargeTextEdit::insertFromMimeData(const QMimeData* source) {
    const auto pasted = source->text();
    const auto characters = static_cast<qsizetype>(document()->characterCount()) - 1;
    if (!holdsMoreThanItShows() && characters + pasted.size() <= kMostShown &&
        shownLength(pasted) == pasted.size()) {
        QPlainTextEdit::insertFromMimeData(source);
        return;
    }
    const auto cursor = textCursor();
    const qsizetype start = cursor.selectionStart();
    const qsizetype selected = cursor.selectionEnd() - start;
    auto all = shownText().replace(start, selected, pasted);
    if (selected < characters)
        all += m_rest;
    setText(all);
    auto after = textCursor();
    after.setPosition(static_cast<int>(
        std::min(start + pasted.size(), static_cast<qsizetype>(document()->characterCount()) - 1)));
    setTextCursor(after);
}

} // namespace vantor::ui
