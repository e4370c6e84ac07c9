// LargeTextEdit: an editor that takes any amount of text at once.
//
// Of a text whose lines would take too long to lay out only the beginning is shown and can be edited; the rest is
// kept behind it. Emptying the editor forgets the rest too.
#pragma once

#include <QPlainTextEdit>

namespace vantor::ui {

class LargeTextEdit : public QPlainTextEdit {
public:
    // In characters, as far as they are shown; a line that is longer than the latter ends what is shown.
    static constexpr qsizetype kMostShown = 1'000'000;
    static constexpr qsizetype kLongestLine = 50'000;

    explicit LargeTextEdit(QWidget* parent = nullptr);

    void setText(const QString& text);
    // All of it, what is not shown included; line breaks are line feeds.
    [[nodiscard]] QString text() const;
    [[nodiscard]] bool isEmpty() const { return document()->isEmpty(); }
    [[nodiscard]] bool holdsMoreThanItShows() const { return !m_rest.isEmpty(); }

protected:
    void insertFromMimeData(const QMimeData* source) override;

private:
    [[nodiscard]] QString shownText() const;

    QString m_rest;
};

} // namespace vantor::ui
